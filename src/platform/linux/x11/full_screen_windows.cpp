#include "full_screen_windows.h"

#include "linux/x11/reply.h"
#include "linux/x11/window_tree.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace velmo::x11 {

namespace {

/// Until a window manager has written down what it has just done.
constexpr Seconds writingTime = 0.1;
/// More are not read.
constexpr std::uint32_t mostStates = 32;
constexpr std::size_t mostFullScreenClients = 16;

bool hasState(const Connection& connection, xcb_get_property_cookie_t cookie, xcb_atom_t state) {
    const auto reply = owned(xcb_get_property_reply(connection.raw(), cookie, nullptr));
    if (!reply || reply->format != 32)
        return false;
    const auto* begin = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    const auto* end =
        begin + static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) / sizeof(xcb_atom_t);
    return std::find(begin, end, state) != end;
}

/// A terminal may leave a margin that is no whole line.
bool covers(const PixelRect& window, const PixelRect& area) {
    return window.overlapWith(area) > area.overlapWith(area) / 2;
}

}  // namespace

FullScreenWindows::FullScreenWindows(Connection& connection, xcb_window_t dock,
                                     std::function<void()> onChange)
    : connection_(connection),
      dock_(dock),
      onChange_(std::move(onChange)),
      looking_(connection.loop(), [this] { look(); }) {
    events_ = connection.onWindow(connection.root(), [this](const auto& event) { handle(event); });
}

FullScreenWindows::~FullScreenWindows() {
    endSecondLook();
}

void FullScreenWindows::setArea(const PixelRect& area) {
    area_ = area;
    looking_.request();
}

void FullScreenWindows::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    bool matters = type == XCB_MAP_NOTIFY || type == XCB_UNMAP_NOTIFY || type == XCB_REPARENT_NOTIFY ||
                   type == XCB_CIRCULATE_NOTIFY;
    if (type == XCB_CONFIGURE_NOTIFY)
        matters = mayMatter(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto name = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
        const auto& atoms = connection_.atoms();
        matters = name == atoms.netClientList || name == atoms.netClientListStacking ||
                  name == atoms.netActiveWindow;
    }
    if (matters)
        looking_.request();
}

/// A window that is dragged about tells of each step, which is of no interest to us.
bool FullScreenWindows::mayMatter(const xcb_configure_notify_event_t& change) const {
    return coverArea_ || covers({change.x, change.y, change.width, change.height}, area_);
}

void FullScreenWindows::look() {
    endSecondLook();
    read();
    secondLook_ = connection_.loop().schedule(writingTime, [this] { read(); });
}

void FullScreenWindows::endSecondLook() {
    if (secondLook_)
        secondLook_->invalidate();
    secondLook_.reset();
}

void FullScreenWindows::read() {
    const auto found = find();
    if (std::exchange(coverArea_, found) != found)
        onChange_();
}

std::vector<xcb_window_t> FullScreenWindows::fullScreenClients() const {
    const auto& atoms = connection_.atoms();
    auto clients = managedWindowsOfOthers(connection_);
    // All questions before the first answer, so that the server is waited for only once.
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(clients.size());
    for (const auto client : clients)
        cookies.push_back(
            xcb_get_property(connection_.raw(), 0, client, atoms.netWmState, XCB_ATOM_ATOM, 0, mostStates));
    auto cookie = cookies.begin();
    std::erase_if(
        clients, [&](xcb_window_t) { return !hasState(connection_, *cookie++, atoms.netWmStateFullscreen); });
    clients.resize(std::min(clients.size(), mostFullScreenClients));
    return clients;
}

bool FullScreenWindows::isSeen(xcb_window_t window) const {
    const auto attributes = owned(xcb_get_window_attributes_reply(
        connection_.raw(), xcb_get_window_attributes(connection_.raw(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::vector<xcb_window_t> FullScreenWindows::covering(const std::vector<xcb_window_t>& clients) const {
    std::vector<xcb_window_t> windows;
    for (const auto client : clients) {
        const auto window = topLevelOf(connection_, client);
        const auto area = areaFrom(connection_, xcb_get_geometry(connection_.raw(), window));
        if (area && covers(*area, area_) && isSeen(client))
            windows.push_back(window);
    }
    return windows;
}

bool FullScreenWindows::find() const {
    const auto windows = covering(fullScreenClients());
    if (windows.empty() || !isSeen(dock_))
        return !windows.empty();
    const auto stack = childrenOf(connection_, connection_.root());
    const auto dock = std::find(stack.begin(), stack.end(), topLevelOf(connection_, dock_));
    return std::find_first_of(dock, stack.end(), windows.begin(), windows.end()) != stack.end();
}

}  // namespace velmo::x11
