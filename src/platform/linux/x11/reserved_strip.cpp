#include "reserved_strip.h"

#include "linux/x11/shadow.h"

#include <xcb/xcb_icccm.h>

#include <unistd.h>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t everyDesktop = 0xffffffff;
constexpr Seconds attemptPause = 0.5;
constexpr int mostAttempts = 20;

}  // namespace

ReservedStrip::ReservedStrip(Connection& connection) : connection_(connection), window_(connection.newId()) {
    xcb_connection_t* raw = connection.raw();
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, window_, connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    const auto& atoms = connection.atoms();
    connection.setText(window_, atoms.netWmName, "Velmo menu bar space", atoms.utf8String);
    connection.setText(window_, XCB_ATOM_WM_CLASS, std::string("velmo\0Velmo\0", 12), XCB_ATOM_STRING);
    connection.setCardinals(window_, atoms.netWmWindowType, {atoms.netWmWindowTypeDock}, XCB_ATOM_ATOM);
    connection.setCardinals(window_, atoms.netWmDesktop, {everyDesktop});
    connection.setCardinals(window_, atoms.netWmPid, {static_cast<std::uint32_t>(getpid())});
    connection.setCardinals(window_, atoms.netWmState,
                            {atoms.netWmStateSticky, atoms.netWmStateSkipTaskbar, atoms.netWmStateSkipPager},
                            XCB_ATOM_ATOM);
    xcb_icccm_wm_hints_t hints{};
    xcb_icccm_wm_hints_set_input(&hints, 0);
    xcb_icccm_set_wm_hints(raw, window_, &hints);

    events_ = connection.onWindow(window_, [this](const auto& event) { handleOwn(event); });
}

ReservedStrip::~ReservedStrip() {
    if (nextAttempt_)
        nextAttempt_->invalidate();
    xcb_destroy_window(connection_.raw(), window_);
}

void ReservedStrip::reserve(const PixelRect& area, bool atTheTop) {
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    const std::uint32_t top = atTheTop ? number(area.y + area.height) : 0;
    // Left, right, top, bottom, then begin and end along each of them.
    connection_.setCardinals(
        window_, connection_.atoms().netWmStrutPartial,
        {0, 0, top, 0, 0, 0, 0, 0, number(area.x), number(area.x + area.width - 1), 0, 0});
    connection_.setCardinals(window_, connection_.atoms().netWmStrut, {0, 0, top, 0});

    xcb_size_hints_t size{};
    xcb_icccm_size_hints_set_position(&size, 1, area.x, area.y);
    xcb_icccm_size_hints_set_size(&size, 1, area.width, area.height);
    xcb_icccm_size_hints_set_min_size(&size, area.width, area.height);
    xcb_icccm_size_hints_set_max_size(&size, area.width, area.height);
    xcb_icccm_set_wm_normal_hints(connection_.raw(), window_, &size);

    area_ = area;
    configure();
    declineShadow(connection_, window_, area);
}

void ReservedStrip::configure() const {
    const std::uint32_t values[] = {static_cast<std::uint32_t>(area_.x), static_cast<std::uint32_t>(area_.y),
                                    static_cast<std::uint32_t>(area_.width),
                                    static_cast<std::uint32_t>(area_.height)};
    xcb_configure_window(
        connection_.raw(), window_,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
        values);
}

void ReservedStrip::show() {
    configure();
    xcb_map_window(connection_.raw(), window_);
    if (++attempts_ < mostAttempts) {
        nextAttempt_ = connection_.loop().schedule(attemptPause, lifetime_.guard([this] {
            if (!shown_)
                show();
        }));
    }
}

void ReservedStrip::handleOwn(const xcb_generic_event_t& event) {
    shown_ = shown_ || (event.response_type & 0x7f) == XCB_MAP_NOTIFY;
}

}  // namespace velmo::x11
