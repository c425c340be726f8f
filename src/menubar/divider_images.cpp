#include "menubar/divider_images.h"

namespace velmo {

namespace {

constexpr Size imageSize{12, 18};
constexpr double barWidth = 1.5;
constexpr double barRadius = 0.75;
constexpr double verticalMargin = 3;
/// From the left edge of the one bar to that of the other.
constexpr double barDistance = 4;

Fill bar(double x) {
    const Rect rect{x, verticalMargin, barWidth, imageSize.height - 2 * verticalMargin};
    return {{RoundedRect{rect, barRadius, barRadius}}, WindingRule::nonZero};
}

Image templateImage(std::vector<Fill> fills, std::string description) {
    return {Drawing{imageSize, false, std::move(fills)}, true, std::move(description)};
}

}  // namespace

Image dividerImage() {
    return templateImage({bar((imageSize.width - barWidth) / 2)}, "Velmo divider");
}

Image alwaysHiddenDividerImage() {
    const double x = (imageSize.width - (barDistance + barWidth)) / 2;
    return templateImage({bar(x), bar(x + barDistance)}, "Velmo always-hidden divider");
}

}  // namespace velmo
