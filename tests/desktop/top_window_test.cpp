#include "bar_session.h"

#include "linux/x11/top_window.h"

#include <algorithm>
#include <thread>

namespace velmo::desktop {

namespace {

/// How often in a second a window is put back on top.
constexpr int mostRaises = 10;

class TopWindows : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
        startBar();
        panel_ = makeWindow({100, 100, 200, 50});
        top_.emplace(*connection_, panel_);
        connection_->sync();
    }
    void TearDown() override {
        top_.reset();
        BarSession::TearDown();
    }

    xcb_window_t makeWindow(const Area& area) const { return makeWindow(area, x()); }
    static xcb_window_t makeWindow(const Area& area, const XObserver& maker) {
        const xcb_window_t window = xcb_generate_id(maker.raw());
        const std::uint32_t unmanaged = 1;
        xcb_create_window(maker.raw(), XCB_COPY_FROM_PARENT, window, maker.root(),
                          static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                          static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &unmanaged);
        maker.exists(window);
        return window;
    }
    /// Of a window; 1 is shown as usual, 0 not managed any more.
    void setState(xcb_window_t window, std::uint32_t state) const {
        const auto name = x().atom("WM_STATE");
        const std::uint32_t values[] = {state, XCB_WINDOW_NONE};
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, name, name, 32, 2, values);
    }
    void putInto(xcb_window_t holder, xcb_window_t window) const {
        xcb_reparent_window(x().raw(), window, holder, 0, 0);
        xcb_map_window(x().raw(), window);
        x().exists(window);
    }
    /// As a window manager does that puts no frames around windows.
    xcb_window_t showManaged(const Area& area) const {
        const auto window = makeWindow(area);
        setState(window, 1);
        show(window);
        return window;
    }
    void show(xcb_window_t window) const {
        xcb_map_window(x().raw(), window);
        x().exists(window);
    }
    /// Managed by nobody, with windows in it and in those.
    xcb_window_t showFilled(int inside = 16) const {
        const auto window = makeWindow({0, 0, 400, 300});
        for (int count = 0; count < inside; ++count) {
            const auto child = makeWindow({0, 0, 20, 20});
            for (int inner = 0; inner < inside; ++inner)
                putInto(child, makeWindow({0, 0, 10, 10}));
            putInto(window, child);
        }
        show(window);
        return window;
    }
    /// That have been sent so far, and this one.
    unsigned requests() const { return xcb_no_operation(connection_->raw()).sequence; }
    void raise(xcb_window_t window) const {
        const std::uint32_t mode = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(x().raw(), window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
        x().exists(window);
    }
    /// The highest first.
    bool areStacked(const std::vector<xcb_window_t>& windows) const {
        auto stack = x().children(x().root());
        std::reverse(stack.begin(), stack.end());
        std::erase_if(stack, [&](xcb_window_t window) {
            return std::find(windows.begin(), windows.end(), window) == windows.end();
        });
        return stack == windows;
    }
    bool become(const std::vector<xcb_window_t>& windows) {
        return turnUntil([&] { return areStacked(windows); }, milliseconds(1000));
    }
    bool stay(const std::vector<xcb_window_t>& windows) {
        return !turnUntil([&] { return !areStacked(windows); }, milliseconds(150));
    }

    xcb_window_t panel_ = XCB_WINDOW_NONE;
    std::optional<x11::TopWindow> top_;
};

TEST_F(TopWindows, LieAboveWhatIsShownOverThemAndRaised) {
    show(panel_);
    const auto first = showManaged({250, 90, 500, 300});
    EXPECT_TRUE(become({panel_, first}));
    const auto second = showManaged({0, 0, 500, 300});
    EXPECT_TRUE(become({panel_, second, first}));
    raise(first);
    EXPECT_TRUE(become({panel_, first, second}));
}

TEST_F(TopWindows, LeaveOthersAloneThatDoNotOverlap) {
    show(panel_);
    const auto beside = showManaged({300, 100, 100, 50});
    const auto beneath = showManaged({100, 150, 100, 50});
    EXPECT_TRUE(stay({beneath, beside, panel_}));
    const auto hidden = makeWindow({0, 0, 500, 300});
    raise(hidden);
    EXPECT_TRUE(stay({hidden, beneath, beside, panel_}));
}

