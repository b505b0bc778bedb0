#pragma once

#include <QColor>
#include <QPixmap>
#include <QRectF>

#include "controls/ButtonStyles.h"

class QPainter;

namespace zarn {

/// What a button shows at a moment, apart from its picture and text.
struct ButtonState {
    bool isEnabled = true;
    bool isOver = false;
    bool isDown = false;
    bool isChecked = false;
    bool showsFocus = false;
    bool hasSoftBevel = false;
    QColor back;  ///< of the face as it is now
};

/// Whether there is a face under the text, or what lies behind the button.
[[nodiscard]] bool ShowsFace(const ButtonStyle& style, const ButtonState& state);

/// Paints a button's face, edge and focus frame into the box.
void DrawButtonFace(QPainter& painter, const QRectF& box, const ButtonStyle& style,
                    const ButtonState& state);

/// The picture with one colour made transparent; alpha that it has stays.
[[nodiscard]] QPixmap WithoutColour(const QPixmap& picture, const QColor& colour);

/// The picture in shades of grey.
[[nodiscard]] QPixmap InGrey(const QPixmap& picture);

}  // namespace zarn
