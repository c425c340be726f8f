#include "screen_mode.h"
#include "window_manager_session.h"

#include "linux/x11/reply.h"

#include <fstream>
#include <string>
#include <utility>

namespace velmo::desktop {

namespace {

/// Maximized windows on screens of different sizes, one of which has the bar.
class MaximizedUnder : public WindowManagerSession {
protected:
    void setMonitors(const Area& primary, const Area& other) const {
        // Some window managers know only screens that have an output, of which there is one.
        addMonitor("*first", primary, "screen");
        addMonitor("other", other, "none");
    }
    static std::string text(const Area& area) {
        return std::to_string(area.width) + "x" + std::to_string(area.height) + "+" + std::to_string(area.x) +
               "+" + std::to_string(area.y);
    }
    /// A window that takes every size.
    xcb_window_t showWindow() const {
        const xcb_window_t window = xcb_generate_id(x().raw());
        xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, window, x().root(), 20, 60, 200, 150, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(x().raw(), window);
        EXPECT_TRUE(eventually([&] { return x().isViewable(window); }));
        return window;
    }
    void moveTo(xcb_window_t window, const std::string& name, const Area& monitor, int place = 50) const {
        if (manager_ == "i3")
            outputOf(
                {"i3-msg", "[id=" + std::to_string(window) + "]", "move", "container", "to", "output", name},
                environment_);
        else
            xdotool({"windowmove", std::to_string(window), std::to_string(monitor.x + place),
                     std::to_string(monitor.y + 60)});
        EXPECT_TRUE(eventually([&] {
            const auto area = x().area(window).value_or(Area{});
            return area.midX() > monitor.x && area.midX() < monitor.x + monitor.width &&
                   area.y >= monitor.y && area.y < monitor.y + monitor.height;
        })) << text(frameOf(window));
    }
    /// Of what the window manager has put around the window, with its border.
    Area frameOf(xcb_window_t window) const {
        auto frame = window;
        for (auto parent = x().parent(frame); parent != x().root() && parent != XCB_WINDOW_NONE;
             parent = x().parent(frame))
            frame = parent;
        const auto inside = x().area(frame).value_or(Area{});
        const auto reply =
            x11::owned(xcb_get_geometry_reply(x().raw(), xcb_get_geometry(x().raw(), frame), nullptr));
        const int border = reply ? reply->border_width : 0;
        return {inside.x - border, inside.y - border, inside.width + 2 * border, inside.height + 2 * border};
    }
    void expectToFill(xcb_window_t window, const Area& area) const {
        change(window, "add,maximized_vert,maximized_horz");
        // One keeps the borders of its frames, and puts them beyond the edges.
        const int border = manager_ == "icewm" ? 5 : 0;
        const Area expected{area.x - border, area.y - border, area.width + 2 * border,
                            area.height + 2 * border};
        EXPECT_TRUE(eventually([&] { return frameOf(window) == expected; }))
            << text(frameOf(window)) << " instead of " << text(expected);
        xcb_destroy_window(x().raw(), window);
        ASSERT_FALSE(x().exists(window));
    }
    void expectToFillBoth(const Area& primary, const Area& other) const {
        const auto first = showWindow();
        // One looks for the screen by columns: here the other one has none.
        moveTo(first, "first", primary, primary.x == other.x ? primary.width - 300 : 50);
        // To which nothing can be said of a bar below another screen.
        const bool isCovered = manager_ == "openbox" && primary.y == other.y + other.height &&
                               primary.x >= other.x && primary.x + primary.width <= other.x + other.width;
        expectToFill(first, isCovered ? primary : belowTheBar(primary));
        // It does not know the other one.
        if (manager_ == "xfwm4" && !haveOutputs_)
            return;
        // Here, too: below it is nothing.
        const auto second = showWindow();
        moveTo(second, "other", other, primary.x == 0 ? other.width - 300 : 50);
        expectToFill(second, other);
    }
    static Area belowTheBar(const Area& monitor) {
        constexpr int barHeight = 26;
        return {monitor.x, monitor.y + barHeight, monitor.width, monitor.height - barHeight};
    }

