#include "menubar/toggle_image.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

void expectSymbols(ToggleIconStyle style, const char* hidden, const char* revealed) {
    const auto expected = [](const char* name) {
        return Image{Symbol{name, 12, FontWeight::semibold}, false, "Velmo"};
    };
    EXPECT_EQ(toggleImage(false, style), expected(hidden));
    EXPECT_EQ(toggleImage(true, style), expected(revealed));
}

TEST(ToggleImage, IsOneSymbolForEachStyleAndState) {
    expectSymbols(ToggleIconStyle::chevron, "chevron.left", "chevron.right");
    expectSymbols(ToggleIconStyle::ellipsis, "ellipsis.circle", "ellipsis.circle.fill");
    expectSymbols(ToggleIconStyle::dot, "circle", "circle.fill");
    expectSymbols(ToggleIconStyle::lines, "line.3.horizontal", "line.3.horizontal.decrease");
    expectSymbols(ToggleIconStyle::eye, "eye.slash", "eye");
}

TEST(FridgeImage, IsAFlippedTemplateOfEighteenPoints) {
    for (const bool revealed : {false, true}) {
        const Image image = toggleImage(revealed, ToggleIconStyle::fridge);
        const auto& drawing = std::get<Drawing>(image.content);
        EXPECT_TRUE(image.isTemplate);
        EXPECT_EQ(image.accessibilityDescription, "velmo");
        EXPECT_EQ(drawing.size, (Size{18, 18}));
        EXPECT_TRUE(drawing.flipped);
        EXPECT_EQ(drawing.fills.size(), 2U);
    }
}

const Fill revealedDoors{
    {RoundedRect{{4.0, 1.5, 10.0, 15.0}, 2.4, 2.4}, RoundedRect{{5.6, 7.3, 6.8, 7.6}, 1.2, 1.2}},
    WindingRule::evenOdd};
const Fill handle{{RoundedRect{{10.9, 8.6, 1.0, 3.2}, 0.5, 0.5}}, WindingRule::nonZero};

TEST(FridgeImage, HasNoDotsWhileItemsAreShown) {
    const Image image = toggleImage(true, ToggleIconStyle::fridge);
    EXPECT_EQ(std::get<Drawing>(image.content).fills, (std::vector{revealedDoors, handle}));
}

TEST(FridgeImage, HasThreeDotsWhileItemsAreHidden) {
    Fill doors = revealedDoors;
    doors.path.emplace_back(Oval{{7.5, 3.6, 1.6, 1.6}});
    doors.path.emplace_back(Oval{{9.3, 3.6, 1.6, 1.6}});
    doors.path.emplace_back(Oval{{11.1, 3.6, 1.6, 1.6}});
    const Image image = toggleImage(false, ToggleIconStyle::fridge);
    EXPECT_EQ(std::get<Drawing>(image.content).fills, (std::vector{doors, handle}));
}

}  // namespace
}  // namespace velmo