TEST_F(TopWindows, TakeNoLookAtWhatMovesElsewhere) {
    show(panel_);
    const auto beside = showManaged({400, 300, 100, 50});
    turnUntil([] { return false; }, milliseconds(300));
    const auto before = requests();
    for (std::uint32_t step = 0; step < 30; ++step) {
        const std::uint32_t values[] = {400 + step};
        xcb_configure_window(x().raw(), beside, XCB_CONFIG_WINDOW_X, values);
        x().exists(beside);
        turnUntil([] { return false; }, milliseconds(1));
    }
    EXPECT_EQ(requests() - before, 1U);
    // It has been moved there under it.
    const std::uint32_t values[] = {410, 310};
    xcb_configure_window(x().raw(), panel_, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
    raise(beside);
    EXPECT_TRUE(become({panel_, beside}));
    const std::uint32_t away = 400;
    xcb_configure_window(x().raw(), panel_, XCB_CONFIG_WINDOW_Y, &away);
    x().exists(panel_);
    turnUntil([] { return false; }, milliseconds(100));
    raise(beside);
    EXPECT_TRUE(stay({beside, panel_}));
    const std::uint32_t back = 310;
    xcb_configure_window(x().raw(), panel_, XCB_CONFIG_WINDOW_Y, &back);
    x().exists(panel_);
    EXPECT_TRUE(become({panel_, beside})) << "it has come to lie beneath that";
}

TEST_F(TopWindows, AnswerOneAfterTheOtherAtOnce) {
    show(panel_);
    const auto other = showManaged({0, 0, 500, 300});
    ASSERT_TRUE(become({panel_, other}));
    turnUntil([] { return false; }, milliseconds(500));
    const auto begin = std::chrono::steady_clock::now();
    for (int count = 0; count < 8; ++count) {
        raise(other);
        ASSERT_TRUE(become({panel_, other})) << count;
    }
    // With a pause after each it would take more.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(300));
}

TEST_F(TopWindows, StayBelowWhatNobodyManages) {
    show(panel_);
    const auto notification = makeWindow({0, 0, 500, 300});
    show(notification);
    EXPECT_TRUE(stay({notification, panel_}));
    const auto managed = showManaged({0, 0, 500, 300});
    raise(notification);
    EXPECT_TRUE(become({notification, panel_, managed}));
}

TEST_F(TopWindows, StayBelowWhatHoldsAWindowThatWasManagedOnce) {
    show(panel_);
    const auto holder = makeWindow({0, 0, 500, 300});
    const auto inside = makeWindow({0, 0, 20, 20});
    setState(inside, 0);
    putInto(holder, inside);
    show(holder);
    EXPECT_TRUE(stay({holder, panel_}));
    setState(inside, 1);
    raise(panel_);
    raise(holder);
    EXPECT_TRUE(become({panel_, holder}));
}

TEST_F(TopWindows, LieAboveWhatIsMarkedOnlyAfterItWasShown) {
    show(panel_);
    const auto other = makeWindow({0, 0, 500, 300});
    show(other);
    turnUntil([] { return false; }, milliseconds(40));
    ASSERT_TRUE(areStacked({other, panel_}));
    setState(other, 1);
    x().exists(other);
    EXPECT_TRUE(become({panel_, other}));
}

TEST_F(TopWindows, LieAboveWhatIsMarkedOnlyAfterItWasShownAboveOthers) {
    show(panel_);
    const auto known = showManaged({0, 0, 500, 300});
    ASSERT_TRUE(become({panel_, known}));
    const auto late = makeWindow({0, 0, 500, 300});
    // Both come above the panel at once.
    raise(known);
    show(late);
    raise(late);
    turnUntil([] { return false; }, milliseconds(40));
    ASSERT_TRUE(areStacked({late, panel_, known}));
    setState(late, 1);
    x().exists(late);
    EXPECT_TRUE(become({panel_, late, known}));
}

TEST_F(TopWindows, StayBelowTheManagersMenusAndAboveItsFrames) {
    const XObserver manager(environment_.at("DISPLAY"));
    const auto check = makeWindow({-10, -10, 1, 1}, manager);
    xcb_change_property(manager.raw(), XCB_PROP_MODE_REPLACE, manager.root(),
                        manager.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW, 32, 1, &check);
    show(panel_);
    const auto menu = makeWindow({0, 0, 500, 300}, manager);
    putInto(menu, makeWindow({0, 0, 500, 20}, manager));
    show(menu);
    EXPECT_TRUE(stay({menu, panel_}));
    const auto frame = makeWindow({0, 0, 400, 300}, manager);
    // What it is drawn with comes before the program's window.
    for (int count = 0; count < 20; ++count)
        putInto(frame, makeWindow({0, 0, 10, 10}, manager));
    putInto(frame, makeWindow({0, 0, 400, 280}));
    show(frame);
    EXPECT_TRUE(become({panel_, frame, menu}));
    raise(menu);
    EXPECT_TRUE(stay({menu, panel_, frame}));
}

TEST_F(TopWindows, LieAboveWhatIsCirculated) {
    show(panel_);
    const auto managed = showManaged({0, 0, 500, 300});
    ASSERT_TRUE(become({panel_, managed}));
    // Others below the two may have their turn first.
    for (int count = 0; count < 8; ++count) {
        xcb_circulate_window(x().raw(), XCB_CIRCULATE_RAISE_LOWEST, x().root());
        x().exists(managed);
        EXPECT_TRUE(become({panel_, managed})) << count;
    }
}

TEST_F(TopWindows, GiveWayToAWindowThatKeepsRaisingItself) {
    show(panel_);
    const auto rival = showManaged({0, 0, 500, 300});
    ASSERT_TRUE(become({panel_, rival}));
    for (int count = 2; count <= mostRaises; ++count) {
        raise(rival);
        ASSERT_TRUE(become({panel_, rival})) << count;
    }
    raise(rival);
    EXPECT_TRUE(stay({rival, panel_}));
    std::this_thread::sleep_for(milliseconds(1000));
    raise(rival);
    EXPECT_TRUE(stay({rival, panel_})) << "for a while";
    EXPECT_TRUE(turnUntil([&] { return areStacked({panel_, rival}); }, milliseconds(3000)));
    raise(rival);
    EXPECT_TRUE(stay({rival, panel_})) << "one attempt";
}

TEST_F(TopWindows, AreRaisedAsOftenAsItTakesWhereTimePasses) {
    show(panel_);
    const auto other = showManaged({0, 0, 500, 300});
    ASSERT_TRUE(become({panel_, other}));
    for (int count = 2; count < mostRaises; ++count) {
        raise(other);
        ASSERT_TRUE(become({panel_, other})) << count;
    }
    std::this_thread::sleep_for(milliseconds(1050));
    for (int count = 1; count <= mostRaises; ++count) {
        raise(other);
        ASSERT_TRUE(become({panel_, other})) << count;
    }
}

TEST_F(TopWindows, AskLittleOfManyThatMoveWithoutEndAndRiseAtOnce) {
    show(panel_);
    const auto managed = showManaged({0, 0, 500, 300});
    std::vector<xcb_window_t> others;
    for (int count = 0; count < 12; ++count) {
        others.push_back(showFilled());
        ASSERT_TRUE(areStacked({others.back(), panel_}));
    }
    turnUntil([] { return false; }, milliseconds(1200));
    ASSERT_TRUE(areStacked({panel_, managed}));
    const auto before = requests();
    const auto begin = std::chrono::steady_clock::now();
    for (std::uint32_t step = 0; step < 100; ++step) {
        const std::uint32_t values[] = {step % 50};
        xcb_configure_window(x().raw(), others[step % others.size()], XCB_CONFIG_WINDOW_X, values);
        x().exists(managed);
        turnUntil([] { return false; }, milliseconds(10));
    }
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    // 12 times 50 questions about who manages them, twice a second, and 20 looks at where they are.
    EXPECT_LT(requests() - before, 1500 + 2500 * passed.count());
    raise(managed);
    EXPECT_TRUE(turnUntil([&] { return areStacked({panel_, managed}); }, milliseconds(200)));
}

TEST_F(TopWindows, FindWhatIsManagedBeneathManyOthers) {
    const auto managed = showManaged({0, 0, 500, 300});
    std::vector<xcb_window_t> order;
    for (int count = 0; count < 40; ++count)
        order.insert(order.begin(), showFilled(1));
    order.push_back(panel_);
    order.push_back(managed);
    show(panel_);
    EXPECT_TRUE(become(order));
    turnUntil([] { return false; }, milliseconds(1200));
    const auto before = requests();
    EXPECT_TRUE(stay(order));
    EXPECT_EQ(requests() - before, 1U) << "nobody is asked again";
}

TEST_F(TopWindows, ForgetWhatTheyKnowOfAWindowThatIsHidden) {
    show(panel_);
    const auto other = makeWindow({0, 0, 500, 300});
    show(other);
    turnUntil([] { return false; }, milliseconds(300));
    ASSERT_TRUE(areStacked({other, panel_}));
    xcb_unmap_window(x().raw(), other);
    setState(other, 1);
    show(other);
    EXPECT_TRUE(turnUntil([&] { return areStacked({panel_, other}); }, milliseconds(80)));
    xcb_unmap_window(x().raw(), other);
    setState(other, 0);
    show(other);
    raise(other);
    EXPECT_TRUE(stay({other, panel_}));
}

TEST_F(TopWindows, ForgetWhatTheyKnowOfAFrameThatGetsAWindow) {
    show(panel_);
    const auto frame = makeWindow({0, 0, 500, 300});
    show(frame);
    turnUntil([] { return false; }, milliseconds(300));
    ASSERT_TRUE(areStacked({frame, panel_}));
    const auto inside = makeWindow({0, 0, 20, 20});
    setState(inside, 1);
    putInto(frame, inside);
    EXPECT_TRUE(turnUntil([&] { return areStacked({panel_, frame}); }, milliseconds(80)));
}

TEST_F(TopWindows, LieWhereTheyAreOnceNobodyKeepsThemAbove) {
    show(panel_);
    top_.reset();
    const auto other = showManaged({0, 0, 500, 300});
    EXPECT_TRUE(stay({other, panel_}));
}

}  // namespace

}  // namespace velmo::desktop
