#pragma once

#include <QDialog>
#include <memory>

class QUrl;

namespace zarn {

namespace Ui {
class FrmContents;
}

/// The help: its topics at the left, the page of one of them at the right. It stands beside the
/// window and does not hold it up.
class FrmContents : public QDialog {
    Q_OBJECT

  public:
    explicit FrmContents(QWidget* owner);
    FrmContents(const FrmContents&) = delete;
    FrmContents& operator=(const FrmContents&) = delete;
    ~FrmContents() override;

    /// Shows the window with the contents page, or brings it to the front with that page.
    void ShowContents();

  private:
    void ShowTopic(int row);  ///< none where no row is selected
    void MarkTopic(const QUrl& page);

    std::unique_ptr<Ui::FrmContents> ui_;
};

}  // namespace zarn
