#pragma once

class QApplication;

namespace zarn {

/// Gives the application its looks: one light palette of its own, so that black, red and blue texts
/// read on every desktop theme; one font in one size; the style that the controls are drawn for.
void ApplyAppearance(QApplication& application);

}  // namespace zarn
