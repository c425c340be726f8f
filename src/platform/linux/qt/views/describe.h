#pragma once

#include <string>

class QWidget;

namespace velmo {

/// What assistive programs and the pointer learn of a widget. Said only where it has changed: each saying is
/// an event on the accessibility bus.
void describe(QWidget& widget, const std::string& name, const std::string& help);

}  // namespace velmo
