#pragma once

#include "macos/objc/autorelease_pool.h"
#include "platform/macos/doubles/double_system.h"

#include <gtest/gtest.h>

#include <functional>

namespace velmo::macos {

/// GNUstep with doubles of what it lacks, as a fresh system.
class MacosStage {
public:
    MacosStage() { doubles::addMissingMethods(); }

    /// Lets the run loop turn until the condition holds. False where that takes more than some seconds.
    static bool runUntil(const std::function<bool()>& condition);
    /// Lets the run loop turn for that long.
    static void runFor(double seconds);
    /// What the program has stored.
    static void forgetSettings();

    AutoreleasePool pool;
    doubles::DoubleSystem& system = doubles::freshSystem();
};

/// A test on a stage of that kind.
template <typename Stage>
class StageTest : public testing::Test, protected Stage {};

using MacosTest = StageTest<MacosStage>;

}  // namespace velmo::macos
