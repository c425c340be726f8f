#include "macos/appkit/ns_image_view.h"
#include "platform/macos/display/program_display_test.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/window_list.h"

namespace velmo::macos {
namespace {

/// The panel as the user gets to it: by a click on the toggle, with pictures of real items.
class HiddenItemsDisplayTest : public ProgramDisplayTest {
protected:
    HiddenItemsDisplayTest() {
        defaults().setBool(true, NSString::from("hasCompletedFirstLaunch"));
        defaults().setObject(NSString::from("showPanel"), NSString::from("clickAction"));
        system.mayCapture = true;
        system.windowList = doubles::arrayOf({doubles::itemWindow(7, "Mail", {1000, 0, 50, 22}),
                                              doubles::itemWindow(8, "Notes", {1060, 0, 26, 22}),
                                              doubles::itemWindow(9, "Wi-Fi", {1250, 0, 26, 22})});
        system.shareableWindows = {doubles::arrayOf({doubles::shareableWindow(7)})};
    }

    void openPanel() {
        click("Velmo.Toggle");
        ASSERT_TRUE(runUntil([&] { return static_cast<bool>(shownPanel()); }));
        runFor(0.1);
    }
};

TEST_F(HiddenItemsDisplayTest, AreShownInTheirWidthsAndNothingElseIs) {
    run([&](const Platform& /*platform*/) {
        openPanel();
        const NSView content = contentOf(shownPanel());
        ASSERT_TRUE(named<NSButton>(content, "Mail"));
        ASSERT_TRUE(named<NSButton>(content, "Notes"));
        EXPECT_FALSE(named<NSButton>(content, "Wi-Fi"));
        EXPECT_EQ(allBelow<NSImageView>(named<NSButton>(content, "Mail")).front().frame().size.width, 50);
        ASSERT_EQ(system.captures.size(), 1U);
        EXPECT_EQ(system.captures.front().window, 7U);
        picture("panel-of-items");
    });
}

TEST_F(HiddenItemsDisplayTest, AreClickedWhereTheyAreByThen) {
    system.isTrusted = true;
    run([&](const Platform& /*platform*/) {
        openPanel();
        system.windowList = doubles::arrayOf({doubles::itemWindow(7, "Mail", {1100, 0, 50, 22})});
        clickInto(named<NSButton>(contentOf(shownPanel()), "Mail"));
        EXPECT_FALSE(shownPanel());
        ASSERT_TRUE(runUntil([&] { return system.postedEvents.size() == 3; }));
        const Point middle{1125, 11};
        EXPECT_EQ(system.postedEvents,
                  (std::vector<doubles::PostedMouseEvent>{
                      {.sourceState = 1, .type = 5, .location = middle, .button = 0, .tap = 0},
                      {.sourceState = 1, .type = 1, .location = middle, .button = 0, .tap = 0},
                      {.sourceState = 1, .type = 2, .location = middle, .button = 0, .tap = 0}}));
    });
}

}  // namespace
}  // namespace velmo::macos
