#pragma once

#include <functional>

namespace velmo::macos {

/// Runs the work in a later turn of the main thread's run loop, after everything that was handed over before,
/// also while a menu is open, but for one that such work has opened. From any thread; the work ends on the
/// main thread.
void runOnMainThread(std::function<void()> work);

}  // namespace velmo::macos
