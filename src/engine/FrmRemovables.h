#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "engine/SharedProgress.h"
#include "settings/SharedObjects.h"

namespace zarn {

namespace Ui {
class FrmRemovables;
}

/// The prompt for the next medium of a run that spans media. One object serves all parts of a run.
class FrmRemovables : public QDialog {
    Q_OBJECT

  public:
    /// `shared` and `defaultProgress` must outlive the dialog.
    FrmRemovables(SharedObjects& shared, SharedProgress& defaultProgress, QWidget* owner);
    FrmRemovables(const FrmRemovables&) = delete;
    FrmRemovables& operator=(const FrmRemovables&) = delete;
    ~FrmRemovables() override;

    std::string partPath;
    double partNumber = 0;
    double totalParts = 0;
    double partSize = 0;  ///< bytes

    /// Asks for the medium of the part above and returns when the dialog has closed. It does not
    /// tell how: Cancel takes the medium unchecked, and leaves its mark in `defaultProgress` alone.
    void ShowModal();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void OpenForm();
    void CmdOK_Click();
    void CmdCancel_Click();
    [[nodiscard]] bool MediumIsUsable();
    void EnableButtons(bool enabled);

    SharedObjects& shared_;
    SharedProgress& defaultProgress_;
    std::unique_ptr<Ui::FrmRemovables> ui_;
};

}  // namespace zarn
