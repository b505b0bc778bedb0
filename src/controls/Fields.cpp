#include "controls/Fields.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>

#include "controls/QtText.h"
#include "runtime/Text.h"

namespace zarn {

void Enable(bool on, std::initializer_list<QWidget*> fields) {
    for (QWidget* field : fields) {
        field->setEnabled(on);
    }
}

bool MovesWithinWindow(const QEvent& focusEvent) {
    const auto reason = static_cast<const QFocusEvent&>(focusEvent).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

bool IsEnter(const QEvent& keyEvent) {
    const int key = static_cast<const QKeyEvent&>(keyEvent).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

void SelectFilledText(QLineEdit& field) {
    if (!Trim(FromQt(field.text())).empty()) {
        field.selectAll();
    }
}

}  // namespace zarn
