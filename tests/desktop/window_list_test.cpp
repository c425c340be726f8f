#include "bar_session.h"

#include "linux/x11/window_list.h"

#include <algorithm>
#include <vector>

namespace velmo::desktop {

namespace {

/// Two monitors side by side, and an icon on either side of a long divider.
class WindowListOnScreens : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer("2560x1000x24");
        addMonitor("left", {0, 0, 640, 720}, "screen");
        addMonitor("*right", {640, 0, 1000, 1000}, "none");
        startBar({"Velmo.Toggle", "desktop_tests", "Velmo.Divider", "desktop_tests#2"});
        toggle_ = makeItem("Velmo.Toggle", 31);
        divider_ = makeItem("Velmo.Divider", longLength);
        icon_ = makeIcon(24, std::vector<std::uint32_t>(iconSide * iconSide, 0xff2060c0));
        dock(icon_);
        hidden_ = makeIcon(24, std::vector<std::uint32_t>(iconSide * iconSide, 0xff2060c0));
        dock(hidden_);
        list_ = std::make_unique<x11::WindowList>(*bar_);
    }
    void TearDown() override {
        list_.reset();
        divider_.reset();
        toggle_.reset();
        BarSession::TearDown();
    }

    std::unique_ptr<StatusItem> makeItem(const std::string& name, double length) {
        auto item = bar_->makeStatusItem(length);
        item->setAutosaveName(name);
        return item;
    }
    std::optional<Rect> boundsOf(xcb_window_t window) const {
        const auto entries =
            list_->windowList(WindowListOption::onScreenOnly).value_or(std::vector<WindowListEntry>());
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&](const auto& entry) { return entry.number == window; });
        return found == entries.end() ? std::nullopt : found->bounds;
    }
    /// The icon's place counts from the upper left corner of the monitor, and nothing is told of the other
    /// one.
    void expectListedOn(const Area& monitor) {
        EXPECT_TRUE(turnUntil([&] {
            return x().area(bar_->window())->x == monitor.x &&
                   x().area(bar_->window())->width == monitor.width;
        }));
        const int fromTheRight = 6 + 31;
        const auto bounds = boundsOf(icon_);
        ASSERT_TRUE(bounds);
        EXPECT_EQ(bounds->maxX(), monitor.width - fromTheRight);
        const auto seen = areaOnScreen(*itemOf(icon_));
        EXPECT_EQ(*bounds, (Rect{double(seen.x - monitor.x), double(seen.y - monitor.y), double(seen.width),
                                 double(seen.height)}));
        EXPECT_FALSE(boundsOf(hidden_));
    }

    static constexpr double longLength = 10000;
    std::unique_ptr<StatusItem> toggle_;
    std::unique_ptr<StatusItem> divider_;
    std::unique_ptr<x11::WindowList> list_;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
    xcb_window_t hidden_ = XCB_WINDOW_NONE;
};

TEST_F(WindowListOnScreens, TellsPlacesOnTheMonitorWithTheBar) {
    expectListedOn({640, 0, 1000, 1000});
    removeMonitor("right");
    expectListedOn({0, 0, 640, 720});
    addMonitor("*right", {640, 0, 1000, 1000}, "none");
    expectListedOn({640, 0, 1000, 1000});
    // Revealed beside another monitor: what does not fit is not on that one either.
    divider_->setLength(12);
    EXPECT_TRUE(turnUntil([&] { return boundsOf(hidden_).has_value(); }));
    toggle_->setLength(980);
    EXPECT_TRUE(turnUntil([&] { return !boundsOf(hidden_); }));
    EXPECT_TRUE(bar_->onRoot(*itemOf(hidden_)->place()).x > 0) << "where the other monitor is";
}

}  // namespace

}  // namespace velmo::desktop
