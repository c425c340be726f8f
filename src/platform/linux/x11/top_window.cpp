#include "top_window.h"

#include "linux/x11/managed_windows.h"
#include "linux/x11/reply.h"
#include "linux/x11/window_tree.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmo::x11 {

namespace {

/// How often in which time, and how long nothing is done after that.
constexpr int mostRaises = 10;
constexpr std::chrono::seconds countTime{1};
constexpr Seconds restTime = 3;
/// Somebody may move a window without end.
constexpr int looksAtOnce = 10;
constexpr Seconds lookPause = 0.05;
/// Until a window manager has marked what it has just shown.
constexpr Seconds markingTime = 0.1;

struct Candidate {
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
};

}  // namespace

TopWindow::TopWindow(Connection& connection, xcb_window_t window, xcb_window_t beneath)
    : connection_(connection),
      window_(window),
      beneath_(beneath),
      area_(areaFrom(connection, xcb_get_geometry(connection.raw(), window))),
      checking_(
          connection.loop(), lookPause, [this] { check(); }, looksAtOnce) {
    events_ = connection.onWindow(connection.root(), [this](const auto& event) { handle(event); });
}

TopWindow::~TopWindow() {
    endSecondLook();
    if (nextAttempt_)
        nextAttempt_->invalidate();
}

void TopWindow::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    bool matters = type == XCB_CIRCULATE_NOTIFY || type == XCB_REPARENT_NOTIFY;
    if (type == XCB_MAP_NOTIFY)
        matters = reinterpret_cast<const xcb_map_notify_event_t&>(event).window != window_;
    if (type == XCB_CONFIGURE_NOTIFY)
        matters = mayCover(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
    if (matters)
        checking_.request();
}

/// A window that is dragged about elsewhere tells of each step. Where ours comes to, others may be already.
bool TopWindow::mayCover(const xcb_configure_notify_event_t& change) {
    const PixelRect area{change.x, change.y, change.width + 2 * change.border_width,
                         change.height + 2 * change.border_width};
    if (change.window == window_)
        return std::exchange(area_, area) != area;
    return !area_ || area_->overlaps(area);
}

/// The highest first.
std::vector<xcb_window_t> TopWindow::windowsAbove() const {
    const auto windows = childrenOf(connection_, connection_.root());
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
    const auto own = areaFrom(connection_, ownGeometry);
    std::vector<xcb_window_t> over;
    for (const auto& candidate : candidates) {
        const auto attributes = owned(xcb_get_window_attributes_reply(raw, candidate.attributes, nullptr));
        const auto area = areaFrom(connection_, candidate.geometry);
        const bool isSeen = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
        if (isSeen && own && area && own->overlaps(*area))
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
    const ManagedWindows managed(connection_);
    const auto highest = std::find_if(over.begin(), over.end(), [&](xcb_window_t window) {
        return window == beneath_ || managed.contain(window);
    });
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
    if (nextAttempt_)
        return false;
    const auto now = std::chrono::steady_clock::now();
    if (now - countBegin_ > countTime) {
        countBegin_ = now;
        raisesLeft_ = mostRaises;
    }
    if (raisesLeft_-- > 0)
        return true;
    // A flicker that goes on is worse.
    nextAttempt_ = connection_.loop().schedule(restTime, [this] {
        nextAttempt_.reset();
        countBegin_ = std::chrono::steady_clock::now();
        raisesLeft_ = 1;
        check();
    });
    return false;
}

}  // namespace velmo::x11
