#pragma once

#include "macos/objc/raw_type.h"

namespace velmo::macos::doubles {

/// Calls a block as compiled code does: by the function in its fourth word.
template <typename Result, typename... Arguments>
Result callBlock(void* block, Arguments... arguments) {
    struct Layout {
        void* kind;
        int flags;
        int reserved;
        Result (*invoke)(void*, Arguments...);
    };
    return static_cast<Layout*>(block)->invoke(block, arguments...);
}

}  // namespace velmo::macos::doubles
