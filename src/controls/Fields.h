#pragma once

#include <initializer_list>

class QWidget;

namespace zarn {

/// Enables, or disables, all of the fields.
void Enable(bool on, std::initializer_list<QWidget*> fields);

}  // namespace zarn
