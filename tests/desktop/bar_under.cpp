#include "bar_under.h"

#include <algorithm>
#include <cstdlib>

namespace velmo::desktop {

bool BarUnder::barStaysOnTopAt(int pointX, int pointY) const {
    return eventually([&] {
        return barIsOnTopAt(pointX, pointY) &&
               stays([&] { return barIsOnTopAt(pointX, pointY); }, milliseconds(300));
    });
}

bool BarUnder::isLeftTo(xcb_window_t window) const {
    const auto fills = [&] {
        const auto area = x().area(window);
        return area && area->height > 700 && x().isViewable(window) && !barIsOnTopAt(300, 13);
    };
    // The bar may come up once more for a window that has become active before it fills the screen.
    return eventually([&] { return fills() && stays(fills, milliseconds(300)); });
}

std::vector<xcb_window_t> BarUnder::seenWindows() const {
    auto windows = x().children(x().root());
    std::erase_if(windows, [&](xcb_window_t window) { return !x().isViewable(window); });
    return windows;
}

bool BarUnder::staysWithoutMoreThan(const std::vector<xcb_window_t>& windows) const {
    const auto isNew = [&](xcb_window_t window) {
        return std::find(windows.begin(), windows.end(), window) == windows.end();
    };
    return stays(
        [&] {
            const auto present = seenWindows();
            return std::none_of(present.begin(), present.end(), isNew);
        },
        milliseconds(300));
}

void BarUnder::activate(xcb_window_t window) const {
    xdotool({"windowactivate", std::to_string(window)});
    ASSERT_TRUE(eventually([&] { return activeWindow() == window; }));
}

xcb_window_t BarUnder::startActiveWindow(const std::string& title) {
    const auto window = startOrdinaryWindow(title);
    activate(window);
    return window;
}

int BarUnder::changesOfWindows() const {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    const std::uint32_t none = 0;
    xcb_change_window_attributes(x().raw(), x().root(), XCB_CW_EVENT_MASK, &mask);
    int count = 0;
    stays(
        [&] {
            x().exists(x().root());
            while (auto* event = xcb_poll_for_event(x().raw())) {
                count += (event->response_type & 0x7f) == XCB_CONFIGURE_NOTIFY ? 1 : 0;
                std::free(event);
            }
            return true;
        },
        milliseconds(1000));
    xcb_change_window_attributes(x().raw(), x().root(), XCB_CW_EVENT_MASK, &none);
    return count;
}

void BarUnder::startOnTwoScreens(const nlohmann::json& defaults) {
    // Some window managers know only screens that have an output, of which there is one.
    addMonitor("*left", {0, 0, 640, 720}, "none");
    addMonitor("right", {640, 0, 640, 720}, "screen");
    start(defaults);
}

bool BarUnder::revealsByScrollingAt(int pointX, int pointY) const {
    xdotool({"mousemove", std::to_string(pointX), std::to_string(pointY), "click", "4"});
    const bool reveals = eventually([&] { return !dividerIsExpanded(); }, milliseconds(500));
    // Which counts once in some time.
    stays([] { return true; }, milliseconds(700));
    return reveals;
}

xcb_window_t BarUnder::startGame() const {
    const xcb_window_t window = xcb_generate_id(x().raw());
    xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, window, x().root(), 0, 0, 1280, 720, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto set = [&](const char* name, const char* type, const std::vector<std::uint32_t>& numbers) {
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, x().atom(name), x().atom(type), 32,
                            static_cast<std::uint32_t>(numbers.size()), numbers.data());
    };
    set("_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0});
    // Place and size, by the user.
    std::vector<std::uint32_t> sizeHints = {3, 0, 0, 1280, 720};
    sizeHints.resize(18);
    set("WM_NORMAL_HINTS", "WM_SIZE_HINTS", sizeHints);
    xcb_map_window(x().raw(), window);
    EXPECT_TRUE(eventually([&] { return x().isViewable(window); }));
    // Not all are shown where they have asked to be.
    xdotool({"windowmove", std::to_string(window), "0", "0", "windowsize", std::to_string(window), "1280",
             "720"});
    return window;
}

void BarUnder::expectStripToItself(xcb_window_t window) const {
    change(window, "add,maximized_vert,maximized_horz");
    const auto isMaximized = [&] {
        const auto area = *x().area(window);
        return area.width > 1200 && area.y >= barHeight && area.y + area.height > 650;
    };
    EXPECT_TRUE(eventually(isMaximized)) << x().area(window)->y;
    EXPECT_TRUE(barStaysOnTopAt(640, 13));
}

void BarUnder::startWithTwoSections() {
    start({{"autoRehide", false},
           {"hideOnClickOutside", false},
           {"alwaysHiddenEnabled", true},
           {"statusItemOrder",
            {"Velmo.Toggle", "Velmo.Divider", "Velmo.AlwaysHiddenDivider", "parcellite.Parcellite"}}});
}

void BarUnder::expectDragsAndClicksToTakeNoFocus() {
    const auto window = startActiveWindow("Working");
    const auto hidden = startTrayProgram("gxkb", "Gxkb");
    superDrag(hidden, farLeft);
    const auto alwaysHidden = startTrayProgram("parcellite", "Parcellite");
    ASSERT_TRUE(eventually([&] { return isHidden(hidden) && isHidden(alwaysHidden); }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(hidden); }));
    EXPECT_TRUE(isHidden(alwaysHidden));
    clickHolding("Alt_L", toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(alwaysHidden); }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isHidden(hidden) && isHidden(alwaysHidden); }));
    EXPECT_EQ(activeWindow(), window);
}

void BarUnder::expectBarOnAnotherWorkspace(const std::string& manager) {
    const auto workspace = [&] { return x().cardinals(x().root(), "_NET_CURRENT_DESKTOP").front(); };
    const auto former = workspace();
    if (manager == "i3")
        outputOf({"i3-msg", "workspace", "2"}, environment_);
    else
        outputOf({"wmctrl", "-s", "1"}, environment_);
    ASSERT_TRUE(eventually([&] { return workspace() != former; }));
    EXPECT_TRUE(barStaysOnTopAt(640, 13));
    EXPECT_TRUE(isOnScreen(toggle()));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    expectStripToItself(startActiveWindow("Second"));
}

}  // namespace velmo::desktop
