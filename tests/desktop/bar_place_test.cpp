#include "bar_session.h"
#include "icon_pixels.h"

#include "linux/x11/window_capture.h"

#include <algorithm>
#include <chrono>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

/// The test is the window manager.
class BarPlaces : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
        startBar();
        turnFor(milliseconds(50));
        for (const auto window : x().children(x().root())) {
            if (x().property(window, "_NET_WM_NAME") == "Velmo menu bar space")
                strip_ = window;
        }
        ASSERT_TRUE(x().isViewable(strip_));
        ASSERT_TRUE(isAtHome());
    }

    void set(xcb_window_t window, const char* name, xcb_atom_t type,
             const std::vector<std::uint32_t>& values) const {
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, x().atom(name), type, 32,
                            static_cast<std::uint32_t>(values.size()), values.data());
        x().exists(window);
    }
    /// Shown above the dock, and in the list of what is managed.
    xcb_window_t showManaged(const Area& area) const {
        const xcb_window_t window = xcb_generate_id(x().raw());
        xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, window, x().root(),
                          static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                          static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        set(window, "WM_STATE", x().atom("WM_STATE"), {1, XCB_WINDOW_NONE});
        xcb_map_window(x().raw(), window);
        set(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {strip_, window});
        return window;
    }
    void setFullScreen(xcb_window_t window, bool isFullScreen = true) const {
        std::vector<std::uint32_t> states = {x().atom("_NET_WM_STATE_STICKY")};
        if (isFullScreen)
            states.push_back(x().atom("_NET_WM_STATE_FULLSCREEN"));
        set(window, "_NET_WM_STATE", XCB_ATOM_ATOM, states);
        set(x().root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
    }
    void stack(xcb_window_t window, xcb_stack_mode_t mode) const {
        const std::uint32_t values[] = {strip_, static_cast<std::uint32_t>(mode)};
        xcb_configure_window(x().raw(), window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                             values);
        x().exists(window);
    }
    bool isAtHome() const { return x().area(bar_->window()) == Area{0, 0, 1280, 26}; }
    bool isAway() const { return x().area(bar_->window()) == Area{0, -26, 1280, 26}; }
    bool goesAway() {
        return turnUntil([&] { return isAway(); }, milliseconds(1000)) &&
               !turnUntil([&] { return !isAway(); }, milliseconds(200));
    }
    bool comesHome() {
        return turnUntil([&] { return isAtHome(); }, milliseconds(1000)) && staysAtHome();
    }
    bool staysAtHome() {
        return !turnUntil([&] { return !isAtHome(); }, milliseconds(200));
    }
    void turnFor(milliseconds time) {
        turnUntil([] { return false; }, time);
    }

    static constexpr Area screen{0, 0, 1280, 720};
    xcb_window_t strip_ = XCB_WINDOW_NONE;
};

TEST_F(BarPlaces, TheScreenIsLeftToAWindowThatFillsItForAsLongAsItDoes) {
    const auto window = showManaged(screen);
    EXPECT_TRUE(staysAtHome()) << "it is merely large";
    setFullScreen(window);
    EXPECT_TRUE(goesAway());
    setFullScreen(window, false);
    EXPECT_TRUE(comesHome());
    setFullScreen(window);
    EXPECT_TRUE(goesAway());
    xcb_unmap_window(x().raw(), window);
    x().exists(window);
    EXPECT_TRUE(comesHome());
    xcb_map_window(x().raw(), window);
    x().exists(window);
    EXPECT_TRUE(goesAway());
    xcb_destroy_window(x().raw(), window);
    x().exists(window);
    EXPECT_TRUE(comesHome());
}

TEST_F(BarPlaces, AWindowThatFillsTheScreenCountsAboveTheDockOnly) {
    const auto window = showManaged(screen);
    setFullScreen(window);
    ASSERT_TRUE(goesAway());
    stack(window, XCB_STACK_MODE_BELOW);
    EXPECT_TRUE(comesHome());
    stack(window, XCB_STACK_MODE_ABOVE);
    EXPECT_TRUE(goesAway());
    stack(window, XCB_STACK_MODE_BELOW);
    ASSERT_TRUE(comesHome());
    // As a tiling window manager does it.
    xcb_unmap_window(x().raw(), strip_);
    x().exists(strip_);
    EXPECT_TRUE(goesAway());
}

