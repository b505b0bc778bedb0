#include "controls/AccessibleRange.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>
#include <memory>

#include "controls/UpDown.h"

namespace zarn {

namespace {

/// Reads any control that has the three properties; moves an arrow pair as its user does.
class AccessibleRange : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    AccessibleRange(QWidget* control, QAccessible::Role role) : QAccessibleWidget(control, role) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? currentValue().toString()
                                          : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QVariant currentValue() const override { return widget()->property("Value"); }
    void setCurrentValue(const QVariant& value) override {
        auto* arrows = qobject_cast<UpDown*>(widget());
        if (arrows != nullptr && arrows->isEnabled() && value.toInt() != arrows->Value()) {
            arrows->Step(value.toInt() - arrows->Value());
        }
    }
    [[nodiscard]] QVariant maximumValue() const override { return widget()->property("Max"); }
    [[nodiscard]] QVariant minimumValue() const override { return widget()->property("Min"); }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }
};

QAccessibleInterface* MakeAccessibleRange(const QString& className, QObject* object) {
    const bool isBar = className == "zarn::XP_ProgressBar";
    auto* control = qobject_cast<QWidget*>(object);
    if (control == nullptr || (!isBar && className != "zarn::UpDown")) {
        return nullptr;
    }
    const auto role = isBar ? QAccessible::ProgressBar : QAccessible::SpinBox;
    return std::make_unique<AccessibleRange>(control, role).release();
}

}  // namespace

void OfferAccessibleRanges() {
    QAccessible::installFactory(MakeAccessibleRange);
}

void TellRangeChanged(QWidget& control) {
    QAccessibleValueChangeEvent event(&control, control.property("Value"));
    QAccessible::updateAccessibility(&event);
}

}  // namespace zarn
