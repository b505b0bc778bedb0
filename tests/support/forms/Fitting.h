#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <functional>
#include <string>
#include <vector>

#include "controls/PanelText.h"
#include "controls/QtText.h"
#include "controls/chameleonButton.h"

namespace zarn::testing {

/// Acts once in each font that the program asks for.
inline void InEveryFont(const std::function<void()>& act) {
    const QFont before = QApplication::font();
    for (const char* family : {"DejaVu Sans", "Noto Sans"}) {
        SCOPED_TRACE(family);
        QFont font = before;
        font.setFamilies({family});
        QApplication::setFont(font);
        EXPECT_EQ(QFontInfo(font).family(), family);
        act();
    }
    QApplication::setFont(before);
}

inline bool Fits(const QLabel& label) {
    if (label.wordWrap()) {
        return label.heightForWidth(label.width()) <= label.height();
    }
    return label.sizeHint().boundedTo(label.size()) == label.sizeHint();
}

inline bool Fits(const QAbstractButton& button) {
    constexpr int Border = 10;
    const auto* drawn = qobject_cast<const chameleonButton*>(&button);
    const QSize text = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
    const int needed = drawn != nullptr ? text.width() + Border : button.sizeHint().width();
    return button.width() >= needed && button.height() >= text.height();
}

/// The visible texts below a widget that have no room. A panel's text is shortened by itself.
inline std::vector<std::string> CutOff(const QWidget& parent) {
    std::vector<std::string> cut;
    for (const auto* label : parent.findChildren<QLabel*>()) {
        const bool isShort = qobject_cast<const PanelText*>(label) != nullptr || Fits(*label);
        if (label->isVisible() && !isShort) {
            cut.push_back(FromQt(label->objectName() + ": " + label->text()));
        }
    }
    for (const auto* button : parent.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && !Fits(*button)) {
            cut.push_back(FromQt(button->objectName() + ": " + button->text()));
        }
    }
    return cut;
}

}  // namespace zarn::testing
