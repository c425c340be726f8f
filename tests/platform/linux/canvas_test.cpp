#include "linux/drawing/canvas.h"

#include "linux/drawing/symbols.h"
#include "menubar/divider_images.h"
#include "menubar/toggle_image.h"

#include <gtest/gtest.h>

#include <cstring>

namespace velmo {

namespace {

constexpr Color red{1, 0, 0, 1};

std::uint32_t pixel(const Canvas& canvas, int x, int y) {
    std::uint32_t value = 0;
    std::memcpy(&value, canvas.pixels() + y * canvas.stride() + x * 4, sizeof value);
    return value;
}

Image drawing(std::vector<Fill> fills, bool flipped, bool isTemplate = true) {
    return {Drawing{{10, 10}, flipped, std::move(fills)}, isTemplate, ""};
}

Fill square(double x, double y, double side) {
    return {{RoundedRect{{x, y, side, side}, 0, 0}}};
}

TEST(Canvas, TemplateTakesTheColorAndAnotherImageStaysBlack) {
    Canvas canvas(20, 10);
    canvas.drawImage(drawing({square(0, 0, 10)}, true), 0, 0, {}, red);
    canvas.drawImage(drawing({square(0, 0, 10)}, true, false), 10, 0, {}, red);
    EXPECT_EQ(pixel(canvas, 5, 5), 0xffff0000);
    EXPECT_EQ(pixel(canvas, 15, 5), 0xff000000);
}

TEST(Canvas, YGrowsDownwardInFlippedDrawingsOnly) {
    Canvas canvas(20, 10);
    canvas.drawImage(drawing({square(0, 0, 2)}, true), 0, 0, {}, red);
    canvas.drawImage(drawing({square(0, 0, 2)}, false), 10, 0, {}, red);
    EXPECT_EQ(pixel(canvas, 0, 0), 0xffff0000);
    EXPECT_EQ(pixel(canvas, 0, 9), 0U);
    EXPECT_EQ(pixel(canvas, 10, 0), 0U);
    EXPECT_EQ(pixel(canvas, 10, 9), 0xffff0000);
}

TEST(Canvas, EvenOddLeavesWhatIsInsideTwice) {
    const Fill ring{{RoundedRect{{0, 0, 10, 10}, 0, 0}, Oval{{2, 2, 6, 6}}}, WindingRule::evenOdd};
    Fill disc = ring;
    disc.windingRule = WindingRule::nonZero;
    Canvas canvas(20, 10);
    canvas.drawImage(drawing({ring}, true), 0, 0, {}, red);
    canvas.drawImage(drawing({disc}, true), 10, 0, {}, red);
    EXPECT_EQ(pixel(canvas, 5, 5), 0U);
    EXPECT_EQ(pixel(canvas, 0, 0), 0xffff0000);
    EXPECT_EQ(pixel(canvas, 15, 5), 0xffff0000);
}

TEST(Canvas, DrawsSharplyAtEveryScale) {
    Appearance twice;
    twice.scale = 2;
    Canvas canvas(20, 20);
    canvas.drawImage(drawing({square(1, 1, 2)}, true), 0, 0, twice, red);
    EXPECT_EQ(pixel(canvas, 1, 1), 0U);
    EXPECT_EQ(pixel(canvas, 2, 2), 0xffff0000);
    EXPECT_EQ(pixel(canvas, 5, 5), 0xffff0000);
    EXPECT_EQ(pixel(canvas, 6, 6), 0U);
}

TEST(Canvas, CornersAreRound) {
    Canvas canvas(10, 10);
    canvas.fillRoundedRect({{0, 0, 10, 10}, 5, 5}, red);
    EXPECT_EQ(pixel(canvas, 0, 0), 0U);
    EXPECT_EQ(pixel(canvas, 5, 5), 0xffff0000);
    EXPECT_GT(pixel(canvas, 5, 0) >> 24, 200U);
}

class EverySymbol : public testing::TestWithParam<const char*> {};

TEST_P(EverySymbol, IsDrawnWithinItsSquareInTheColorGiven) {
    const Symbol symbol{GetParam(), 12, FontWeight::semibold};
    ASSERT_TRUE(isKnownSymbol(symbol.name));
    const Image image{symbol, false, ""};
    EXPECT_EQ(imageSize(image), (Size{15, 15}));
    Appearance twice;
    twice.scale = 2;
    Canvas canvas(34, 34);
    canvas.drawImage(image, 2, 2, twice, red);
    int painted = 0;
    for (int y = 0; y < 34; ++y) {
        for (int x = 0; x < 34; ++x) {
            const auto value = pixel(canvas, x, y);
            if (value == 0)
                continue;
            ++painted;
            EXPECT_EQ(value & 0xffff, 0U) << "red only";
            EXPECT_TRUE(x >= 2 && x < 32 && y >= 2 && y < 32) << x << ", " << y;
        }
    }
    EXPECT_GT(painted, 40);
}

INSTANTIATE_TEST_SUITE_P(OfTheToggle, EverySymbol,
                         testing::Values("chevron.left", "chevron.right", "ellipsis.circle",
                                         "ellipsis.circle.fill", "circle", "circle.fill", "line.3.horizontal",
                                         "line.3.horizontal.decrease", "eye", "eye.slash"));

/// At 20 pixels a point, so that every shape has an inside; the place in points of the image.
class DrawnImage : public testing::Test {
protected:
    void draw(const Image& image) {
        appearance_.scale = 20;
        canvas_.drawImage(image, 0, 0, appearance_, red);
    }
    bool isPaintedAt(double x, double y) const {
        return pixel(canvas_, static_cast<int>(x * 20), static_cast<int>(y * 20)) == 0xffff0000;
    }
    bool isClearAt(double x, double y) const {
        return pixel(canvas_, static_cast<int>(x * 20), static_cast<int>(y * 20)) == 0;
    }

