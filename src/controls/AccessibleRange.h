#pragma once

class QWidget;

namespace zarn {

/// Lets screen readers read a progress bar's or an arrow pair's `Value`, `Min` and `Max`, and move
/// an arrow pair. May be called any number of times.
void OfferAccessibleRanges();

/// Tells them that the control's `Value` is another one.
void TellRangeChanged(QWidget& control);

}  // namespace zarn
