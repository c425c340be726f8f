#include "top_window.h"

#include "linux/x11/reply.h"

#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <optional>
#include <span>

namespace velmo::x11 {

namespace {

/// A window that raises itself whenever it is covered is left above after so many times in this time.
constexpr int mostRaises = 10;
constexpr std::chrono::seconds countTime{1};
/// Until a window manager has marked what it has just shown.
constexpr Seconds markingTime = 0.1;

/// A frame has the window in it, or one more window between.
constexpr int frameDepth = 2;
/// Beside what a frame is drawn with; more are not asked.
constexpr std::size_t mostChildren = 16;

struct Candidate {
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
};

/// A child of the root window, with its border.
std::optional<PixelRect> areaFrom(xcb_connection_t* connection, xcb_get_geometry_cookie_t cookie) {
    const auto reply = owned(xcb_get_geometry_reply(connection, cookie, nullptr));
    if (!reply)
        return std::nullopt;
    return PixelRect{reply->x, reply->y, reply->width + 2 * reply->border_width,
                     reply->height + 2 * reply->border_width};
}

bool overlap(const PixelRect& one, const PixelRect& other) {
    return one.x < other.x + other.width && other.x < one.x + one.width && one.y < other.y + other.height &&
           other.y < one.y + one.height;
}

/// Knows what the window manager manages: windows that it has marked, what holds a marked one, and the frames
/// that it made. A menu of its own holds nobody's window.
class Manager {
public:
    explicit Manager(const Connection& connection)
        : connection_(connection), resourceMask_(xcb_get_setup(connection.raw())->resource_id_mask) {
        const auto& atoms = connection.atoms();
        const auto value = connection.property(connection.root(), atoms.netSupportingWmCheck, XCB_ATOM_WINDOW,
                                               sizeof(xcb_window_t));
        if (value.size() == sizeof(xcb_window_t))
            std::memcpy(&window_, value.data(), sizeof(xcb_window_t));
    }

    bool manages(xcb_window_t window, int depth = frameDepth) const {
        if (isMarked(window))
            return true;
        if (depth == 0)
            return false;
        const auto tree = owned(
            xcb_query_tree_reply(connection_.raw(), xcb_query_tree(connection_.raw(), window), nullptr));
        if (!tree)
            return false;
        const std::span children(xcb_query_tree_children(tree.get()),
                                 static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
        const auto isAnothers = [this](xcb_window_t child) { return !made(child); };
        if (made(window) && std::any_of(children.begin(), children.end(), isAnothers))
            return true;
        const auto asked = children.first(std::min(children.size(), mostChildren));
        return std::any_of(asked.begin(), asked.end(),
                           [&](xcb_window_t child) { return manages(child, depth - 1); });
    }

private:
    bool made(xcb_window_t window) const {
        return window_ != XCB_WINDOW_NONE && (window & ~resourceMask_) == (window_ & ~resourceMask_);
    }
    bool isMarked(xcb_window_t window) const {
        const auto name = connection_.atoms().wmState;
        // Managers leave it on windows that they let go.
        std::uint32_t state = XCB_ICCCM_WM_STATE_WITHDRAWN;
        const auto value = connection_.property(window, name, name, sizeof state);
        if (value.size() == sizeof state)
            std::memcpy(&state, value.data(), sizeof state);
        return state != XCB_ICCCM_WM_STATE_WITHDRAWN;
    }

    const Connection& connection_;
    std::uint32_t resourceMask_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

}  // namespace

TopWindow::TopWindow(Connection& connection, xcb_window_t window)
    : connection_(connection), window_(window), checking_(connection.loop(), [this] { check(); }) {
    events_ = connection.onWindow(connection.root(), [this](const auto& event) { handle(event); });
}

TopWindow::~TopWindow() {
    endSecondLook();
}

void TopWindow::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    if (type != XCB_CONFIGURE_NOTIFY && type != XCB_CIRCULATE_NOTIFY && type != XCB_MAP_NOTIFY &&
        type != XCB_REPARENT_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_map_notify_event_t&>(event);
    if (change.window != window_)
        checking_.request();
}

/// The highest first.
std::vector<xcb_window_t> TopWindow::windowsAbove() const {
    xcb_connection_t* raw = connection_.raw();
    const auto tree = owned(xcb_query_tree_reply(raw, xcb_query_tree(raw, connection_.root()), nullptr));
    if (!tree)
        return {};
    const std::span windows(xcb_query_tree_children(tree.get()),
                            static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    const auto place = std::find(windows.begin(), windows.end(), window_);
    return place == windows.end() ? std::vector<xcb_window_t>()
                                  : std::vector(windows.rbegin(), std::make_reverse_iterator(place + 1));
}

/// What can be seen and lies over our window, the highest first.
std::vector<xcb_window_t> TopWindow::windowsOver() const {
    xcb_connection_t* raw = connection_.raw();
    const auto above = windowsAbove();
    if (above.empty())
        return {};
    const auto ownGeometry = xcb_get_geometry(raw, window_);
    // All questions before the first answer, so that the server is waited for only once.
    std::vector<Candidate> candidates;
    candidates.reserve(above.size());
    for (const auto window : above) {
        candidates.push_back({window, xcb_get_window_attributes(raw, window), xcb_get_geometry(raw, window)});
    }
    const auto own = areaFrom(raw, ownGeometry);
    std::vector<xcb_window_t> over;
    for (const auto& candidate : candidates) {
        const auto attributes = owned(xcb_get_window_attributes_reply(raw, candidate.attributes, nullptr));
        const auto area = areaFrom(raw, candidate.geometry);
        const bool isSeen = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
        if (isSeen && own && area && overlap(*own, *area))
            over.push_back(candidate.window);
    }
    return over;
}

void TopWindow::check() {
    endSecondLook();
    if (!rise())
        secondLook_ = connection_.loop().schedule(markingTime, [this] { rise(); });
}

void TopWindow::endSecondLook() {
    if (secondLook_)
        secondLook_->invalidate();
    secondLook_.reset();
}

bool TopWindow::rise() {
    const auto over = windowsOver();
    if (over.empty())
        return true;
    const Manager manager(connection_);
    const auto highest =
        std::find_if(over.begin(), over.end(), [&](xcb_window_t window) { return manager.manages(window); });
    if (highest == over.end())
        return false;
    if (!mayRaise())
        return true;
    const std::uint32_t values[] = {*highest, XCB_STACK_MODE_ABOVE};
    xcb_configure_window(connection_.raw(), window_, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                         values);
    return highest == over.begin();
}

bool TopWindow::mayRaise() {
    const auto now = std::chrono::steady_clock::now();
    if (now - countBegin_ > countTime) {
        countBegin_ = now;
        raises_ = 0;
    }
    if (++raises_ <= mostRaises)
        return true;
    // For good: a flicker that goes on is worse.
    events_ = {};
    return false;
}

}  // namespace velmo::x11
