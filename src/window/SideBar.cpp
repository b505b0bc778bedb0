#include "window/SideBar.h"

#include <algorithm>

#include "controls/QtText.h"
#include "window/BarButtons.h"

namespace zarn {

namespace {

constexpr QRgb Backdrop = 0xffccd4e2;

void SetBackground(QWidget& widget, const QColor& colour) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Window, colour);
    widget.setPalette(palette);
    widget.setAutoFillBackground(true);
}

}  // namespace

struct SideBar::Bar {
    Bar(QWidget* parent, std::string_view barKey, std::string_view caption, BarColours colours)
        : key(barKey), title(parent, "Bar_" + key, caption, colours), body(parent), rows(&body) {
        rows.setContentsMargins(BarMargin / 2, BarMargin / 2, BarMargin / 2, BarMargin / 2);
        rows.setSpacing(0);
        SetBackground(body, PaintColour(colours.body));
        connect(&title, &QAbstractButton::toggled, &body, &QWidget::setVisible);
    }

    std::string key;
    BarTitle title;
    QWidget body;
    QVBoxLayout rows;
    std::vector<std::unique_ptr<BarItem>> items;
};

SideBar::SideBar(QWidget* parent) : QScrollArea(parent), layout_(&content_) {
    layout_.setContentsMargins(BarMargin, BarMargin, BarMargin, 0);
    layout_.setSpacing(0);
    layout_.addStretch();
    SetBackground(content_, QColor::fromRgba(Backdrop));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(&content_);
}

SideBar::~SideBar() = default;

void SideBar::AddBar(std::string_view key, std::string_view title, BarColours colours) {
    if (!bars_.empty()) {
        layout_.insertSpacing(layout_.count() - 1, BarMargin);
    }
    const int end = layout_.count() - 1;
    auto& bar = bars_.emplace_back(std::make_unique<Bar>(&content_, key, title, colours));
    layout_.insertWidget(end, &bar->title);
    layout_.insertWidget(end + 1, &bar->body);
}

QWidget& SideBar::AddItem(std::string_view key, std::string_view caption, std::string_view icon) {
    Bar& bar = *bars_.back();
    auto& item = bar.items.emplace_back(std::make_unique<BarItem>(&bar.body, key, caption, icon));
    bar.rows.addWidget(item.get());
    connect(item.get(), &QAbstractButton::clicked, this,
            [this, name = std::string(key)] { emit ItemClick(name); });
    return *item;
}

void SideBar::AddControl(QWidget& control) {
    bars_.back()->rows.addWidget(&control);
    QWidget* before = &bars_.back()->title;
    for (auto* part : control.findChildren<QWidget*>()) {
        if ((part->focusPolicy() & Qt::TabFocus) != 0) {
            setTabOrder(before, part);
            before = part;
        }
    }
    control.show();
}

int SideBar::State(std::string_view barKey) const {
    return Find(barKey).title.isChecked() ? 1 : 0;
}

void SideBar::State(std::string_view barKey, int value) {
    Find(barKey).title.setChecked(value == 1);
}

SideBar::Bar& SideBar::Find(std::string_view barKey) const {
    return **std::ranges::find(bars_, barKey, [](const auto& bar) { return bar->key; });
}

}  // namespace zarn
