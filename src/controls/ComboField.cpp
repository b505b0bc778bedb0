#include "controls/ComboField.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "controls/Fields.h"
#include "controls/QtText.h"

namespace zarn {

namespace {

/// Holds a field's text and caret still while its rows change.
class KeptText {
  public:
    explicit KeptText(QComboBox& field)
        : field_(field),
          fieldBlocker_(&field),
          editBlocker_(field.lineEdit()),
          text_(field.currentText()),
          caret_(field.lineEdit()->cursorPosition()),
          selectionStart_(field.lineEdit()->selectionStart()),
          selectionLength_(field.lineEdit()->selectionLength()) {}
    KeptText(const KeptText&) = delete;
    KeptText& operator=(const KeptText&) = delete;
    ~KeptText() {
        if (field_.currentText() == text_) {
            return;
        }
        QLineEdit& edit = *field_.lineEdit();
        edit.setText(text_);
        edit.setCursorPosition(caret_);
        if (selectionStart_ >= 0) {
            edit.setSelection(selectionStart_, selectionLength_);
        }
    }

  private:
    QComboBox& field_;
    QSignalBlocker fieldBlocker_;
    QSignalBlocker editBlocker_;
    QString text_;
    int caret_;
    int selectionStart_;
    int selectionLength_;
};

/// How far a key moves among the rows of a closed field.
int RowsOf(int key) {
    constexpr int PageRows = 8;
    switch (key) {
        case Qt::Key_Up:
            return -1;
        case Qt::Key_Down:
            return 1;
        case Qt::Key_PageUp:
            return -PageRows;
        case Qt::Key_PageDown:
            return PageRows;
        default:
            return 0;
    }
}

}  // namespace

ComboField::ComboField(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    // The toolkit would pick the row that equals a typed text as the field is left.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    connect(lineEdit(), &QLineEdit::textChanged, this, &ComboField::TextChanged);
    connect(this, &QComboBox::activated, this, &ComboField::SelectRow);
}

std::string ComboField::Text() const {
    return FromQt(currentText());
}

void ComboField::WriteText(std::string_view text) {
    listIndex_ = -1;
    lineEdit()->setText(ToQt(text));
}

void ComboField::AddRow(std::string_view text, std::int32_t itemData) {
    const KeptText kept(*this);
    addItem(ToQt(text), itemData);
    HoldRow(-1);
}

void ComboField::ClearRows() {
    const KeptText kept(*this);
    clear();
    listIndex_ = -1;
}

std::string ComboField::RowText(int row) const {
    return FromQt(itemText(row));
}

std::int32_t ComboField::RowItemData(int row) const {
    return itemData(row).toInt();
}

void ComboField::SelectRow(int row) {
    if (row < 0 || row >= count()) {
        return;
    }
    listIndex_ = row;
    {
        const QSignalBlocker blocker(lineEdit());
        lineEdit()->setText(itemText(row));
        lineEdit()->selectAll();
    }
    HoldRow(-1);
    emit Click();
}

/// The toolkit's own row is set only while the list is open, or while it is being picked; so a
/// text that changes without one was typed or written.
void ComboField::TextChanged() {
    if (currentIndex() < 0) {
        listIndex_ = -1;
        emit Change();
    }
}

void ComboField::HoldRow(int row) {
    if (currentIndex() != row) {
        const KeptText kept(*this);
        setCurrentIndex(row);
    }
}

void ComboField::showPopup() {
    HoldRow(listIndex_);
    QComboBox::showPopup();
}

void ComboField::hidePopup() {
    QComboBox::hidePopup();
    HoldRow(-1);
}

void ComboField::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    if (MovesWithinWindow(*event)) {
        emit GotFocus();
    }
}

void ComboField::keyPressEvent(QKeyEvent* event) {
    const int rows = RowsOf(event->key());
    if (rows == 0 || event->modifiers().testFlag(Qt::AltModifier)) {
        QComboBox::keyPressEvent(event);
        return;
    }
    const int row = std::clamp(listIndex_ + rows, 0, std::max(count() - 1, 0));
    if (row != listIndex_) {
        SelectRow(row);
    }
}

void ComboField::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace zarn
