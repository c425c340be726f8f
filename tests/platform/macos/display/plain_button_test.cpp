#include "macos/views/plain_button.h"
#include "macos/views/control_target.h"
#include "platform/macos/display/display_test.h"
#include "platform/macos/doubles/display.h"

#include <vector>

namespace velmo::macos {
namespace {

class PlainButtonTest : public DisplayTest {
protected:
    PlainButtonTest() {
        window.setContentView(around);
        around.addSubview(button.button());
        button.place({20, 20, 40, 30});
        window.orderFrontRegardless();
        runFor(0.1);
    }
    ~PlainButtonTest() override { window.close(); }

    /// Points from the bottom left of the window.
    void mouse(EventType type, const CGPoint& point) { tellOfMouse(type, point, window); }

    NSWindow window = doubles::makeWindow({{300, 300}, {100, 100}}, NSWindowStyleMask{});
    NSView around = NSView::create();
    std::vector<bool> looks;
    int actions = 0;
    PlainButton button{[this] { looks.push_back(button.isPressed()); }};
    ControlTarget target{button.button(), [this] { ++actions; }};

    static constexpr CGPoint inside{30, 30};
    static constexpr CGPoint outside{90, 90};
};

TEST_F(PlainButtonTest, LooksPressedFromThePressToTheRelease) {
    mouse(EventType::leftMouseDown, inside);
    EXPECT_EQ(looks, std::vector{true});
    EXPECT_EQ(actions, 0);
    mouse(EventType::leftMouseUp, inside);
    EXPECT_EQ(looks, (std::vector{true, false}));
    EXPECT_EQ(actions, 1);
}

TEST_F(PlainButtonTest, LooksPressedOnlyWhileTheMouseIsOnIt) {
    mouse(EventType::leftMouseDown, inside);
    mouse(dragged, outside);
    EXPECT_EQ(looks, (std::vector{true, false}));
    mouse(dragged, inside);
    EXPECT_EQ(looks, (std::vector{true, false, true}));
    mouse(dragged, outside);
    mouse(EventType::leftMouseUp, outside);
    EXPECT_EQ(looks, (std::vector{true, false, true, false}));
    EXPECT_EQ(actions, 0);
}

TEST_F(PlainButtonTest, DoesNothingWhileItIsDisabled) {
    button.button().setEnabled(false);
    mouse(EventType::leftMouseDown, inside);
    mouse(dragged, inside);
    mouse(EventType::leftMouseUp, inside);
    EXPECT_TRUE(looks.empty());
    EXPECT_EQ(actions, 0);
}

}  // namespace
}  // namespace velmo::macos
