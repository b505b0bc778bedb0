#pragma once

#include <QDialog>
#include <QTimer>

namespace zarn {

/// A window that runs a long job inside its own wait: the job starts when the window comes to the
/// front, and events run wherever the job lets them. Closing the window cancels nothing; the job
/// goes on without it, and its owner takes no input before it has ended.
class JobDialog : public QDialog {
    Q_OBJECT

  public:
    explicit JobDialog(QWidget* owner);

    /// Shows the window before its owner and returns when it has closed and the job has ended.
    /// Raises what the job or a handler raised.
    void ShowModal();

    /// Closes the window, for whatever reason.
    void done(int result) final;

  protected:
    /// The window is at the front: shown for the first time, or again after another window, a box
    /// of this program's own apart.
    virtual void Activated() = 0;

    /// Whether a job of this window is under way.
    [[nodiscard]] virtual bool JobRuns() const = 0;

    /// The window closes: whatever shows something in it ends here.
    virtual void Closing() = 0;

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QTimer activation_;     ///< the window has come to the front
    bool wasLeft_ = false;  ///< another window has come to the front
};

}  // namespace zarn
