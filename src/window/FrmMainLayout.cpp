// Where the window's parts stand, and what the status line says about the one below the mouse.

#include <QScreen>

#include "controls/QtText.h"
#include "controls/Twips.h"
#include "ui_FrmMain.h"
#include "window/FrmMain.h"
#include "window/HoverTexts.h"

namespace zarn {

namespace {

constexpr int PanelTop = 825;
constexpr int StatusLines = 2;
constexpr int StatusBorder = 2;

/// Lengths in twips, left edges from the window's own.
struct Geometry {
    int width;
    int height;
    int bandLeft;
    int labelLeft;
    int pictureLeft;
    int panelLeft;
};

constexpr Geometry WithSideBar = {9015, 6200, 3210, 4200, 3405, 3255};
constexpr Geometry WithoutSideBar = {6585, 6200, 10, 955, 160, 45};

const Geometry& GeometryFor(Parameters& parameters) {
    return parameters.ViewSideBar() == 1 ? WithSideBar : WithoutSideBar;
}

void MoveLeft(QWidget& widget, int left, int right) {
    widget.setGeometry(left, widget.y(), right - left, widget.height());
}

}  // namespace

void FrmMain::PlacePanels() {
    const int left = Pixels(GeometryFor(shared_.Parameters()).panelLeft);
    const int top = Pixels(PanelTop);
    for (QWidget* panel : Panels()) {
        panel->setGeometry(left, top, width() - left, ui_->sTBar->y() - top);
    }
}

void FrmMain::LayOut() {
    const Geometry& geometry = GeometryFor(shared_.Parameters());
    const int right = Pixels(geometry.width);
    setFixedSize(right, Pixels(geometry.height));
    const int bottom = height() - menuBar()->sizeHint().height();
    const int statusHeight = StatusLines * fontMetrics().lineSpacing() + StatusBorder;
    ui_->sTBar->setGeometry(0, bottom - statusHeight, right, statusHeight);
    ui_->vbalExplorerBarCtl1->setVisible(&geometry == &WithSideBar);
    ui_->vbalExplorerBarCtl1->setGeometry(0, 0, Pixels(WithSideBar.bandLeft), ui_->sTBar->y());
    MoveLeft(*ui_->Label5, Pixels(geometry.bandLeft), right);
    const int helpLeft = right - ui_->HelpContainer->width() - 8;
    ui_->HelpContainer->move(helpLeft, ui_->HelpContainer->y());
    MoveLeft(*ui_->MenuLabel, Pixels(geometry.labelLeft), helpLeft);
    MoveLeft(*ui_->MenuLabelDesc, Pixels(geometry.labelLeft), helpLeft);
    ui_->ImageToolbar->move(Pixels(geometry.pictureLeft), ui_->ImageToolbar->y());
    PlacePanels();
}

void FrmMain::Center_Form(QWidget& form) {
    if (&form == this) {
        LayOut();
    }
    const QRect screen = form.screen()->geometry();
    form.move(screen.left() + (screen.width() - form.width()) / 2,
              screen.top() + (screen.height() - form.height()) / 2 - Pixels(80));
}

/// The toolkit tells a disabled control nothing and a control's inner parts in its place, so the
/// control is looked up by the position.
void FrmMain::ShowHoverText(QPoint position) {
    const QWidget* control = childAt(mapFromGlobal(position));
    while (control != nullptr &&
           (control == ui_->centralwidget || control->objectName().isEmpty() ||
            control->objectName().startsWith("qt_"))) {
        control = control->parentWidget();
    }
    const QWidget& reached = control == nullptr ? *this : *control;
    if (const auto text = HoverText(FromQt(reached.objectName()))) {
        SetStatusText(*text);
    }
}

}  // namespace zarn
