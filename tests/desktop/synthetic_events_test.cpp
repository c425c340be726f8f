#include "bar_session.h"

#include "linux/x11/synthetic_events.h"
#include "linux/x11/window_list.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

class SyntheticEventsTest : public BarSession {
protected:
    struct Click {
        bool isPress = false;
        int button = 0;
        int x = 0;
        int y = 0;
        std::uint16_t state = 0;
        xcb_window_t window = XCB_WINDOW_NONE;

        bool operator==(const Click&) const = default;
    };

    void start(const std::vector<std::string>& serverOptions = {}) {
        startServer("1280x720x24", serverOptions);
        startBarAndEvents();
    }
    void startBarAndEvents() {
        startBar();
        events_ = std::make_unique<x11::SyntheticEvents>(*bar_);
        windows_ = std::make_unique<x11::WindowList>(*bar_);
    }
    void TearDown() override {
        events_.reset();
        windows_.reset();
        BarSession::TearDown();
    }

    xcb_window_t dockIcon() {
        const auto window = makeIcon(24, std::vector<std::uint32_t>(iconSide * iconSide, 0xff3366));
        const std::uint32_t mask = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;
        xcb_change_window_attributes(x().raw(), window, XCB_CW_EVENT_MASK, &mask);
        dock(window);
        return window;
    }

    /// The middle of a window as the window list has it.
    Point middle(xcb_window_t window) const {
        const auto list = *windows_->windowList(WindowListOption::onScreenOnly);
        const auto entry = std::find_if(list.begin(), list.end(),
                                        [&](const auto& candidate) { return candidate.number == window; });
        if (entry == list.end())
            return {-1, -1};
        return {entry->bounds->midX(), entry->bounds->midY()};
    }

    void click(const Point& place) {
        for (const auto type : {EventType::mouseMoved, EventType::leftMouseDown, EventType::leftMouseUp})
            events_->postMouseEvent(type, place);
    }

    /// What the test's windows have been told of, once there is that much of it.
    std::vector<Click> clicks(std::size_t count) {
        std::vector<Click> seen;
        turnUntil([&] {
            while (auto* event = xcb_poll_for_event(x().raw())) {
                const int type = event->response_type & 0x7f;
                const auto& button = *reinterpret_cast<const xcb_button_press_event_t*>(event);
                if (type == XCB_BUTTON_PRESS || type == XCB_BUTTON_RELEASE)
                    seen.push_back({type == XCB_BUTTON_PRESS, button.detail, button.root_x, button.root_y,
                                    button.state, button.event});
                std::free(event);
            }
            return seen.size() >= count;
        });
        return seen;
    }

    xcb_window_t windowUnderPointer() const {
        connection_->sync();
        return x().windowUnderPointer();
    }

    Point pointer() const { return screens_->pointer(); }

    std::unique_ptr<x11::SyntheticEvents> events_;
    std::unique_ptr<x11::WindowList> windows_;
};

TEST_F(SyntheticEventsTest, ClickAnIconInTheMiddleAndLeaveThePointerThere) {
    start();
    const auto window = dockIcon();
    const auto area = *x().area(window);
    click(middle(window));
    EXPECT_EQ(clicks(2),
              (std::vector<Click>{{true, 1, area.midX(), area.midY(), 0, window},
                                  {false, 1, area.midX(), area.midY(), XCB_BUTTON_MASK_1, window}}));
    EXPECT_EQ(pointer(), (Point{double(area.midX()), double(area.midY())}));
}

TEST_F(SyntheticEventsTest, ReachAnIconWhateverCoversTheBar) {
    start();
    const auto icon = dockIcon();
    const auto cover = coverBar();
    const auto place = middle(icon);
    movePointer(static_cast<int>(place.x), static_cast<int>(place.y));
    ASSERT_EQ(windowUnderPointer(), cover);
    events_->postMouseEvent(EventType::mouseMoved, place);
    EXPECT_EQ(windowUnderPointer(), bar_->window());
    events_->postMouseEvent(EventType::leftMouseDown, place);
    events_->postMouseEvent(EventType::leftMouseUp, place);
    EXPECT_EQ(windowUnderPointer(), cover) << "as before";
    for (const auto& click : clicks(2))
        EXPECT_EQ(click.window, icon);
}

TEST_F(SyntheticEventsTest, LetTheBarGoWhereNoPressFollows) {
    start();
    const auto cover = coverBar();
    const Point place{300, 13};
    events_->postMouseEvent(EventType::mouseMoved, place);
    ASSERT_EQ(windowUnderPointer(), bar_->window());
    EXPECT_FALSE(turnUntil([&] { return windowUnderPointer() == cover; }, milliseconds(800)));
    EXPECT_TRUE(turnUntil([&] { return windowUnderPointer() == cover; }, milliseconds(400)));
}

