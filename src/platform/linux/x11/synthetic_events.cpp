#include "synthetic_events.h"

#include "linux/x11/fake_input.h"
#include "linux/x11/reply.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmo::x11 {

namespace {

constexpr std::uint8_t wantedMajor = 2;
constexpr std::uint16_t wantedMinor = 2;
/// A pointer that has come to the bar without pressing there lets it go again.
constexpr Seconds longestLift = 1;

std::int16_t coordinate(double pixels) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<double>(std::floor(pixels), Limits::min(), Limits::max()));
}

}  // namespace

SyntheticEvents::SyntheticEvents(MenuBar& bar)
    : bar_(bar), connection_(bar.connection()), heldModifiers_(connection_, bar.modifiers()) {
    xcb_prefetch_extension_data(connection_.raw(), &xcb_test_id);
}

SyntheticEvents::~SyntheticEvents() {
    if (lowering_)
        lowering_->invalidate();
}

bool SyntheticEvents::isProcessTrusted() const {
    if (!canFakeInput(connection_))
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
        !std::isfinite(location.y) || !canFakeInput(connection_))
        return;
    const Point pixel = bar_.screens().toPixels(location);
    const bool isInBar = bar_.contains(pixel);
    if (isInBar && (isMove || isPress))
        liftBar();
    movePointer(pixel);
    if (isPress)
        press(isInBar);
    else if (!isMove)
        release();
    xcb_flush(connection_.raw());
}

void SyntheticEvents::press(bool isInBar) {
    // A window that keeps itself above everything is not to get what is meant for an icon.
    isPressed_ = !isInBar || isBarUnderPointer();
    if (!isPressed_)
        return;
    heldModifiers_.release();
    fakeButton(XCB_BUTTON_PRESS);
}

void SyntheticEvents::release() {
    if (std::exchange(isPressed_, false)) {
        fakeButton(XCB_BUTTON_RELEASE);
        heldModifiers_.restore();
    }
    lowerBar();
}

void SyntheticEvents::fakeButton(std::uint8_t type) const {
    xcb_test_fake_input(connection_.raw(), type, XCB_BUTTON_INDEX_1, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                        0);
}

bool SyntheticEvents::isBarUnderPointer() const {
    xcb_connection_t* raw = connection_.raw();
    const auto reply =
        owned(xcb_query_pointer_reply(raw, xcb_query_pointer(raw, connection_.root()), nullptr));
    return reply && reply->child == bar_.window();
}

void SyntheticEvents::liftBar() {
    bar_.setLifted(true);
    if (lowering_)
        lowering_->invalidate();
    lowering_ = connection_.loop().schedule(longestLift, lifetime_.guard([this] { lowerBar(); }));
}

void SyntheticEvents::lowerBar() {
    if (!lowering_)
        return;
    std::exchange(lowering_, nullptr)->invalidate();
    bar_.setLifted(false);
    xcb_flush(connection_.raw());
}

void SyntheticEvents::movePointer(const Point& pixel) const {
    constexpr std::uint8_t absolute = 0;
    xcb_test_fake_input(connection_.raw(), XCB_MOTION_NOTIFY, absolute, XCB_CURRENT_TIME, connection_.root(),
                        coordinate(pixel.x), coordinate(pixel.y), 0);
}

}  // namespace velmo::x11
