#include "panel_window_session.h"
#include "window_managers.h"

#include <algorithm>
#include <fstream>

namespace velmo::desktop {

namespace {

class PanelWindow : public PanelWindowSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
    }

    /// A terminal over the panel's place, once it is there.
    xcb_window_t startTerminal(const std::string& title) {
        startBeside({"xterm", "-geometry", "150x20-0+30", "-title", title});
        std::optional<xcb_window_t> window;
        EXPECT_TRUE(eventually([&] { return (window = shown(title)).has_value(); }));
        return window.value_or(xcb_window_t{XCB_WINDOW_NONE});
    }
    bool coversPanel(xcb_window_t window) const {
        const auto area = *x().area(window);
        const auto place = strip();
        return area.x < place.x + place.width && area.x + area.width > place.x &&
               area.y < place.y + place.height && area.y + area.height > place.y;
    }
    bool isOnTop(xcb_window_t lower) const {
        return panelWindow() && isAbove(*panelWindow(), topLevelOf(lower));
    }
    void expectStaysOnTop(xcb_window_t lower) const {
        EXPECT_TRUE(eventually([&] { return isOnTop(lower); }));
        EXPECT_TRUE(stays([&] { return isOnTop(lower); }, milliseconds(300)));
        movePointer(strip().midX(), strip().midY());
        EXPECT_TRUE(eventually([&] { return x().windowUnderPointer() == panelWindow(); }));
    }
};

using PanelOnANarrowScreen = PanelWindowSession;

class PanelUnder : public PanelWindow, public testing::WithParamInterface<std::string> {
protected:
    void askManager(xcb_window_t window, const std::vector<std::string>& what) const {
        std::vector<std::string> command = {"wmctrl", "-i"};
        command.insert(command.end(), what.begin(), what.end());
        command.insert(command.begin() + 3, std::to_string(window));
        outputOf(command, environment_);
    }
};

TEST_P(PanelUnder, StaysAboveWindowsThatAreShownAndRaisedAndMakesWayWithTheBar) {
    startWindowManagerNamed(GetParam());
    startVelmoForPanels();
    openPanelWindow();
    const auto first = startTerminal("First");
    EXPECT_TRUE(eventually([&] { return coversPanel(first); }));
    expectStaysOnTop(first);
    const auto second = startTerminal("Second");
    expectStaysOnTop(second);
    askManager(first, {"-a"});
    expectStaysOnTop(first);
    askManager(second, {"-a"});
    expectStaysOnTop(second);
    askManager(second, {"-r", "-b", "add,fullscreen"});
    EXPECT_TRUE(eventually([&] { return x().area(second)->height > 710 && !panelWindow(); }));
    askManager(second, {"-r", "-b", "remove,fullscreen"});
    EXPECT_TRUE(eventually([&] { return isAbove(bar(), topLevelOf(second)) && x().area(bar())->y == 0; }));
    EXPECT_FALSE(panelWindow());
    openPanelWindow();
    expectStaysOnTop(second);
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !panelWindow(); }));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, PanelUnder, windowManagers,
                         [](const auto& chosen) { return chosen.param; });

TEST_F(PanelWindow, StaysAboveWindowsOfAManagerThatPutsTheLatestAboveAll) {
    // Told to place windows by itself.
    const auto configuration = home_ / "twm.conf";
    std::ofstream(configuration) << "RandomPlacement\n";
    startBeside({"twm", "-f", configuration});
    startVelmoForPanels();
    openPanelWindow();
    for (const char* title : {"First", "Second"}) {
        const auto terminal = startTerminal(title);
        ASSERT_TRUE(eventually([&] { return topLevelOf(terminal) != terminal && coversPanel(terminal); }));
        expectStaysOnTop(terminal);
    }
}

TEST_F(PanelWindow, StaysBelowWhatNoWindowManagerManages) {
    startWindowManager();
    startVelmoForPanels();
    openPanelWindow();
    // As a notification or a locked screen.
    const auto cover = makeWindow({0, 0, 1280, 720}, 0x203040);
    EXPECT_TRUE(stays([&] { return isAbove(cover, *panelWindow()); }, milliseconds(300)));
    startBeside({"xterm", "-geometry", "150x20-0+30", "-title", "Beneath"});
    ASSERT_TRUE(eventually([&] { return shown("Beneath").has_value(); }));
    EXPECT_TRUE(stays([&] { return isAbove(cover, *panelWindow()); }, milliseconds(300)));
}

TEST_F(PanelWindow, IsNotRaisedOverTheMenusOfTheWindowManager) {
    startWindowManager();
    startVelmoForPanels();
    openPanelWindow();
    const auto place = strip();
    // Its menu opens at its corner, in the middle of the panel.
    startBeside({"xterm", "-geometry",
                 "20x10+" + std::to_string(place.midX()) + "+" + std::to_string(place.y + 4), "-title",
                 "Low"});
    ASSERT_TRUE(eventually([&] { return shown("Low").has_value(); }));
    const auto terminal = *shown("Low");
    expectStaysOnTop(terminal);
    movePointer(farLeft, 400);
    ASSERT_TRUE(eventually([&] { return x().keyboardOwner() == terminal; }));
    const auto seen = [&] {
        auto windows = x().children(x().root());
        std::erase_if(windows, [&](xcb_window_t window) { return !x().isViewable(window); });
        return windows;
    };
    // Where it is put when that window is raised; a window manager's menus go above that.
    const std::uint32_t aboveIt[] = {topLevelOf(terminal), XCB_STACK_MODE_ABOVE};
    xcb_configure_window(x().raw(), *panelWindow(), XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                         aboveIt);
    const auto before = seen();
    xdotool({"key", "alt+space"});
    xcb_window_t menu = XCB_WINDOW_NONE;
    ASSERT_TRUE(eventually([&] {
        for (const auto window : seen()) {
            if (std::find(before.begin(), before.end(), window) == before.end())
                menu = window;
        }
        return menu != XCB_WINDOW_NONE;
    }));
    ASSERT_TRUE(coversPanel(menu));
    EXPECT_TRUE(stays([&] { return isAbove(menu, *panelWindow()); }, milliseconds(300)));
    EXPECT_TRUE(isOnTop(terminal));
}

