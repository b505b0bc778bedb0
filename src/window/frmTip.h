#pragma once

#include <QDialog>
#include <cstddef>
#include <memory>

namespace zarn {

namespace Ui {
class frmTip;
}

/// Shows one tip after the other, beginning with any of them.
class frmTip : public QDialog {
    Q_OBJECT

  public:
    explicit frmTip(QWidget* owner);
    frmTip(const frmTip&) = delete;
    frmTip& operator=(const frmTip&) = delete;
    ~frmTip() override;

  private:
    void ShowTip(std::size_t number);

    std::unique_ptr<Ui::frmTip> ui_;
    std::size_t shown_ = 0;
};

}  // namespace zarn
