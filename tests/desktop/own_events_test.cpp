#include "own_events_session.h"

#include <xcb/xtest.h>

namespace velmo::desktop {

namespace {

class OwnEvents : public OwnEventsSession {
protected:
    /// How many presses the global monitors report while something is done.
    int globalPressesDuring(const std::function<void()>& deed) {
        int count = 0;
        const auto monitor = events_->addGlobalMonitor(presses, [&](const Event&) { ++count; });
        connection_->sync();
        deed();
        turnFor(milliseconds(60));
        return count;
    }
    /// Presses and releases, with so many other events just before that, all before the bar looks.
    void clickAfterEvents(const Area& area, int count) {
        xcb_connection_t* raw = x().raw();
        xcb_test_fake_input(raw, XCB_MOTION_NOTIFY, 0, 0, x().root(), static_cast<std::int16_t>(area.midX()),
                            static_cast<std::int16_t>(area.midY()), 0);
        for (int number = 0; number < count; ++number)
            xcb_change_property(raw, XCB_PROP_MODE_REPLACE, x().root(), XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                                0, nullptr);
        xcb_test_fake_input(raw, XCB_BUTTON_PRESS, 1, 0, XCB_WINDOW_NONE, 0, 0, 0);
        xcb_test_fake_input(raw, XCB_BUTTON_RELEASE, 1, 0, XCB_WINDOW_NONE, 0, 0, 0);
        x().exists(x().root());
    }
};

TEST_F(OwnEvents, PressOnOneOfOurItemsIsNoneElsewhereHoweverManyEventsCameBefore) {
    start();
    const auto item = bar_->makeStatusItem(30);
    turnFor(milliseconds(60));
    const auto own = areaOnScreen(*bar_->items().back());
    for (int count = 90; count < 110; ++count)
        EXPECT_EQ(globalPressesDuring([&] { clickAfterEvents(own, count); }), 0) << count << " events before";
    EXPECT_EQ(globalPressesDuring([&] { clickAfterEvents({600, 400, 2, 2}, 99); }), 1);
}

TEST_F(OwnEvents, PressesInTheToolkitsWindowsAreNotGlobal) {
    startWindowManager();
    start();
    const auto panel = makeToolkitWindow(false, {100, 200, 120, 60});
    const auto window = makeToolkitWindow(true, {400, 300, 200, 100});
    ASSERT_TRUE(eventually([&] { return x().parent(window) != x().root(); })) << "framed";
    const auto inside = *x().area(window);
    const auto frame = *x().area(x().parent(window));
    ASSERT_LT(frame.y + 3, inside.y) << "a title bar";
    EXPECT_EQ(globalPressesDuring([&] { clickAt(150, 230); }), 0);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(inside.midX(), inside.midY(), 3); }), 0);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(inside.midX(), frame.y + 3); }), 0);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(900, 600); }), 1) << "beside them";
    xcb_unmap_window(x().raw(), panel);
    x().exists(panel);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(150, 230); }), 1) << "where it was";
}

TEST_F(OwnEvents, PressesInOtherProgramsWindowsAreGlobal) {
    startWindowManager();
    start();
    const auto other = startOrdinaryWindow();
    const auto area = *x().area(other);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(area.midX(), area.midY()); }), 1);
    const auto icon = makeIcon(24, std::vector<std::uint32_t>(iconSide * iconSide, 0xff3366));
    dock(icon);
    const auto place = *x().area(icon);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(place.midX(), place.midY()); }), 1) << "an icon in our bar";
}

TEST_F(OwnEvents, PressOnAnItemOfOursPassesByTheMonitorsFirst) {
    start();
    const auto item = bar_->makeStatusItem(40);
    int actions = 0;
    item->button()->setAction([&] { ++actions; });
    item->button()->sendActionOn(maskOf(EventType::leftMouseDown));
    turnFor(milliseconds(20));
    const auto window = bar_->items().back()->window();
    const auto place = areaOnScreen(*bar_->items().back());
    auto disposition = EventDisposition::pass;
    auto monitor = events_->addLocalMonitor(presses, [&](const Event& event) {
        seen_.push_back(event);
        EXPECT_EQ(actions, static_cast<int>(seen_.size()) - 1) << "before the item";
        return disposition;
    });
    EXPECT_EQ(globalPressesDuring([&] { clickAt(place.midX(), place.midY()); }), 0);
    ASSERT_EQ(seen_.size(), 1U);
    EXPECT_EQ(seen_[0].type, EventType::leftMouseDown);
    EXPECT_EQ(seen_[0].windowNumber, window);
    EXPECT_EQ(actions, 1);

    disposition = EventDisposition::swallow;
    EXPECT_EQ(globalPressesDuring([&] { clickAt(place.midX(), place.midY()); }), 0);
    EXPECT_EQ(seen_.size(), 2U);
    EXPECT_EQ(actions, 1) << "it does not arrive";
    monitor.reset();
    clickAt(place.midX(), place.midY());
    EXPECT_TRUE(turnUntil([&] { return actions == 2; }));
    EXPECT_EQ(seen_.size(), 2U);
}

}  // namespace

}  // namespace velmo::desktop
