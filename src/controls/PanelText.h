#pragma once

#include <QLabel>

namespace zarn {

/// A line of a panel that may be longer than its place: it is drawn with an ellipsis then. `text`
/// stays whole, and so do the tool tip and what a screen reader says.
class PanelText : public QLabel {
    Q_OBJECT

  public:
    explicit PanelText(QWidget* parent = nullptr);

    void setText(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zarn
