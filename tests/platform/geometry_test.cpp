#include "platform/geometry.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(Rect, DoesNotIntersectWhatItOnlyTouches) {
    const Rect rect{0, 0, 10, 10};
    EXPECT_FALSE(rect.intersects({10, 0, 5, 5}));
    EXPECT_FALSE(rect.intersects({0, -5, 5, 5}));
    EXPECT_TRUE(rect.intersects({9.9, 9.9, 5, 5}));
    EXPECT_TRUE(rect.intersects({12, 12, -5, -5}));
}

TEST(Rect, ContainsItsLowerEdgesOnly) {
    const Rect rect{1, 2, 3, 4};
    EXPECT_TRUE(rect.contains({1, 2}));
    EXPECT_FALSE(rect.contains({4, 2}));
    EXPECT_FALSE(rect.contains({1, 6}));
    EXPECT_TRUE(rect.contains({3.9, 5.9}));
    EXPECT_FALSE(rect.contains({0.9, 3}));
}

TEST(Rect, StandardizesNegativeExtents) {
    EXPECT_EQ((Rect{5, 5, -2, -3}.standardized()), (Rect{3, 2, 2, 3}));
}

}  // namespace
}  // namespace velmo
