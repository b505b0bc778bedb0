#include "controls/ProgramStyle.h"

#include <QIcon>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace zarn {

namespace {

class ProgramStyle : public QProxyStyle {
  public:
    ProgramStyle() : QProxyStyle("Fusion") {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_Frame && option->state.testFlag(State_HasFocus)) {
            painter->save();
            painter->setPen(option->palette.color(QPalette::Highlight));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            painter->restore();
        }
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override {
        switch (icon) {
            case SP_MessageBoxCritical:
                return QIcon(":/boxes/stop.svg");
            case SP_MessageBoxQuestion:
                return QIcon(":/boxes/question.svg");
            case SP_MessageBoxWarning:
                return QIcon(":/boxes/exclamation.svg");
            case SP_MessageBoxInformation:
                return QIcon(":/boxes/information.svg");
            default:
                return QProxyStyle::standardIcon(icon, option, widget);
        }
    }
};

}  // namespace

std::unique_ptr<QStyle> MakeProgramStyle() {
    return std::make_unique<ProgramStyle>();
}

}  // namespace zarn
