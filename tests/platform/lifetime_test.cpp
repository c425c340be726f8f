#include "platform/lifetime.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace velmo {
namespace {

TEST(Lifetime, LetsGuardedFunctionsRunWhileItLasts) {
    std::optional<Lifetime> lifetime(std::in_place);
    int sum = 0;
    const std::function<void(int)> add = lifetime->guard([&sum](int number) { sum += number; });
    add(3);
    lifetime.reset();
    add(5);
    EXPECT_EQ(sum, 3);
}

TEST(Lifetime, MayEndInsideAGuardedFunction) {
    std::optional<Lifetime> lifetime(std::in_place);
    int calls = 0;
    const std::function<void()> end = lifetime->guard([&] {
        lifetime.reset();
        ++calls;
    });
    end();
    end();
    EXPECT_EQ(calls, 1);
}

TEST(Lifetime, EndsForAllWhileAGuardedFunctionStillRuns) {
    std::optional<Lifetime> lifetime(std::in_place);
    int calls = 0;
    const std::function<void()> inner = lifetime->guard([&calls] { ++calls; });
    const std::function<void()> outer = lifetime->guard([&] {
        inner();
        lifetime.reset();
        inner();
    });
    outer();
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace velmo
