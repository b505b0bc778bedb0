#pragma once

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
    const auto* label = qobject_cast<const QLabel*>(&control);
    QSize needed(0, 0);
    if (const auto* button = qobject_cast<const chameleonButton*>(&control)) {
        const QSize border(10, 0);
        needed = control.fontMetrics().size(Qt::TextShowMnemonic, button->text()) + border;
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
            cut.push_back(FromQt(control->objectName()));
        }
    }
    return cut;
}

/// No two buttons have the same key, and none has one of those of the window around the page.
inline void ExpectKeys(const QWidget& page, std::string_view keysOfWindow = {}) {
    std::set<QKeySequence> keys;
    for (const char letter : keysOfWindow) {
        keys.insert(QKeySequence(QString("Alt+%1").arg(letter)));
    }
    for (const auto* button : page.findChildren<QAbstractButton*>()) {
        const QKeySequence key = QKeySequence::mnemonic(button->text());
        EXPECT_TRUE(key.isEmpty() || keys.insert(key).second) << FromQt(button->text());
    }
}

}  // namespace zarn::testing
