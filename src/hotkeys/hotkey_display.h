#pragma once

#include "platform/event.h"

namespace velmo {

/// What the user reads of a key press: the symbols of its modifiers, then the name of its key.
std::string hotkeyDisplay(const Event& event);

}  // namespace velmo
