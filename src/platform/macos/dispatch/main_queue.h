#pragma once

#include "macos/objc/block.h"
#include "macos/objc/function.h"
#include "macos/objc/global.h"

namespace velmo::macos {

// NOLINTBEGIN(readability-identifier-naming): names of the system.

/// Larger than this, and never looked into.
struct dispatch_queue_s {};

template <>
inline constexpr std::string_view frameworkName<dispatch_queue_s> = "dispatch_queue_s";

namespace dispatch {

extern "C" {
extern dispatch_queue_s _dispatch_main_q;
void dispatch_async(Id queue, BlockCode<void()>* block);
}

// NOLINTEND(readability-identifier-naming)

/// The queue itself is the variable.
inline constexpr Global<&_dispatch_main_q, dispatch_queue_s> mainQueue;
/// Runs the block in a later turn. It belongs to the queue from then on.
inline constexpr Function<&dispatch_async> async;

}  // namespace dispatch
}  // namespace velmo::macos
