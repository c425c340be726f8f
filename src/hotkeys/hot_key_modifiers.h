#pragma once

#include "platform/event.h"

#include <cstdint>

namespace velmo {

/// Modifier flags of events as modifiers of hot keys. Locks and whatever else has no counterpart are dropped.
std::uint32_t hotKeyModifiers(ModifierFlags flags);

}  // namespace velmo
