#pragma once

#include <functional>

namespace velmo::macos {

/// Runs the work in a later turn of the main thread's run loop, also while a menu is open. From any thread.
void runOnMainThread(std::function<void()> work);

}  // namespace velmo::macos