    Appearance appearance_;
    Canvas canvas_{360, 360};
};

TEST_F(DrawnImage, FridgeHasThreeDotsInItsUpperDoorWhileItemsAreHidden) {
    draw(toggleImage(false, ToggleIconStyle::fridge));
    for (const double x : {7.5, 9.3, 11.1}) {
        EXPECT_TRUE(isClearAt(x + 0.8, 4.4)) << x;
        EXPECT_TRUE(isPaintedAt(x + 0.8, 2.4)) << "the door above the dot";
    }
    EXPECT_TRUE(isPaintedAt(9.2, 4.4)) << "between the dots";
    EXPECT_TRUE(isClearAt(7, 11)) << "the lower door is an outline";
    EXPECT_TRUE(isPaintedAt(11.4, 10)) << "with a handle";
    EXPECT_TRUE(isPaintedAt(4.8, 11));
    EXPECT_TRUE(isClearAt(4.1, 1.6)) << "corners are round";
    EXPECT_TRUE(isClearAt(3.5, 9));
}

TEST_F(DrawnImage, FridgeHasNoDotsWhileItemsAreShown) {
    draw(toggleImage(true, ToggleIconStyle::fridge));
    for (const double x : {7.5, 9.3, 11.1})
        EXPECT_TRUE(isPaintedAt(x + 0.8, 4.4)) << x;
    EXPECT_TRUE(isClearAt(7, 11));
}

TEST_F(DrawnImage, DividerIsOneBarInTheMiddle) {
    draw(dividerImage());
    EXPECT_TRUE(isPaintedAt(6, 9));
    EXPECT_TRUE(isPaintedAt(5.3, 9));
    EXPECT_TRUE(isPaintedAt(6.7, 9));
    EXPECT_TRUE(isClearAt(5.2, 9));
    EXPECT_TRUE(isClearAt(6.8, 9));
    EXPECT_TRUE(isClearAt(6, 2.9));
    EXPECT_TRUE(isPaintedAt(6, 3.2));
    EXPECT_TRUE(isPaintedAt(6, 14.8));
    EXPECT_TRUE(isClearAt(6, 15.1));
}

TEST_F(DrawnImage, AlwaysHiddenDividerIsTwoBars) {
    draw(alwaysHiddenDividerImage());
    EXPECT_TRUE(isPaintedAt(4, 9));
    EXPECT_TRUE(isClearAt(6, 9));
    EXPECT_TRUE(isPaintedAt(8, 9));
    EXPECT_TRUE(isClearAt(3.2, 9));
    EXPECT_TRUE(isClearAt(8.8, 9));
}

TEST(Symbols, NoTwoLookTheSame) {
    const auto draw = [](const char* name) {
        Canvas canvas(15, 15);
        canvas.drawImage({Symbol{name, 12, FontWeight::semibold}}, 0, 0, {}, red);
        return std::vector<std::uint8_t>(canvas.pixels(), canvas.pixels() + canvas.stride() * 15);
    };
    EXPECT_NE(draw("chevron.left"), draw("chevron.right"));
    EXPECT_NE(draw("eye"), draw("eye.slash"));
    EXPECT_NE(draw("circle"), draw("circle.fill"));
    EXPECT_NE(draw("ellipsis.circle"), draw("ellipsis.circle.fill"));
    EXPECT_NE(draw("line.3.horizontal"), draw("line.3.horizontal.decrease"));
}

TEST(Symbols, UnknownNameTakesNoRoomAndDrawsNothing) {
    const Image image{Symbol{"no.such.symbol", 12, FontWeight::semibold}};
    EXPECT_EQ(imageSize(image), Size{});
    Canvas canvas(15, 15);
    canvas.drawImage(image, 0, 0, {}, red);
    EXPECT_EQ(pixel(canvas, 7, 7), 0U);
}

}  // namespace

}  // namespace velmo
