#include "reserved_strip.h"

#include "linux/x11/property_question.h"
#include "linux/x11/shadow.h"
#include "linux/x11/window_tree.h"

#include <xcb/xcb_icccm.h>

#include <unistd.h>

#include <utility>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t everyDesktop = 0xffffffff;
constexpr Seconds attemptPause = 0.5;
constexpr int mostAttempts = 20;
/// Bytes of a window manager's name.
constexpr std::uint32_t longestName = 256;

}  // namespace

ReservedStrip::ReservedStrip(Connection& connection)
    : connection_(connection),
      window_(connection.newId()),
      following_(connection.loop(), attemptPause, [this] { followWindowManager(); }) {
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
    rootEvents_ = connection.onWindow(connection.root(), [this](const auto& event) { handleRoot(event); });
}

ReservedStrip::~ReservedStrip() {
    xcb_destroy_window(connection_.raw(), window_);
}

void ReservedStrip::reserve(const PixelRect& area, const std::vector<PixelRect>& monitors) {
    xcb_size_hints_t size{};
    xcb_icccm_size_hints_set_position(&size, 1, area.x, area.y);
    xcb_icccm_size_hints_set_size(&size, 1, area.width, area.height);
    xcb_icccm_size_hints_set_min_size(&size, area.width, area.height);
    xcb_icccm_size_hints_set_max_size(&size, area.width, area.height);
    xcb_icccm_set_wm_normal_hints(connection_.raw(), window_, &size);

    area_ = area;
    monitors_ = monitors;
    configure();
    setStrut(windowManager());
    declineShadow(connection_, window_, area);
}

void ReservedStrip::tellTime() const {
    connection_.setCardinals(window_, connection_.atoms().velmoTime, {});
}

void ReservedStrip::setStrut(const std::string& manager) {
    const auto& reader = StrutReader::named(manager);
    const auto strut = reader.strutFor(area_, monitors_, rootArea(connection_).width);
    const bool isRead = !reader.readsOnce || strutArea_ == area_;
    if (strut_ == strut && isRead)
        return;
    // Also where it is about to be shown: that may have been read.
    const bool beginsAnew = attempts_ > 0 && reader.readsOnce;
    if (beginsAnew)
        withdraw();
    strut_ = strut;
    strutArea_ = area_;
    const auto& atoms = connection_.atoms();
    connection_.setCardinals(window_, atoms.netWmStrutPartial, {strut.begin(), strut.end()});
    // The older form has only the depths.
    connection_.setCardinals(window_, atoms.netWmStrut, {strut.begin(), strut.begin() + 4});
    if (beginsAnew)
        show();
}

void ReservedStrip::withdraw() {
    xcb_unmap_window(connection_.raw(), window_);
    xcb_unmap_notify_event_t event{};
    event.response_type = XCB_UNMAP_NOTIFY;
    event.event = connection_.root();
    event.window = window_;
    xcb_send_event(connection_.raw(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    shown_ = false;
    attempts_ = 0;
}

/// The name by which it makes itself known. Empty where nobody manages windows, or does not say so yet.
std::string ReservedStrip::windowManager() const {
    const auto& atoms = connection_.atoms();
    const auto windows = PropertyQuestion(connection_, connection_.root(), atoms.netSupportingWmCheck,
                                          XCB_ATOM_WINDOW, sizeof(xcb_window_t))
                             .numbers();
    if (windows.empty())
        return {};
    return PropertyQuestion(connection_, windows.front(), atoms.netWmName, atoms.utf8String, longestName)
        .text();
}

void ReservedStrip::handleRoot(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    const bool isAnother =
        type == XCB_PROPERTY_NOTIFY && reinterpret_cast<const xcb_property_notify_event_t&>(event).atom ==
                                           connection_.atoms().netSupportingWmCheck;
    const bool isResized =
        type == XCB_CONFIGURE_NOTIFY &&
        reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == connection_.root();
    if (!isAnother && !isResized)
        return;
    looksForName_ = 0;
    following_.request();
}

/// Some make their window known before they have given it a name.
void ReservedStrip::followWindowManager() {
    const auto manager = windowManager();
    setStrut(manager);
    if (manager.empty() && ++looksForName_ < mostAttempts)
        following_.request();
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
    const auto type = event.response_type & 0x7f;
    if (type == XCB_MAP_NOTIFY || type == XCB_UNMAP_NOTIFY)
        shown_ = type == XCB_MAP_NOTIFY;
}

}  // namespace velmo::x11
