#pragma once

namespace velmo::macos::doubles {

/// Timers with blocks, in the common modes of the run loop.
void addTimers();

}  // namespace velmo::macos::doubles
