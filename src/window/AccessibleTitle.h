#pragma once

namespace zarn {

class BarTitle;

/// Lets screen readers read a bar's title as a button, and whether its bar is open. May be called
/// any number of times.
void OfferAccessibleTitles();

/// Tells them that the title's bar was opened or closed.
void TellBarOpened(BarTitle& title);

}  // namespace zarn
