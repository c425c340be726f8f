#include "synthetic_events.h"

#include "linux/x11/reply.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmo::x11 {

namespace {

constexpr std::uint8_t wantedMajor = 2;
constexpr std::uint16_t wantedMinor = 2;

std::int16_t coordinate(double pixels) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<double>(std::floor(pixels), Limits::min(), Limits::max()));
}

}  // namespace

SyntheticEvents::SyntheticEvents(Connection& connection, const ScreenList& screens,
                                 const Modifiers& modifiers)
    : connection_(connection), screens_(screens), heldModifiers_(connection, modifiers) {
    xcb_prefetch_extension_data(connection.raw(), &xcb_test_id);
}

bool SyntheticEvents::hasExtension() const {
    // A request of an extension that the server lacks would end the connection.
    const auto* extension = xcb_get_extension_data(connection_.raw(), &xcb_test_id);
    return extension && extension->present;
}

bool SyntheticEvents::isProcessTrusted() const {
    if (!hasExtension())
        return false;
    xcb_connection_t* raw = connection_.raw();
    const auto cookie = xcb_test_get_version(raw, wantedMajor, wantedMinor);
    const auto version = owned(xcb_test_get_version_reply(raw, cookie, nullptr));
    return version && version->major_version >= wantedMajor;
}

void SyntheticEvents::postMouseEvent(EventType type, const Point& location) {
    const bool isMove = type == EventType::mouseMoved;
    const bool isPress = type == EventType::leftMouseDown;
    if ((!isMove && !isPress && type != EventType::leftMouseUp) || !std::isfinite(location.x) ||
        !std::isfinite(location.y) || !hasExtension())
        return;
    if (isPress)
        heldModifiers_.release();
    movePointer(location);
    if (!isMove) {
        xcb_test_fake_input(connection_.raw(), isPress ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE,
                            XCB_BUTTON_INDEX_1, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    }
    if (type == EventType::leftMouseUp)
        heldModifiers_.restore();
    xcb_flush(connection_.raw());
}

void SyntheticEvents::movePointer(const Point& location) const {
    const Point pixel = screens_.toPixels(location);
    constexpr std::uint8_t absolute = 0;
    xcb_test_fake_input(connection_.raw(), XCB_MOTION_NOTIFY, absolute, XCB_CURRENT_TIME, connection_.root(),
                        coordinate(pixel.x), coordinate(pixel.y), 0);
}

}  // namespace velmo::x11
