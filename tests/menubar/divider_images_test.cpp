#include "menubar/divider_images.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

Fill barAt(double x) {
    return {{RoundedRect{{x, 3, 1.5, 12}, 0.75, 0.75}}, WindingRule::nonZero};
}

TEST(DividerImage, IsOneBarInTheMiddle) {
    const Image expected{Drawing{{12, 18}, false, {barAt(5.25)}}, true, "Velmo divider"};
    EXPECT_EQ(dividerImage(), expected);
}

TEST(AlwaysHiddenDividerImage, IsTwoBars) {
    const Image expected{Drawing{{12, 18}, false, {barAt(3.25), barAt(7.25)}}, true,
                         "Velmo always-hidden divider"};
    EXPECT_EQ(alwaysHiddenDividerImage(), expected);
}

}  // namespace
}  // namespace velmo