TEST_F(SyntheticEventsTest, ReachNobodyWhereTheBarCannotBeReached) {
    start();
    const auto place = middle(dockIcon());
    const auto cover = coverBar();
    xcb_unmap_window(x().raw(), bar_->window());
    x().exists(x().root());
    events_->postMouseEvent(EventType::mouseMoved, place);
    ASSERT_EQ(windowUnderPointer(), cover);
    events_->postMouseEvent(EventType::leftMouseDown, place);
    connection_->sync();
    EXPECT_EQ(x().buttonState(), 0);
    events_->postMouseEvent(EventType::leftMouseUp, place);
    connection_->sync();
    EXPECT_TRUE(clicks(0).empty());
}

TEST_F(SyntheticEventsTest, GoToPlacesInPointsOfThePrimaryScreen) {
    startServer();
    addToResources("Xft.dpi: 192\n");
    addMonitor("left", {0, 0, 640, 720}, "none");
    addMonitor("*right", {640, 0, 640, 720}, "screen");
    startBarAndEvents();
    events_->postMouseEvent(EventType::mouseMoved, {100, 50});
    EXPECT_EQ(pointer(), (Point{840, 100}));
    events_->postMouseEvent(EventType::mouseMoved, {-100, 50.5});
    EXPECT_EQ(pointer(), (Point{440, 101}));
    const auto window = dockIcon();
    click(middle(window));
    const auto seen = clicks(2);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].x, x().area(window)->midX());
}

TEST_F(SyntheticEventsTest, AreNotSpoiledByModifiersThatTheUserHolds) {
    start();
    const auto window = dockIcon();
    for (const std::string key : {"Shift_L", "Super_L", "Alt_L", "Control_R"}) {
        xdotool({"keydown", key});
        const auto held = x().modifierState();
        ASSERT_NE(held, 0) << key;
        click(middle(window));
        const auto seen = clicks(2);
        ASSERT_EQ(seen.size(), 2U) << key;
        EXPECT_EQ(seen[0].state, 0) << key;
        EXPECT_EQ(seen[1].state, XCB_BUTTON_MASK_1) << key;
        EXPECT_TRUE(eventually([&] { return x().modifierState() == held; })) << key << " is held again";
        xdotool({"keyup", key});
        EXPECT_TRUE(eventually([&] { return x().modifierState() == 0; })) << key;
    }
}

TEST_F(SyntheticEventsTest, LeaveLocksAsTheyAre) {
    start();
    const auto window = dockIcon();
    xdotool({"key", "Caps_Lock"});
    ASSERT_EQ(x().modifierState(), XCB_MOD_MASK_LOCK);
    click(middle(window));
    EXPECT_EQ(clicks(2).size(), 2U);
    EXPECT_EQ(x().modifierState(), XCB_MOD_MASK_LOCK);
}

TEST_F(SyntheticEventsTest, OtherTypesAndPlacesThatAreNoneDoNothing) {
    start();
    const auto window = dockIcon();
    const auto place = middle(window);
    const auto before = pointer();
    for (const auto type : {EventType::rightMouseDown, EventType::keyDown, EventType::scrollWheel})
        events_->postMouseEvent(type, place);
    events_->postMouseEvent(EventType::mouseMoved, {std::nan(""), 0});
    EXPECT_EQ(pointer(), before);
    events_->postMouseEvent(EventType::mouseMoved, {1e300, -1e300});
    EXPECT_EQ(pointer(), (Point{1279, 0})) << "as far as the screen goes";
}

TEST_F(SyntheticEventsTest, AreTrustedWhereTheServerHasThem) {
    start();
    EXPECT_TRUE(std::as_const(*events_).isProcessTrusted());
    EXPECT_TRUE(events_->isProcessTrusted(true));
}

TEST_F(SyntheticEventsTest, AreNotTrustedWhereTheServerLacksThem) {
    // Without the extension, what moves the pointer in these tests is missing, too.
    startServer("1280x720x24", {"-extension", "XTEST"});
    startBarAndEvents();
    EXPECT_FALSE(std::as_const(*events_).isProcessTrusted());
    EXPECT_FALSE(events_->isProcessTrusted(true));
    click({100, 10});
    connection_->sync();
    EXPECT_FALSE(xcb_connection_has_error(connection_->raw()));
}

}  // namespace

}  // namespace velmo::desktop
