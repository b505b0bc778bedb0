#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFontInfo>
#include <QTest>
#include <set>

#include "controls/QtText.h"
#include "controls/chameleonButton.h"

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

/// The width that a control's own text needs; 0 for a control without one.
inline int TextWidth(const QWidget& control) {
    constexpr int BorderOfButton = 10;
    if (const auto* button = qobject_cast<const chameleonButton*>(&control)) {
        return control.fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() +
               BorderOfButton;
    }
    const bool hasText = control.inherits("QAbstractButton") || control.inherits("QTabBar") ||
                         (control.inherits("QLabel") && !control.inherits("zarn::PanelText"));
    return hasText ? control.sizeHint().width() : 0;
}

/// The page fits its place, and every text that it shows fits its control.
inline void ExpectTextsToFit(const QWidget& page, QSize place) {
    EXPECT_EQ(page.minimumSizeHint().expandedTo(place), place);
    for (const QWidget* control : page.findChildren<QWidget*>()) {
        const int needed = control->isVisible() ? TextWidth(*control) : 0;
        EXPECT_GE(control->width(), needed) << FromQt(control->objectName());
        EXPECT_TRUE(needed == 0 || control->height() >= control->fontMetrics().height())
            << FromQt(control->objectName());
    }
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
inline void ExpectTabOrder(const QWidget& page, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        QTest::keyClick(page.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(FromQt(page.focusWidget()->objectName()), name);
    }
}

}  // namespace zarn::testing
