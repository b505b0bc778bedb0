#include "controls/PanelText.h"

#include <QPainter>
#include <QStyle>

#include "controls/Colours.h"

namespace zarn {

PanelText::PanelText(QWidget* parent) : QLabel(parent) {
    SetTextColour(*this, Black);
}

void PanelText::setText(const QString& text) {
    QLabel::setText(text);
    setToolTip(text);
    setAccessibleDescription(text);
}

void PanelText::paintEvent(QPaintEvent* /*event*/) {
    const QRect place = contentsRect();
    QPainter painter(this);
    style()->drawItemText(&painter, place, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, place.width()),
                          foregroundRole());
}

}  // namespace zarn
