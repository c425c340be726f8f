#pragma once

#include "application.h"

#include <optional>
#include <string>

namespace velmo::x11 {

/// Has the Velmo that runs on this display carry a command out. One that is to quit has gone when this
/// returns. What is wrong, in one line, where there is no display, none runs there, or it does not end within
/// 5 seconds.
std::optional<std::string> tellRunningInstance(ApplicationCommand command);

}  // namespace velmo::x11
