#include "panel_window_session.h"

#include <xcb/composite.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>

namespace velmo::desktop {

namespace {

constexpr const char* compositingSelection = "_NET_WM_CM_S0";

}  // namespace

std::string nameOf(Composition composition) {
    constexpr std::array names = {"WithNoCompositingManager", "WithACompositingManager", "UnderXfwm4",
                                  "UnderMetacity"};
    return names[static_cast<std::size_t>(composition)];
}

void PanelWindowSession::TearDown() {
    DesktopSession::TearDown();
    compositingManager_.reset();
    beside_.clear();
}

void PanelWindowSession::startVelmoForPanels(nlohmann::json defaults) {
    defaults.emplace("clickAction", "showPanel");
    writeDefaults(defaults);
    startVelmo();
}

Area PanelWindowSession::strip(int margin) const {
    const auto window = panelWindow();
    const auto area = window ? x().area(*window).value_or(Area{}) : Area{};
    return {area.x + margin, area.y + margin, area.width - 2 * margin, area.height - 2 * margin};
}

void PanelWindowSession::openPanelWindow() {
    const auto place = *x().area(toggle());
    movePointer(place.midX(), place.midY());
    // A window manager that has just begun may still be arranging the windows.
    ASSERT_TRUE(eventually([&] { return x().windowUnderPointer() == bar(); }));
    click(toggle());
    ASSERT_TRUE(eventually([&] { return panelWindow().has_value(); }));
    // Away from the toggle, whose tooltip would lie over the panel.
    movePointer(farLeft, 400);
}

xcb_window_t PanelWindowSession::makeWindow(const Area& area, std::uint32_t color) const {
    xcb_connection_t* raw = x().raw();
    const xcb_window_t window = xcb_generate_id(raw);
    const std::uint32_t values[] = {
        color, 1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS};
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, window, x().root(), static_cast<std::int16_t>(area.x),
                      static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                      static_cast<std::uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values);
    xcb_map_window(raw, window);
    EXPECT_TRUE(x().isViewable(window));
    return window;
}

void PanelWindowSession::giveKeyboardTo(xcb_window_t window) const {
    xcb_set_input_focus(x().raw(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    EXPECT_EQ(x().keyboardOwner(), window);
}

int PanelWindowSession::eventsGot(std::uint8_t type) const {
    int count = 0;
    x().exists(x().root());
    while (auto* event = xcb_poll_for_event(x().raw())) {
        count += (event->response_type & 0x7f) == type ? 1 : 0;
        std::free(event);
    }
    return count;
}

xcb_window_t PanelWindowSession::topLevelOf(xcb_window_t window) const {
    while (x().parent(window) != x().root() && x().exists(window))
        window = x().parent(window);
    return window;
}

bool PanelWindowSession::isAbove(xcb_window_t upper, xcb_window_t lower) const {
    const auto stack = x().children(x().root());
    return std::find(stack.begin(), stack.end(), upper) > std::find(stack.begin(), stack.end(), lower);
}

void PanelWindowSession::startCompositingManager() {
    // One that gives every window a shadow that is seen from far, but for the bar, close to which the panel
    // is.
    compositingManager_.emplace(
        run({"picom", "--config", "/dev/null", "--backend", "xrender", "--shadow", "--shadow-radius", "40",
             "--shadow-opacity", "0.9", "--shadow-exclude", "y = 0"}));
    untilCompositionBegins();
}

void PanelWindowSession::startComposition(Composition composition) {
    if (composition == Composition::none)
        return;
    if (composition == Composition::picom) {
        startCompositingManager();
        return;
    }
    if (composition == Composition::xfwm4)
        startWindowManager({"dbus-run-session", "--", "xfwm4", "--compositor=on"});
    else
        startWindowManager({"metacity", "--composite"});
    untilCompositionBegins();
}

void PanelWindowSession::untilCompositionBegins() const {
    ASSERT_TRUE(eventually([&] { return x().selectionOwner(compositingSelection) != XCB_WINDOW_NONE; }));
    untilComposited();
}

/// It is at work, and done with what was there, once a window is redirected and drawn.
void PanelWindowSession::untilComposited() const {
    constexpr std::uint32_t color = 0x13579b;
    const xcb_window_t probe = makeWindow({600, 600, 8, 8}, color);
    EXPECT_TRUE(eventually([&] { return isRedirected(probe) && x().pixel(604, 604) == color; }));
    xcb_destroy_window(x().raw(), probe);
    EXPECT_TRUE(eventually([&] { return x().pixel(604, 604) != color; }));
}

/// Only what is redirected has a pixmap of its own.
bool PanelWindowSession::isRedirected(xcb_window_t window) const {
    xcb_connection_t* raw = x().raw();
    std::free(xcb_composite_query_version_reply(raw, xcb_composite_query_version(raw, 0, 4), nullptr));
    const xcb_pixmap_t pixmap = xcb_generate_id(raw);
    auto* error = xcb_request_check(raw, xcb_composite_name_window_pixmap_checked(raw, window, pixmap));
    const bool isRedirected = error == nullptr;
    std::free(error);
    if (isRedirected)
        xcb_free_pixmap(raw, pixmap);
    return isRedirected;
}

void PanelWindowSession::stopCompositingManager() {
    compositingManager_->end();
    ASSERT_TRUE(eventually([&] { return x().selectionOwner(compositingSelection) == XCB_WINDOW_NONE; }));
}

}  // namespace velmo::desktop
