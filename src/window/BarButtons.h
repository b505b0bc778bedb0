#pragma once

#include <QAbstractButton>
#include <string_view>

#include "window/SideBar.h"

namespace zarn {

inline constexpr int BarMargin = 8;  ///< pixels beside the contents of a bar

/// A button that Enter clicks as well as the space bar, and that shows where the keyboard is.
class BarButton : public QAbstractButton {
  public:
    BarButton(QWidget* parent, std::string_view name);

  protected:
    /// For the constructors of the kinds of button: a screen reader that is told of a caption asks
    /// at once what kind it is.
    void Caption(std::string_view caption);

    void keyPressEvent(QKeyEvent* event) override;
    void DrawText(QPainter& painter, const QRect& box, const QColor& colour) const;
    void DrawFocus(QPainter& painter, const QColor& colour) const;
};

/// The title of a bar, checked while the bar is open.
class BarTitle : public BarButton {
  public:
    BarTitle(QWidget* parent, std::string_view name, std::string_view caption,
             SideBar::BarColours colours);
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void DrawArrow(QPainter& painter, const QColor& colour) const;

    SideBar::BarColours colours_;
};

/// A row of a bar. The icon may be empty.
class BarItem : public BarButton {
  public:
    BarItem(QWidget* parent, std::string_view key, std::string_view caption, std::string_view icon);
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zarn
