#pragma once

#include "event.h"
#include "macos/appkit/ns_event.h"

namespace velmo::macos {

/// What of a system's event crosses to the core.
Event eventFrom(const NSEvent& event);

}  // namespace velmo::macos
