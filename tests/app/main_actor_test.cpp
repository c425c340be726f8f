#include "app/main_actor.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(MainActorDeathTest, IsTheThreadOnWhichItWasMade) {
    const MainActor actor;
    actor.assumeIsolated();
}

TEST(MainActorDeathTest, StopsTheProcessOnAnyOtherThread) {
    const MainActor actor;
    const auto assumeElsewhere = [&actor] { std::thread([&actor] { actor.assumeIsolated(); }).join(); };
    EXPECT_DEATH(assumeElsewhere(),
                 "Incorrect actor executor assumption; Expected same executor as MainActor\\.");
}

}  // namespace
}  // namespace velmo