TEST_F(PanelWindow, KeepsItsDistanceFromADockUntilThatGoes) {
    startWindowManager();
    startVelmoForPanels();
    const auto dock = xcb_generate_id(x().raw());
    xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, dock, x().root(), 1280 - 60, 100, 60, 500, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto setNumbers = [&](const char* name, xcb_atom_t type,
                                const std::vector<std::uint32_t>& numbers) {
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, dock, x().atom(name), type, 32,
                            static_cast<std::uint32_t>(numbers.size()), numbers.data());
    };
    setNumbers("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {x().atom("_NET_WM_WINDOW_TYPE_DOCK")});
    setNumbers("_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, {0, 60, 0, 0, 0, 0, 100, 599, 0, 0, 0, 0});
    openPanelWindow();
    EXPECT_EQ(strip().x + strip().width, 1280 - 8);
    const auto reopen = [&] {
        xdotool({"key", "Escape"});
        ASSERT_TRUE(eventually([&] { return !panelWindow(); }));
        openPanelWindow();
    };
    const auto endsAt = [&](int end) {
        return eventually([&] {
            reopen();
            return strip().x + strip().width == end;
        });
    };
    xcb_map_window(x().raw(), dock);
    ASSERT_TRUE(eventually([&] { return x().isViewable(dock); }));
    EXPECT_TRUE(endsAt(1280 - 60 - 8));
    xcb_destroy_window(x().raw(), dock);
    ASSERT_FALSE(x().exists(dock));
    EXPECT_TRUE(endsAt(1280 - 8));
}

TEST_F(PanelWindow, IsSeenOnEveryWorkspace) {
    startWindowManager();
    startVelmoForPanels();
    const auto other = startOrdinaryWindow();
    openPanelWindow();
    for (const char* workspace : {"1", "2", "0"}) {
        outputOf({"wmctrl", "-s", workspace}, environment_);
        const bool isHome = std::string(workspace) == "0";
        ASSERT_TRUE(eventually([&] { return x().isViewable(other) == isHome; }));
        ASSERT_TRUE(panelWindow()) << workspace;
        movePointer(strip().midX(), strip().midY());
        EXPECT_TRUE(eventually([&] { return x().windowUnderPointer() == panelWindow(); })) << workspace;
    }
}

TEST_F(PanelWindow, EscapeReachesNobodyElse) {
    startVelmoForPanels();
    const auto other = makeWindow({100, 300, 200, 100}, 0x334455);
    giveKeyboardTo(other);
    for (const char* combination : {"Escape", "shift+Escape", "ctrl+alt+Escape", "super+Escape"}) {
        openPanelWindow();
        eventsGot(XCB_KEY_PRESS);
        xdotool({"key", combination});
        EXPECT_TRUE(eventually([&] { return !panelWindow(); })) << combination;
        std::string modifiers = combination;
        modifiers.resize(modifiers.size() - std::string("Escape").size());
        const auto modifierCount = std::count(modifiers.begin(), modifiers.end(), '+');
        EXPECT_EQ(eventsGot(XCB_KEY_PRESS), modifierCount) << combination;
        EXPECT_EQ(x().keyboardOwner(), other);
    }
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_KEY_PRESS) == 1; })) << "without a panel it is theirs";
}

TEST_F(PanelWindow, TakesNoKeyboardEvenWhereItIsClicked) {
    startWindowManager();
    startVelmoForPanels();
    const auto other = startOrdinaryWindow();
    ASSERT_TRUE(eventually([&] { return x().keyboardOwner() == other; }));
    openPanelWindow();
    const auto place = strip();
    xdotool({"mousemove", std::to_string(place.midX()), std::to_string(place.midY()), "click", "1"});
    EXPECT_TRUE(stays([&] { return panelWindow() && x().keyboardOwner() == other; }, milliseconds(300)));
}

TEST_F(PanelWindow, StaysOnTheMonitorOfTheBar) {
    addMonitor("left", {0, 0, 960, 720}, "none");
    // Too narrow for what the panel says.
    addMonitor("*right", {960, 0, 320, 720}, "screen");
    startVelmoForPanels();
    openPanelWindow();
    EXPECT_EQ(strip().width, 320 - 16);
    EXPECT_EQ(strip().x, 960 + 8);
    xdotool({"key", "Escape"});
    ASSERT_TRUE(eventually([&] { return !panelWindow(); }));

    removeMonitor("right");
    addMonitor("*left", {0, 0, 960, 720}, "screen");
    ASSERT_TRUE(eventually([&] { return x().area(toggle())->x < 960; }));
    openPanelWindow();
    EXPECT_EQ(strip().x + strip().width, 960 - 8);
}

TEST_F(PanelOnANarrowScreen, KeepsItsDistanceFromItsEdges) {
    startServer("300x400x24");
    startVelmoForPanels();
    openPanelWindow();
    EXPECT_EQ(strip().width, 300 - 16);
    EXPECT_EQ(strip().x, 8);
}

}  // namespace

}  // namespace velmo::desktop
