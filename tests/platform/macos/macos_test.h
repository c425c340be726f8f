#pragma once

#include "macos/objc/autorelease_pool.h"
#include "platform/macos/doubles/double_system.h"

#include <gtest/gtest.h>

#include <functional>

namespace velmo::macos {

/// A test on GNUstep and on doubles of what it lacks.
class MacosTest : public testing::Test {
protected:
    MacosTest() { doubles::addMissingMethods(); }

    /// Lets the run loop turn until the condition holds. False where that takes more than some seconds.
    static bool runUntil(const std::function<bool()>& condition);
    /// Lets the run loop turn for that long.
    static void runFor(double seconds);

    AutoreleasePool pool;
    doubles::DoubleSystem& system = doubles::freshSystem();
};

}  // namespace velmo::macos