    std::string manager_ = GetParam();
    /// Each of the screens.
    bool haveOutputs_ = false;
    const Area whole{0, 0, 1280, 720};
    const Area tall{0, 0, 640, 720};
    const Area lowerBeside{640, 220, 640, 500};
    const Area wide{0, 0, 1280, 360};
    const Area wideBelow{0, 360, 1280, 360};
    const Area leftBelow{0, 360, 640, 360};
    const Area rightBelow{640, 360, 640, 360};
    const Area shortLeft{0, 0, 640, 300};
    const Area shortRight{640, 0, 640, 300};
    const Area wideBelowShort{0, 300, 1280, 420};
};

TEST_P(MaximizedUnder, FillsTheScreenBelowTheBar) {
    start();
    expectToFill(showWindow(), belowTheBar(whole));
}

TEST_P(MaximizedUnder, FillsALowerScreenBesideATallerOne) {
    setMonitors(lowerBeside, tall);
    start();
    expectToFillBoth(lowerBeside, tall);
}

TEST_P(MaximizedUnder, FillsALowerScreenThatBecomesThePrimaryOne) {
    // The one that has the output keeps the server from adding one of its own meanwhile.
    const bool knowsOne = manager_ == "xfwm4";
    addMonitor("first", lowerBeside, knowsOne ? "screen" : "none");
    addMonitor("*other", tall, knowsOne ? "none" : "screen");
    start();
    ASSERT_EQ(x().area(bar())->y, 0);
    removeMonitor("first");
    addMonitor("*first", lowerBeside, knowsOne ? "screen" : "none");
    ASSERT_TRUE(eventually([&] { return x().area(bar())->y == lowerBeside.y; }));
    expectToFillBoth(lowerBeside, tall);
}

TEST_P(MaximizedUnder, FillsAScreenBelowOneAsWideThatBecomesThePrimaryOne) {
    // Here, too.
    const bool knowsOne = manager_ == "xfwm4";
    addMonitor("first", wideBelow, knowsOne ? "screen" : "none");
    addMonitor("*other", wide, knowsOne ? "none" : "screen");
    start();
    ASSERT_EQ(x().area(bar())->y, 0);
    removeMonitor("first");
    addMonitor("*first", wideBelow, knowsOne ? "screen" : "none");
    ASSERT_TRUE(eventually([&] { return x().area(bar())->y == wideBelow.y; }));
    expectToFillBoth(wideBelow, wide);
}

TEST_P(MaximizedUnder, FillsALowerScreenUnderTheNextWindowManager) {
    setMonitors(lowerBeside, tall);
    start();
    const auto former = std::exchange(manager_, windowManagerAfter(manager_));
    replaceWindowManager(former, manager_);
    expectToFillBoth(lowerBeside, tall);
}

TEST_P(MaximizedUnder, FillsAScreenBelowTheLeftOfAnother) {
    setMonitors(leftBelow, wide);
    start();
    expectToFillBoth(leftBelow, wide);
}

TEST_P(MaximizedUnder, FillsAScreenBelowTheRightOfAnother) {
    setMonitors(rightBelow, wide);
    start();
    expectToFillBoth(rightBelow, wide);
}

TEST_P(MaximizedUnder, FillsAScreenBelowANarrowerOneAtItsLeft) {
    setMonitors(wideBelowShort, shortLeft);
    start();
    expectToFillBoth(wideBelowShort, shortLeft);
}

TEST_P(MaximizedUnder, FillsAScreenBelowANarrowerOneAtItsRight) {
    setMonitors(wideBelowShort, shortRight);
    start();
    expectToFillBoth(wideBelowShort, shortRight);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, MaximizedUnder, windowManagers,
                         [](const auto& manager) { return manager.param; });

/// Screens that have an output each, for a window manager that knows no others.
class MaximizedOnOutputs : public MaximizedUnder {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        const auto settings = home_ / "xorg.conf";
        std::ofstream(settings) << R"(
            Section "ServerFlags"
                Option "AutoAddGPU" "false"
            EndSection
            Section "Device"
                Identifier "memory"
                Driver "dummy"
            EndSection
            Section "Screen"
                Identifier "screen"
                Device "memory"
                DefaultDepth 24
            EndSection
        )";
        // Of a seat that has no terminal, keyboard or mouse.
        startServerBy({"Xorg", "-seat", "seat-velmo", "-config", settings, "-logfile", home_ / "xorg.log"});
        haveOutputs_ = true;
    }
    void setOutputs(const Area& primary, const Area& other) const {
        const auto place = [](const Area& area) {
            return std::to_string(area.x) + "x" + std::to_string(area.y);
        };
        requestScreenMode(primary.width, primary.height, environment_, "DUMMY0");
        requestScreenMode(other.width, other.height, environment_, "DUMMY1");
        outputOf({"xrandr", "--output", "DUMMY0", "--primary", "--pos", place(primary), "--output", "DUMMY1",
                  "--pos", place(other)},
                 environment_);
        // The server passes an output for disconnected until it looks again, and window managers pass over
        // it.
        ASSERT_NE(outputOf({"xrandr"}, environment_).find("DUMMY1 connected"), std::string::npos);
        ASSERT_EQ(x().area(x().root()), (Area{0, 0, 1280, 720}));
    }
    void expectBothToBeFilled(const Area& primary, const Area& other) {
        setOutputs(primary, other);
        start();
        expectToFillBoth(primary, other);
    }
};

TEST_P(MaximizedOnOutputs, FillsALowerScreenBesideATallerOne) {
    expectBothToBeFilled(lowerBeside, tall);
}

TEST_P(MaximizedOnOutputs, FillsAScreenBelowOneAsWide) {
    expectBothToBeFilled(wideBelow, wide);
}

TEST_P(MaximizedOnOutputs, FillsAScreenBelowTheLeftOfAnother) {
    expectBothToBeFilled(leftBelow, wide);
}

TEST_P(MaximizedOnOutputs, FillsAScreenBelowTheRightOfAnother) {
    expectBothToBeFilled(rightBelow, wide);
}

TEST_P(MaximizedOnOutputs, FillsAScreenBelowANarrowerOne) {
    expectBothToBeFilled(wideBelowShort, shortLeft);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, MaximizedOnOutputs, testing::Values("xfwm4"),
                         [](const auto& manager) { return manager.param; });

}  // namespace

}  // namespace velmo::desktop