TEST_F(BarPlaces, AWindowThatFillsAnotherScreenIsOfNoInterest) {
    const auto window = showManaged({600, 0, 1280, 720});
    setFullScreen(window);
    EXPECT_TRUE(goesAway()) << "a small part is left free";
    const std::uint32_t values[] = {680};
    xcb_configure_window(x().raw(), window, XCB_CONFIG_WINDOW_X, values);
    x().exists(window);
    EXPECT_TRUE(comesHome());
}

TEST_F(BarPlaces, ABarThatComesHomeLiesAboveWhatWasRaisedMeanwhile) {
    const auto other = showManaged({100, 0, 300, 300});
    const auto window = showManaged(screen);
    setFullScreen(window);
    ASSERT_TRUE(goesAway());
    for (const auto raised : {other, window}) {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(x().raw(), raised, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        x().exists(raised);
    }
    turnFor(milliseconds(200));
    setFullScreen(window, false);
    EXPECT_TRUE(comesHome());
    EXPECT_TRUE(turnUntil([&] { return x().children(x().root()).back() == bar_->window(); }));
}

TEST_F(BarPlaces, WhatIsOpenIsToldThatTheBarLeaves) {
    int leaves = 0;
    const auto listener = bar_->onLeave([&] { ++leaves; });
    const auto window = showManaged(screen);
    EXPECT_TRUE(staysAtHome());
    EXPECT_EQ(leaves, 0);
    setFullScreen(window);
    ASSERT_TRUE(goesAway());
    EXPECT_EQ(leaves, 1);
    bar_->setLifted(true);
    bar_->setLifted(false);
    ASSERT_TRUE(goesAway());
    EXPECT_EQ(leaves, 1) << "what was opened over that window stays";
    setFullScreen(window, false);
    ASSERT_TRUE(comesHome());
    EXPECT_EQ(leaves, 1);
}

TEST_F(BarPlaces, TheBarIsOnItsScreenAsLongAsNothingFillsThat) {
    const auto isOn = [&] { return bar_->isOn(screens_->all().front()); };
    EXPECT_TRUE(isOn());
    const auto window = showManaged(screen);
    setFullScreen(window);
    ASSERT_TRUE(goesAway());
    EXPECT_FALSE(isOn());
    bar_->setLifted(true);
    EXPECT_TRUE(isOn());
    bar_->setLifted(false);
    EXPECT_FALSE(isOn());
    setFullScreen(window, false);
    ASSERT_TRUE(comesHome());
    EXPECT_TRUE(isOn());
}

TEST_F(BarPlaces, TheBarIsOnTheMainScreenOnly) {
    addMonitor("left", {0, 0, 640, 720}, "none");
    addMonitor("*right", {640, 0, 640, 720}, "screen");
    ASSERT_TRUE(turnUntil([&] { return screens_->all().size() == 2; }));
    EXPECT_TRUE(bar_->isOn(screens_->all().front()));
    EXPECT_FALSE(bar_->isOn(screens_->all().back()));
}

TEST_F(BarPlaces, TheScreenIsLeftToAProgramThatIsAsLargeAndWantsNoFrame) {
    const auto hints = [&](xcb_window_t window, std::uint32_t flags, std::uint32_t frame) {
        set(window, "_MOTIF_WM_HINTS", x().atom("_MOTIF_WM_HINTS"), {flags, 0, frame, 0, 0});
        set(x().root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {strip_});
    };
    const auto window = showManaged(screen);
    hints(window, 2, 1);
    EXPECT_TRUE(staysAtHome()) << "it wants one";
    hints(window, 1, 0);
    EXPECT_TRUE(staysAtHome()) << "it does not say";
    hints(window, 2, 0);
    EXPECT_TRUE(goesAway());
    stack(window, XCB_STACK_MODE_BELOW);
    EXPECT_TRUE(comesHome());
    set(x().root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
    EXPECT_TRUE(goesAway()) << "the user works with it";
    set(x().root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {strip_});
    EXPECT_TRUE(comesHome());
    stack(window, XCB_STACK_MODE_ABOVE);
    EXPECT_TRUE(goesAway());
    for (const char* type : {"_NET_WM_WINDOW_TYPE_DESKTOP", "_NET_WM_WINDOW_TYPE_DOCK"}) {
        set(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {x().atom(type)});
        hints(window, 2, 0);
        EXPECT_TRUE(comesHome()) << type;
    }
    set(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {x().atom("_NET_WM_WINDOW_TYPE_NORMAL")});
    hints(window, 2, 0);
    EXPECT_TRUE(goesAway());
    set(window, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, {26, 26, 26, 26});
    hints(window, 2, 0);
    EXPECT_TRUE(comesHome()) << "its shadow is as large";
    set(window, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, {0, 0, 0, 0});
    hints(window, 2, 0);
    EXPECT_TRUE(goesAway());
    const std::uint32_t values[] = {1280, 719};
    xcb_configure_window(x().raw(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    x().exists(window);
    EXPECT_TRUE(comesHome()) << "it leaves a line";
}

/// Where no strip is reserved it is as large as the screen, and it may draw its own title.
TEST_F(BarPlaces, AMaximizedProgramHasTheBarOverIt) {
    const auto window = showManaged(screen);
    set(window, "_MOTIF_WM_HINTS", x().atom("_MOTIF_WM_HINTS"), {2, 0, 0, 0, 0});
    const auto setStates = [&](const std::vector<const char*>& names) {
        std::vector<std::uint32_t> states;
        for (const char* name : names)
            states.push_back(x().atom(name));
        set(window, "_NET_WM_STATE", XCB_ATOM_ATOM, states);
        set(x().root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
    };
    setStates({"_NET_WM_STATE_MAXIMIZED_VERT"});
    EXPECT_TRUE(goesAway()) << "it is as wide without that";
    setStates({"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"});
    EXPECT_TRUE(comesHome());
    setStates({"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ", "_NET_WM_STATE_FULLSCREEN"});
    EXPECT_TRUE(goesAway()) << "it says so";
}

TEST_F(BarPlaces, WindowsThatMoveWithoutEndCostLittle) {
    // As large as it takes to be of interest for both: what covers the bar, and what fills the screen.
    const auto window = showManaged(screen);
    turnFor(milliseconds(700));
    const auto requests = [&] { return xcb_no_operation(connection_->raw()).sequence; };
    const auto requestsOfALook = [&] {
        const auto before = requests();
        stack(window, XCB_STACK_MODE_ABOVE);
        turnFor(milliseconds(300));
        return requests() - before;
    }();
    ASSERT_GT(requestsOfALook, 1U);
    const auto before = requests();
    std::uint32_t height = 720;
    int moves = 0;
    const auto end = std::chrono::steady_clock::now() + milliseconds(1000);
    while (std::chrono::steady_clock::now() < end) {
        height = height == 720 ? 721 : 720;
        xcb_configure_window(x().raw(), window, XCB_CONFIG_WINDOW_HEIGHT, &height);
        x().exists(window);
        loop_.turn();
        ++moves;
    }
    EXPECT_GT(moves, 200);
    // Some at once, and one each 50 ms; there may be a second look after each.
    EXPECT_LT(requests() - before, requestsOfALook * 35);
}

TEST_F(BarPlaces, AStateThatIsWrittenDownLateIsSeen) {
    const auto window = showManaged(screen);
    turnFor(milliseconds(30));
    set(window, "_NET_WM_STATE", XCB_ATOM_ATOM, {x().atom("_NET_WM_STATE_FULLSCREEN")});
    EXPECT_TRUE(goesAway());
}

TEST_F(BarPlaces, ALiftedBarComesAboveWhatFillsTheScreenAndGoesAgain) {
    const auto window = showManaged(screen);
    setFullScreen(window);
    ASSERT_TRUE(goesAway());
    bar_->setLifted(true);
    EXPECT_TRUE(turnUntil([&] { return isAtHome() && x().children(x().root()).back() == bar_->window(); }));
    EXPECT_TRUE(staysAtHome());
    bar_->setLifted(false);
    EXPECT_TRUE(goesAway());
}

TEST_F(BarPlaces, PicturesOfIconsAreHadWhileTheBarIsAway) {
    const auto icon = makeIcon(24, std::vector<std::uint32_t>(iconSide * iconSide, 0x30c040));
    dock(icon);
    x11::WindowCapture capture(*bar_);
    const auto middle = [&]() -> std::uint32_t {
        const auto area = areaOnScreen(*itemOf(icon));
        std::optional<Bitmap> picture;
        bool isDone = false;
        capture.captureWindow(icon, {area.width, area.height}, [&](std::optional<Bitmap> taken) {
            picture = std::move(taken);
            isDone = true;
        });
        EXPECT_TRUE(turnUntil([&] { return isDone; }));
        return picture ? pixelAt(*picture, picture->width / 2, picture->height / 2) : 0;
    };
    EXPECT_EQ(middle(), 0xff30c040);
    const auto window = showManaged(screen);
    setFullScreen(window);
    ASSERT_TRUE(goesAway());
    const std::uint32_t color = 0xd02010;
    xcb_change_window_attributes(x().raw(), icon, XCB_CW_BACK_PIXEL, &color);
    xcb_clear_area(x().raw(), 0, icon, 0, 0, 0, 0);
    x().exists(icon);
    EXPECT_EQ(middle(), 0xffd02010);
}

TEST_F(BarPlaces, ABarThatWasLiftedIsBelowMenusAgain) {
    const auto window = showManaged({100, 0, 300, 300});
    const auto menu = coverBar();
    bar_->setLifted(true);
    EXPECT_TRUE(turnUntil([&] { return x().children(x().root()).back() == bar_->window(); }));
    bar_->setLifted(false);
    const auto isOrdered = [&] {
        const auto order = x().children(x().root());
        const auto place = [&](xcb_window_t each) { return std::find(order.begin(), order.end(), each); };
        return place(window) < place(bar_->window()) && place(bar_->window()) < place(menu);
    };
    EXPECT_TRUE(turnUntil(isOrdered));
    turnFor(milliseconds(200));
    EXPECT_TRUE(isOrdered());
}

TEST_F(BarPlaces, TheDockIsBeneathTheBarEvenWhereNobodyManagesIt) {
    const auto isBeneath = [&] {
        const auto order = x().children(x().root());
        return std::find(order.begin(), order.end(), strip_) <
               std::find(order.begin(), order.end(), bar_->window());
    };
    EXPECT_TRUE(isBeneath());
    const std::uint32_t mode = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(x().raw(), strip_, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
    x().exists(strip_);
    ASSERT_FALSE(isBeneath());
    EXPECT_TRUE(turnUntil(isBeneath));
}

TEST_F(BarPlaces, AListOfNonsenseDoesNoHarm) {
    const auto window = showManaged(screen);
    set(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {0, 1, 0xffffffff, x().root(), bar_->window()});
    set(window, "_NET_WM_STATE", XCB_ATOM_CARDINAL, {x().atom("_NET_WM_STATE_FULLSCREEN")});
    EXPECT_TRUE(staysAtHome());
    set(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {window});
    EXPECT_TRUE(staysAtHome()) << "that state is no list of states";
    setFullScreen(window);
    EXPECT_TRUE(goesAway());
    xcb_delete_property(x().raw(), x().root(), x().atom("_NET_CLIENT_LIST"));
    x().exists(window);
    EXPECT_TRUE(comesHome());
}

TEST_F(BarPlaces, OfThousandsOfWindowsTheNewestAreKnownAndFewAreAsked) {
    const auto window = showManaged(screen);
    std::vector<std::uint32_t> windows(3000);
    std::iota(windows.begin(), windows.end(), 0x1e000000);
    windows.push_back(window);
    set(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, windows);
    EXPECT_TRUE(staysAtHome());
    const auto requests = [&] { return xcb_no_operation(connection_->raw()).sequence; };
    const auto before = requests();
    setFullScreen(window);
    EXPECT_TRUE(goesAway());
    turnFor(milliseconds(300));
    // A few looks, each of which asks two things about each.
    constexpr unsigned most = 256;
    EXPECT_LT(requests() - before, 12 * most);
    windows.insert(windows.begin(), window);
    windows.pop_back();
    set(window, "_NET_WM_STATE", XCB_ATOM_ATOM, {x().atom("_NET_WM_STATE_STICKY")});
    set(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, windows);
    EXPECT_TRUE(comesHome());
    setFullScreen(window);
    EXPECT_TRUE(goesAway()) << "and the oldest";
    std::swap(windows[0], windows[windows.size() / 2]);
    set(x().root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {XCB_WINDOW_NONE});
    set(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, windows);
    EXPECT_TRUE(comesHome());
    set(x().root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
    EXPECT_TRUE(goesAway()) << "and the one that the user works with";
}

TEST_F(BarPlaces, TheWindowThatTheUserWorksWithWaitsForNoOthers) {
    // As large as the screen, and not shown.
    std::vector<std::uint32_t> windows;
    for (int count = 0; count < 40; ++count) {
        windows.push_back(showManaged(screen));
        xcb_unmap_window(x().raw(), windows.back());
    }
    const auto window = showManaged(screen);
    windows.push_back(window);
    set(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, windows);
    EXPECT_TRUE(staysAtHome());
    setFullScreen(window);
    EXPECT_TRUE(goesAway());
}

}  // namespace

}  // namespace velmo::desktop
