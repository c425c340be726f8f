#include "macos/services/macos_run_loop.h"
#include "macos/windows/macos_popover.h"
#include "platform/macos/display/display_test.h"

namespace velmo::macos {
namespace {

/// A line in the middle of so much room.
View contentOfHeight(double height) {
    return View{Divider{}}.with(Frame{.width = 200, .height = height});
}

class PopoverDisplayTest : public DisplayTest {
protected:
    NSView content() const {
        const auto controller = Message<"NSPopover", false, "contentViewController", NSViewController>::send(
            system.popover.get());
        return Message<"NSViewController", false, "view", NSView>::send(controller.get());
    }

    MacosRunLoop loop;
    MacosPopover popover{loop};
};

TEST_F(PopoverDisplayTest, AsksForWholePointsAndOnlyWhenTheyChange) {
    for (const double height : {100.4, 100.4, 100.9, 101.0})
        popover.setContent(contentOfHeight(height));
    ASSERT_EQ(system.popoverSizes.size(), 1U);
    EXPECT_EQ(system.popoverSizes[0].width, 200);
    EXPECT_EQ(system.popoverSizes[0].height, 101);
    popover.setContent(contentOfHeight(101.1));
    ASSERT_EQ(system.popoverSizes.size(), 2U);
    EXPECT_EQ(system.popoverSizes[1].height, 102);
}

TEST_F(PopoverDisplayTest, LeavesItToThePopoverWhenItsContentGrows) {
    popover.setContent(contentOfHeight(100));
    EXPECT_EQ(content().frame().size.height, 100);
    const double middle = viewsBelow(content()).at(0).frame().origin.y;
    system.resizesPopovers = false;
    popover.setContent(contentOfHeight(140));
    EXPECT_EQ(content().frame().size.height, 100);
    // Laid out for what is to come.
    EXPECT_EQ(viewsBelow(content()).at(0).frame().origin.y, middle + 20);
    // The same content once more asks for nothing.
    popover.setContent(contentOfHeight(140));
    EXPECT_EQ(system.popoverSizes.size(), 2U);
    EXPECT_EQ(content().frame().size.height, 100);
}

}  // namespace
}  // namespace velmo::macos
