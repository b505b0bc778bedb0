#pragma once

#include <QDialog>
#include <memory>

namespace zarn {

namespace Ui {
class FrmAbout;
}

/// Name, version, purpose and licence of the program.
class FrmAbout : public QDialog {
    Q_OBJECT

  public:
    explicit FrmAbout(QWidget* owner);
    FrmAbout(const FrmAbout&) = delete;
    FrmAbout& operator=(const FrmAbout&) = delete;
    ~FrmAbout() override;

  private:
    std::unique_ptr<Ui::FrmAbout> ui_;
};

}  // namespace zarn
