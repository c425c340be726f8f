#include "macos/services/macos_run_loop.h"
#include "macos/windows/macos_window.h"
#include "platform/macos/display/display_test.h"

namespace velmo::macos {
namespace {

View roomOfHeight(double height) {
    return View{EmptyView{}}.with(Frame{.width = 300, .height = height});
}

class WindowDisplayTest : public DisplayTest {
protected:
    MacosRunLoop loop;
    MacosWindow window{loop, roomOfHeight(100)};
};

TEST_F(WindowDisplayTest, GrowsAndShrinksBelowItsTitleBar) {
    window.setTitle("Growing");
    window.center();
    const NSWindow shown = windowTitled("Growing");
    ASSERT_TRUE(shown);
    const Rect before = rectOf(shown.frame());
    for (const double height : {160.0, 80.0}) {
        window.setContent(roomOfHeight(height));
        const Rect after = rectOf(shown.frame());
        EXPECT_EQ(after.maxY(), before.maxY());
        EXPECT_EQ(after.x, before.x);
        EXPECT_EQ(after.height, before.height + height - 100);
        EXPECT_EQ(contentOf(shown).frame().size.height, height);
    }
}

TEST_F(WindowDisplayTest, StaysWhereItWasRatherThanBesideThat) {
    window.setTitle("Staying");
    const NSWindow shown = windowTitled("Staying");
    ASSERT_TRUE(shown);
    const auto controller = Message<"NSWindow", false, "windowController", Object>::send(shown.get());
    ASSERT_TRUE(controller);
    using ShouldCascade = Message<"NSWindowController", false, "shouldCascadeWindows", bool>;
    EXPECT_FALSE(ShouldCascade::send(controller.get()));
}

}  // namespace
}  // namespace velmo::macos
