#pragma once

#include <QDialog>
#include <memory>
#include <string_view>

namespace zarn {

namespace Ui {
class FrmLogError;
}

/// Shows what is wrong with one thing, in a text that can be read and copied at leisure.
class FrmLogError : public QDialog {
    Q_OBJECT

  public:
    explicit FrmLogError(QWidget* owner);
    FrmLogError(const FrmLogError&) = delete;
    FrmLogError& operator=(const FrmLogError&) = delete;
    ~FrmLogError() override;

    /// Fills `txtErrorLog`.
    void ErrorLog(std::string_view text);

  private:
    std::unique_ptr<Ui::FrmLogError> ui_;
};

}  // namespace zarn
