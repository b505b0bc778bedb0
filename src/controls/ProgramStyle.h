#pragma once

#include <QStyle>
#include <memory>

namespace zarn {

/// The style that the controls are drawn for. It frames the list or the text that has the keyboard,
/// and shows boxes with pictures of its own, which are sharp at every scale.
[[nodiscard]] std::unique_ptr<QStyle> MakeProgramStyle();

}  // namespace zarn
