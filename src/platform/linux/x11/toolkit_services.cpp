#include "toolkit_services.h"

#include "linux/x11/keyboard_extension.h"
#include "linux/x11/reply.h"
#include "linux/x11/selection.h"
#include "linux/x11/top_window.h"

#include <xcb/xfixes.h>

#include <charconv>
#include <cstring>
#include <memory>

namespace velmo::x11 {

namespace {

/// How requests to a window manager reach it, and on whose behalf.
constexpr std::uint32_t toManager = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
constexpr std::uint32_t byTheUser = 2;

std::string keyOf(const std::string& name) {
    return "windowPlace." + name;
}

std::optional<double> number(std::string_view text) {
    // The root window's pixels have no others.
    std::int16_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

}  // namespace

ToolkitServices::ToolkitServices(MenuBar& bar, Events& events, FileUserDefaults& defaults)
    : bar_(bar), connection_(bar.connection()), events_(events), defaults_(defaults) {
    xcb_xfixes_select_selection_input(connection_.raw(), connection_.root(),
                                      connection_.atoms().netWmCmSelection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    selectionChanges_ = connection_.onExtension(xcb_xfixes_id, [this](const xcb_generic_event_t& event) {
        const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (change.selection == connection_.atoms().netWmCmSelection)
            compositingListeners_.notify();
    });
    screenChanges_ = bar.screens().onChange([this] { barListeners_.notify(); });
    settingsChanges_ = bar.settings().onChange([this] { barListeners_.notify(); });
}

Point ToolkitServices::barEnd() const {
    const auto screen = bar_.screens().primary();
    return bar_.screens().toScreen(screen.x + screen.width, screen.y);
}

Rect ToolkitServices::toPixels(const Rect& rect) const {
    return bar_.screens().screenToPixels(rect);
}

Rect ToolkitServices::visibleFrame(const Point& place) const {
    const auto screens = bar_.screens().all();
    for (const auto& screen : screens) {
        if (screen.frame.contains(place))
            return screen.visibleFrame;
    }
    return screens.front().visibleFrame;
}

void ToolkitServices::updateBar() {
    bar_.layOutIfNeeded();
    xcb_flush(connection_.raw());
}

bool ToolkitServices::isComposited() const {
    return selectionOwner(connection_, connection_.atoms().netWmCmSelection) != XCB_WINDOW_NONE;
}

Registration ToolkitServices::keepAbove(WindowNumber window) {
    auto kept = std::make_shared<TopWindow>(connection_, static_cast<xcb_window_t>(window));
    return Registration([kept]() mutable { kept.reset(); });
}

void ToolkitServices::spareButtonStates(void* connection) {
    selectKeyStates(static_cast<xcb_connection_t*>(connection));
}

void ToolkitServices::declareShadow(WindowNumber window, const Size& size, double margin) {
    xcb_connection_t* raw = connection_.raw();
    const auto id = static_cast<xcb_window_t>(window);
    const auto inside = static_cast<std::int16_t>(margin);
    const xcb_rectangle_t body = {inside, inside, static_cast<std::uint16_t>(size.width - 2 * margin),
                                  static_cast<std::uint16_t>(size.height - 2 * margin)};
    const auto region = connection_.newId();
    xcb_xfixes_create_region(raw, region, 1, &body);
    xcb_xfixes_set_window_shape_region(raw, id, XCB_SHAPE_SK_INPUT, 0, 0, region);
    xcb_xfixes_destroy_region(raw, region);
    // What compositing managers look at before they add a shadow.
    const auto extent = static_cast<std::uint32_t>(margin);
    connection_.setCardinals(id, connection_.atoms().gtkFrameExtents, {extent, extent, extent, extent});
    connection_.setCardinals(id, connection_.atoms().windowShadow, {0});
    connection_.sync();
}

void ToolkitServices::bringToWorkspace(WindowNumber window) {
    const auto brought = static_cast<xcb_window_t>(window);
    const auto& atoms = connection_.atoms();
    const auto workspaceIn = [&](xcb_window_t holder, xcb_atom_t property) {
        std::optional<std::uint32_t> workspace;
        const auto value = connection_.property(holder, property, XCB_ATOM_CARDINAL, sizeof *workspace);
        if (value.size() == sizeof *workspace)
            std::memcpy(&workspace.emplace(), value.data(), sizeof *workspace);
        return workspace;
    };
    constexpr std::uint32_t everyWorkspace = 0xffffffff;
    const auto current = workspaceIn(connection_.root(), atoms.netCurrentDesktop);
    if (!current || workspaceIn(brought, atoms.netWmDesktop) == everyWorkspace)
        return;
    connection_.sendMessage(connection_.root(), toManager, brought, atoms.netWmDesktop,
                            {*current, byTheUser});
    connection_.sync();
}

void ToolkitServices::activate(WindowNumber window) {
    // Some window managers give the focus to nothing on another workspace than the user's.
    bringToWorkspace(window);
    // A command tells no time, and with that of a press from before the user turned to another window some
    // window managers do nothing.
    connection_.sendMessage(connection_.root(), toManager, static_cast<xcb_window_t>(window),
                            connection_.atoms().netActiveWindow,
                            {byTheUser, XCB_CURRENT_TIME, XCB_WINDOW_NONE});
}

xcb_window_t ToolkitServices::keyboardOwner() const {
    const auto reply =
        owned(xcb_get_input_focus_reply(connection_.raw(), xcb_get_input_focus(connection_.raw()), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

/// A window that has gone leaves the keyboard to the one under the pointer.
bool ToolkitServices::isLeftToUs(xcb_window_t owner) const {
    return owner == keyboardTaker_ || owner == XCB_INPUT_FOCUS_POINTER_ROOT || owner == XCB_INPUT_FOCUS_NONE;
}

void ToolkitServices::giveKeyboardTo(xcb_window_t window, xcb_timestamp_t time) const {
    xcb_set_input_focus(connection_.raw(), XCB_INPUT_FOCUS_POINTER_ROOT, window, time);
    bar_.tellTime();
}

void ToolkitServices::takeKeyboard(WindowNumber window) {
    const auto owner = keyboardOwner();
    if (keyboardTaker_ == XCB_WINDOW_NONE || !isLeftToUs(owner))
        formerOwner_ = owner;
    keyboardTaker_ = static_cast<xcb_window_t>(window);
    pressBeforeTaking_ = bar_.localEvents().lastPressAnywhere();
    giveKeyboardTo(keyboardTaker_, XCB_CURRENT_TIME);
}

bool ToolkitServices::hasKeyboard(WindowNumber window) const {
    return keyboardOwner() == static_cast<xcb_window_t>(window);
}

void ToolkitServices::giveKeyboardBack() {
    if (keyboardTaker_ == XCB_WINDOW_NONE)
        return;
    // A press may be about to give it to the window that was pressed: that is later than this, whatever comes
    // first.
    const auto press = bar_.localEvents().lastPressAnywhere();
    const auto time = press && press != pressBeforeTaking_ ? *press - 1 : std::uint32_t{XCB_CURRENT_TIME};
    if (isLeftToUs(keyboardOwner()) && formerOwner_ != XCB_WINDOW_NONE)
        giveKeyboardTo(formerOwner_, time);
    keyboardTaker_ = XCB_WINDOW_NONE;
    formerOwner_ = XCB_WINDOW_NONE;
}

std::optional<Point> ToolkitServices::rememberedPlace(const std::string& name) const {
    const auto stored = defaults_.stringForKey(keyOf(name));
    if (!stored)
        return std::nullopt;
    const auto space = stored->find(' ');
    if (space == std::string::npos)
        return std::nullopt;
    const auto x = number(std::string_view(*stored).substr(0, space));
    const auto y = number(std::string_view(*stored).substr(space + 1));
    if (!x || !y)
        return std::nullopt;
    return Point{*x, *y};
}

void ToolkitServices::rememberPlace(const std::string& name, const Point& place) {
    defaults_.setObject(
        std::to_string(static_cast<int>(place.x)) + " " + std::to_string(static_cast<int>(place.y)),
        keyOf(name));
}

}  // namespace velmo::x11
