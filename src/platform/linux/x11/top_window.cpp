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
constexpr std::chrono::milliseconds markingTime{100};
/// What is not marked by then may be so later, but seldom is.
constexpr std::chrono::milliseconds verdictTime{500};
/// Windows that are asked about in one look, and known of at a time.
constexpr std::size_t mostAsked = 16;
constexpr std::size_t mostVerdicts = 1000;
/// What lies over ours is looked at down to here.
constexpr std::size_t mostOver = 256;

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

void TopWindow::handle(const xcb_generic_event_t& event) {
    forget(event);
    const auto type = event.response_type & 0x7f;
    bool matters = type == XCB_CIRCULATE_NOTIFY || type == XCB_REPARENT_NOTIFY;
    if (type == XCB_MAP_NOTIFY)
        matters = reinterpret_cast<const xcb_map_notify_event_t&>(event).window != window_;
    if (type == XCB_CONFIGURE_NOTIFY)
        matters = mayCover(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
    if (matters)
        checking_.request();
}

/// What was known of a window that is hidden, or put into another; or of that one.
void TopWindow::forget(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
        case XCB_UNMAP_NOTIFY:
            verdicts_.erase(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window);
            break;
        case XCB_REPARENT_NOTIFY: {
            const auto& change = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
            verdicts_.erase(change.window);
            verdicts_.erase(change.parent);
            break;
        }
        default:
            break;
    }
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
    over.resize(std::min(over.size(), mostOver));
    return over;
}

void TopWindow::check() {
    secondLook_.end();
    const auto over = windowsOver();
    if (!riseOver(over))
        secondLook_ = connection_.loop().schedule(untilSecondLook(over), [this] { riseOver(windowsOver()); });
}

/// By then all that is known by now is to be asked anew.
Seconds TopWindow::untilSecondLook(const std::vector<xcb_window_t>& windows) const {
    const auto now = Clock::now();
    auto latest = now + markingTime;
    for (const auto window : windows) {
        const auto known = verdicts_.find(window);
        if (known != verdicts_.end() && !known->second.isManaged)
            latest = std::max(latest, known->second.askAgain);
    }
    return std::chrono::duration<Seconds>(latest - now).count();
}

bool TopWindow::isManaged(xcb_window_t window) const {
    const auto known = verdicts_.find(window);
    return window == beneath_ || (known != verdicts_.end() && known->second.isManaged);
}

void TopWindow::judge(const std::vector<xcb_window_t>& windows) {
    // Timers may be early by what their arithmetic leaves.
    const auto now = Clock::now() + std::chrono::milliseconds(1);
    std::vector<xcb_window_t> unknown;
    std::vector<xcb_window_t> doubtful;
    for (const auto window : windows) {
        if (window == beneath_)
            break;
        const auto known = verdicts_.find(window);
        if (known == verdicts_.end())
            unknown.push_back(window);
        else if (known->second.isManaged)
            break;
        else if (known->second.askAgain <= now)
            doubtful.push_back(window);
    }
    // The rest has its turn in the next look.
    if (unknown.size() > mostAsked)
        checking_.request();
    unknown.insert(unknown.end(), doubtful.begin(), doubtful.end());
    unknown.resize(std::min(unknown.size(), mostAsked));
    ask(unknown);
}

void TopWindow::ask(const std::vector<xcb_window_t>& windows) {
    if (windows.empty())
        return;
    if (verdicts_.size() > mostVerdicts)
        verdicts_.clear();
    const auto managed = ManagedWindows(connection_).contain(windows);
    const auto now = Clock::now();
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const auto [known, isNew] = verdicts_.try_emplace(windows[index]);
        known->second = {managed[index], now + (isNew ? markingTime : verdictTime)};
    }
}

bool TopWindow::riseOver(const std::vector<xcb_window_t>& over) {
    if (over.empty())
        return true;
    judge(over);
    const auto highest =
        std::find_if(over.begin(), over.end(), [this](xcb_window_t window) { return isManaged(window); });
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
    if (nextAttempt_.isValid())
        return false;
    const auto now = Clock::now();
    if (now - countBegin_ > countTime) {
        countBegin_ = now;
        raisesLeft_ = mostRaises;
    }
    if (raisesLeft_-- > 0)
        return true;
    // A flicker that goes on is worse.
    nextAttempt_ = connection_.loop().schedule(restTime, [this] {
        countBegin_ = Clock::now();
        raisesLeft_ = 1;
        check();
    });
    return false;
}

}  // namespace velmo::x11
