#pragma once

#include <QDialog>
#include <QLabel>
#include <deque>
#include <memory>

namespace zarn {

namespace Ui {
class FrmHelp;
}

/// The popup that describes the switches of the command line. Each entry of `HelpTexts` is a row of
/// labels: `lblLabel`, `lblText` and, where there is one, `lblSyntax`, with the row's number behind
/// the name, from 1.
class FrmHelp : public QDialog {
    Q_OBJECT

  public:
    explicit FrmHelp(QWidget* parent = nullptr);
    FrmHelp(const FrmHelp&) = delete;
    FrmHelp& operator=(const FrmHelp&) = delete;
    ~FrmHelp() override;

    /// Whether the popup was opened from inside the running program. Its close button then closes
    /// the popup; else it ends the program.
    bool OpenedFromProgram = false;

  private:
    void FillRows();
    QLabel& AddLabel(const char* name, std::size_t entry, std::string_view text, int row,
                     int column);
    void CmdClose_Click();

    std::unique_ptr<Ui::FrmHelp> ui_;
    std::deque<QLabel> labels_;
};

}  // namespace zarn
