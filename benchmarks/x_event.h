#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace velmo::desktop {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

/// What the server has sent; null where it has sent nothing.
using XEvent = std::unique_ptr<xcb_generic_event_t, FreeMemory>;

}  // namespace velmo::desktop
