#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <QTest>
#include <set>

#include "controls/QtText.h"
#include "controls/chameleonButton.h"
#include "support/Prelude.h"

namespace zarn::testing {

/// Acts once in each of the two fonts that the program stands in, set for the whole program.
template <typename Act>
void InEveryFont(const Act& act) {
    const QFont before = QApplication::font();
    for (const char* family : {"DejaVu Sans", "Noto Sans"}) {
        SCOPED_TRACE(family);
        QFont font = before;
        font.setFamilies({family});
        ASSERT_EQ(FromQt(QFontInfo(font).family()), family);
        QApplication::setFont(font);
        act();
    }
    QApplication::setFont(before);
}

/// Whether a control has the room that its own text needs. A panel shortens its text by itself.
inline bool Fits(const QWidget& control) {
    const auto* button = qobject_cast<const chameleonButton*>(&control);
    const auto* label = qobject_cast<const QLabel*>(&control);
    QSize needed(0, 0);
    if (button != nullptr) {
        constexpr int Border = 10;
        needed = control.fontMetrics().size(Qt::TextShowMnemonic, button->text());
        needed.rwidth() += Border;
    } else if (label != nullptr && label->wordWrap()) {
        needed.setHeight(label->heightForWidth(label->width()));
    } else if (control.inherits("QAbstractButton") || control.inherits("QTabBar") ||
               (label != nullptr && !control.inherits("zarn::PanelText"))) {
        needed = {control.sizeHint().width(), control.fontMetrics().height()};
    }
    return needed.expandedTo(control.size()) == control.size();
}

/// The visible texts below a widget that have no room.
inline std::vector<std::string> CutOff(const QWidget& parent) {
    std::vector<std::string> cut;
    for (const QWidget* control : parent.findChildren<QWidget*>()) {
        if (control->isVisible() && !Fits(*control)) {
            cut.push_back(
                FromQt(control->objectName() + ": " + control->property("text").toString()));
        }
    }
    return cut;
}

/// Every control has a name for whoever does not see it. No two have the same key, and none one of
/// those that the window around the page has.
inline void ExpectNamesAndKeys(const QWidget& page, std::string_view keysOfWindow = {}) {
    std::set<QKeySequence> keys;
    for (const char letter : keysOfWindow) {
        keys.insert(QKeySequence(QString("Alt+%1").arg(letter)));
    }
    for (const QWidget* control : page.findChildren<QWidget*>()) {
        const QString name = control->objectName();
        const auto* button = qobject_cast<const QAbstractButton*>(control);
        const QKeySequence key = QKeySequence::mnemonic(button == nullptr ? "" : button->text());
        EXPECT_TRUE(key.isEmpty() || keys.insert(key).second) << FromQt(name);
        EXPECT_TRUE(name.isEmpty() || name.startsWith("qt_") ||
                    control->parentWidget()->inherits("QTabBar") ||
                    !control->accessibleName().isEmpty())
            << FromQt(name);
    }
}

/// The Tab key goes from the control that has the keyboard to these, in this order.
inline void ExpectTabOrder(const QWidget& page, const Names& names) {
    for (const std::string& name : names) {
        QTest::keyClick(page.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(FromQt(page.focusWidget()->objectName()), name);
    }
}

}  // namespace zarn::testing
