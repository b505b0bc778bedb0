#include "window/AccessibleTitle.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <memory>

#include "window/BarButtons.h"

namespace zarn {

namespace {

class AccessibleTitle : public QAccessibleWidget {
  public:
    explicit AccessibleTitle(BarTitle& title)
        : QAccessibleWidget(&title, QAccessible::Button), title_(title) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = 1;
        state.expanded = title_.isChecked() ? 1 : 0;
        state.collapsed = title_.isChecked() ? 0 : 1;
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& action) override {
        if (action == pressAction()) {
            title_.click();
        } else {
            QAccessibleWidget::doAction(action);
        }
    }

  private:
    BarTitle& title_;
};

QAccessibleInterface* MakeAccessibleTitle(const QString& /*className*/, QObject* object) {
    auto* title = dynamic_cast<BarTitle*>(object);
    return title == nullptr ? nullptr : std::make_unique<AccessibleTitle>(*title).release();
}

}  // namespace

void OfferAccessibleTitles() {
    QAccessible::installFactory(MakeAccessibleTitle);
}

void TellBarOpened(BarTitle& title) {
    QAccessible::State changed;
    changed.expanded = 1;
    changed.collapsed = 1;
    QAccessibleStateChangeEvent event(&title, changed);
    QAccessible::updateAccessibility(&event);
}

}  // namespace zarn
