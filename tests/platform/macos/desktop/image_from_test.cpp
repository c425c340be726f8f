#include "macos/desktop/image_from.h"
#include "macos/desktop/font_from.h"
#include "platform/macos/doubles/call_block.h"
#include "platform/macos/doubles/record_class.h"
#include "platform/macos/macos_test.h"

#include <memory>

namespace velmo::macos {
namespace {

using doubles::member;
using doubles::numberMember;

class ImageFromTest : public MacosTest {
protected:
    static std::string text(const Object& record, const char* name) {
        return as<NSString>(member(record, name)).text();
    }
};

TEST_F(ImageFromTest, SymbolsHaveTheirSizeWeightAndDescription) {
    const NSImage image = imageFrom(
        {.content = Symbol{"eye.slash", 12, FontWeight::semibold}, .accessibilityDescription = "Velmo"});
    EXPECT_EQ(text(image, "symbol"), "eye.slash");
    EXPECT_EQ(text(image, "description"), "Velmo");
    EXPECT_EQ(numberMember(image, "pointSize"), 12);
    EXPECT_EQ(numberMember(image, "weight"), 0.3);
    EXPECT_FALSE(member(image, "isTemplate"));
}

TEST_F(ImageFromTest, SymbolsWithoutASizeTakeThatAroundThem) {
    EXPECT_FALSE(member(imageFrom({.content = Symbol{"gearshape"}}), "pointSize"));
}

TEST_F(ImageFromTest, UnknownSymbolsAreNone) {
    EXPECT_FALSE(imageFrom({.content = Symbol{"unknown", 12}}));
    EXPECT_FALSE(imageFrom({.content = Symbol{"unknown"}}));
}

TEST_F(ImageFromTest, DrawingsAreDrawnWheneverTheSystemWants) {
    const NSImage image = imageFrom({.content = Drawing{.size = {12, 18}, .flipped = true},
                                     .isTemplate = true,
                                     .accessibilityDescription = "Velmo divider"});
    EXPECT_EQ(numberMember(image, "width"), 12);
    EXPECT_EQ(numberMember(image, "height"), 18);
    EXPECT_EQ(numberMember(image, "isFlipped"), 1);
    EXPECT_EQ(numberMember(image, "isTemplate"), 1);
    EXPECT_EQ(text(image, "description"), "Velmo divider");
    ASSERT_EQ(system.drawingHandlers.size(), 1U);
}

TEST_F(ImageFromTest, BitmapsCoverTheirPoints) {
    const auto pixels = std::make_shared<std::vector<std::uint8_t>>(4 * 21 * 44, 99);
    const NSImage image =
        imageFrom({.content = Bitmap{.width = 21, .height = 44, .pixels = pixels, .size = {10.5, 22}}});
    EXPECT_EQ(numberMember(image, "colour"), 99);
    EXPECT_EQ(numberMember(image, "width"), 10.5);
    EXPECT_EQ(numberMember(image, "height"), 22);
    EXPECT_EQ(numberMember(image, "isTemplate"), 0);
    EXPECT_FALSE(imageFrom({.content = Bitmap{}}));
    system.makesContexts = false;
    EXPECT_FALSE(
        imageFrom({.content = Bitmap{.width = 21, .height = 44, .pixels = pixels, .size = {10.5, 22}}}));
}

TEST_F(ImageFromTest, FontsAreTheSystemsStylesUnlessSomethingElseIsSaid) {
    EXPECT_EQ(text(fontFrom({.style = TextStyle::headline}), "kind"), "headline");
    const NSFont sized = fontFrom({.size = 30, .weight = FontWeight::medium, .hasMonospacedDigits = true});
    EXPECT_EQ(text(sized, "kind"), "digits");
    EXPECT_EQ(numberMember(sized, "size"), 30);
    EXPECT_EQ(numberMember(sized, "weight"), 0.23);
    const NSFont small = fontFrom({.style = TextStyle::caption, .isMonospaced = true});
    EXPECT_EQ(text(small, "kind"), "monospaced");
    EXPECT_EQ(numberMember(small, "size"), 10);
    EXPECT_EQ(numberMember(small, "weight"), 0);
}

TEST_F(ImageFromTest, FontsWithoutAStyleOrASizeHaveThatOfTheSystem) {
    system.systemFontSize = 14;
    const NSFont font = fontFrom({.weight = FontWeight::regular, .hasMonospacedDigits = true});
    EXPECT_EQ(text(font, "kind"), "digits");
    EXPECT_EQ(numberMember(font, "size"), 14);
    EXPECT_EQ(numberMember(font, "weight"), 0);
}

}  // namespace
}  // namespace velmo::macos
