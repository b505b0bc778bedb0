#pragma once

#include <QComboBox>
#include <string>
#include <string_view>

namespace zarn {

/// An editable drop-down list that keeps apart what was picked and what was written. `ListIndex` is
/// the row that was picked last; it is -1 as soon as the text is typed or written instead, even
/// where the text equals a row. Each row carries a 32-bit number. The mouse wheel over the closed
/// field does nothing; the arrow and page keys pick rows.
class ComboField : public QComboBox {
    Q_OBJECT

  public:
    explicit ComboField(QWidget* parent = nullptr);

    [[nodiscard]] std::string Text() const;

    /// Writes the text and leaves no row selected. Raises `Change` if the text differs.
    void WriteText(std::string_view text);

    /// Rows are counted from 0. Adding or removing them changes neither text nor selection, except
    /// that `ClearRows` leaves no row selected.
    void AddRow(std::string_view text, std::int32_t itemData);
    void ClearRows();
    [[nodiscard]] int RowCount() const { return count(); }
    [[nodiscard]] std::string RowText(int row) const;
    [[nodiscard]] std::int32_t RowItemData(int row) const;

    [[nodiscard]] int ListIndex() const { return listIndex_; }

    /// Picks a row as the user does: its text comes into the field, then `Click` is raised. A
    /// number that is no row's does nothing.
    void SelectRow(int row);

    void showPopup() override;
    void hidePopup() override;

  signals:
    void Change();    ///< the text was typed or written
    void Click();     ///< a row was picked
    void GotFocus();  ///< the keyboard came to the field from another control

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void TextChanged();
    void HoldRow(int row);

    int listIndex_ = -1;
};

}  // namespace zarn
