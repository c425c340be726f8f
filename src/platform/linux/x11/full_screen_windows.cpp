#include "full_screen_windows.h"

#include "linux/x11/property_question.h"
#include "linux/x11/reply.h"
#include "linux/x11/window_properties.h"
#include "linux/x11/window_tree.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velmo::x11 {

namespace {

/// Until a window manager has written down what it has just done.
constexpr Seconds writingTime = 0.1;
/// Somebody may move a window without end.
constexpr int looksAtOnce = 10;
constexpr Seconds lookPause = 0.05;
/// More is not read, in bytes.
constexpr std::uint32_t atomsLimit = 128;
constexpr std::size_t mostLikelyClients = 16;

constexpr std::uint32_t hintsLimit = 12;
constexpr std::uint32_t marginsLimit = 16;

bool contains(const PixelRect& window, const PixelRect& monitor) {
    return window.overlapWith(monitor) == std::int64_t{monitor.width} * monitor.height;
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
      looking_(
          connection.loop(), lookPause, [this] { look(); }, looksAtOnce) {
    events_ = connection.onWindow(connection.root(), [this](const auto& event) { handle(event); });
}

void FullScreenWindows::setArea(const PixelRect& area, const PixelRect& monitor) {
    area_ = area;
    monitor_ = monitor;
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
    secondLook_.end();
    read();
    secondLook_ = connection_.loop().schedule(writingTime, [this] { read(); });
}

void FullScreenWindows::read() {
    const auto found = find();
    if (std::exchange(coverArea_, found) != found)
        onChange_();
}

/// Those that say so, and those that are large enough. A maximized one is as large where no strip is
/// reserved.
std::vector<FullScreenWindows::Client> FullScreenWindows::likelyClients() const {
    xcb_connection_t* raw = connection_.raw();
    const auto& atoms = connection_.atoms();
    struct Question {
        xcb_window_t window;
        PropertyQuestion states;
        xcb_get_geometry_cookie_t geometry;
    };
    // All questions before the first answer, so that the server is waited for only once.
    std::vector<Question> questions;
    const auto windows = managedWindowsOfOthers(connection_, activeWindow());
    questions.reserve(windows.size());
    for (const auto window : windows) {
        questions.push_back({window,
                             {connection_, window, atoms.netWmState, XCB_ATOM_ATOM, atomsLimit},
                             xcb_get_geometry(raw, window)});
    }
    std::vector<Client> clients;
    for (const auto& [window, states, geometry] : questions) {
        const auto known = states.numbers();
        const bool saysSo = window_properties::isAmong(known, atoms.netWmStateFullscreen);
        const bool isMaximized = window_properties::isMaximized(atoms, known);
        const auto area = areaFrom(connection_, geometry);
        const bool isLarge = area && area->width >= monitor_.width && area->height >= monitor_.height;
        if ((saysSo || (isLarge && !isMaximized)) && clients.size() < mostLikelyClients)
            clients.push_back({window, saysSo});
    }
    return clients;
}

bool FullScreenWindows::isBareProgram(xcb_window_t window) const {
    const auto& atoms = connection_.atoms();
    const PropertyQuestion hintsQuestion(connection_, window, atoms.motifWmHints, atoms.motifWmHints,
                                         hintsLimit);
    const PropertyQuestion typesQuestion(connection_, window, atoms.netWmWindowType, XCB_ATOM_ATOM,
                                         atomsLimit);
    const PropertyQuestion marginsQuestion(connection_, window, atoms.gtkFrameExtents, XCB_ATOM_CARDINAL,
                                           marginsLimit);
    const auto hints = hintsQuestion.numbers();
    const auto types = typesQuestion.numbers();
    return window_properties::wantsToBeBare(atoms, hints, types, marginsQuestion.numbers());
}

xcb_window_t FullScreenWindows::activeWindow() const {
    const auto active = PropertyQuestion(connection_, connection_.root(), connection_.atoms().netActiveWindow,
                                         XCB_ATOM_WINDOW, 4)
                            .numbers();
    return active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active.front();
}

bool FullScreenWindows::isSeen(xcb_window_t window) const {
    const auto attributes = owned(xcb_get_window_attributes_reply(
        connection_.raw(), xcb_get_window_attributes(connection_.raw(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::vector<FullScreenWindows::Client> FullScreenWindows::coveringClients() const {
    auto clients = likelyClients();
    std::erase_if(clients, [this](Client& client) {
        client.topLevel = topLevelOf(connection_, client.window);
        const auto area = areaFrom(connection_, xcb_get_geometry(connection_.raw(), client.topLevel));
        if (!area || !isSeen(client.window))
            return true;
        return client.saysSo ? !covers(*area, area_)
                             : !contains(*area, monitor_) || !isBareProgram(client.window);
    });
    return clients;
}

bool FullScreenWindows::find() const {
    const auto clients = coveringClients();
    if (clients.empty() || !isSeen(dock_))
        return !clients.empty();
    const auto stack = childrenOf(connection_, connection_.root());
    const auto dock = std::find(stack.begin(), stack.end(), topLevelOf(connection_, dock_));
    return std::any_of(clients.begin(), clients.end(), [&](const Client& client) {
        return std::find(dock, stack.end(), client.topLevel) != stack.end() ||
               (!client.saysSo && client.window == activeWindow());
    });
}

}  // namespace velmo::x11
