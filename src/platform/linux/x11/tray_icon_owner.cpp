// Whose an icon's window is that lies in a window that is not ours: its program's, or a window manager's by
// mistake.

#include "tray_icon.h"

#include "linux/x11/managed_windows.h"
#include "linux/x11/reply.h"

#include <utility>

namespace velmo::x11 {

namespace {

/// A window manager that takes an icon by mistake does so once; who wants it more often gets it.
constexpr int mostClaims = 3;
/// It may be busy with its own start for that long: before it can be known, and before it lets an icon go.
constexpr Seconds startTime = 2;
constexpr Seconds lookPause = 0.1;
constexpr int mostLooks = static_cast<int>(startTime / lookPause);

}  // namespace

void TrayIcon::clientWentInto(xcb_window_t parent) {
    wentToRoot_ = parent == connection_.root();
    if (!wentToRoot_)
        holder_ = parent;
    following_.request();
}

void TrayIcon::followClient() {
    const auto holder = std::exchange(holder_, std::nullopt);
    if (ended_)
        return;
    if (!wentToRoot_ && holder)
        findOwner(*holder);
    else if (isClaimed_ || lookForOwner_.isValid() ||
             (holder && ManagedWindows(connection_).mayHavePutInto(*holder, facts_.client)))
        embed();
    else
        settleOrLeave();
}

void TrayIcon::findClient() {
    const auto parent = parentOfClient();
    if (parent == XCB_WINDOW_NONE)
        leave();
    else if (parent != window() && (parent == connection_.root() || !lookForOwner_.isValid()))
        clientWentInto(parent);
}

void TrayIcon::findOwner(xcb_window_t parent) {
    lookForOwner(parent, mostLooks);
}

void TrayIcon::lookForOwner(xcb_window_t parent, int looksLeft) {
    lookForOwner_.end();
    const ManagedWindows managed(connection_);
    const bool isManagers = managed.havePutInto(parent, facts_.client);
    const bool mayBeManagers = !isManagers && managed.mayHavePutInto(parent, facts_.client);
    if (isManagers && (isClaimed_ || claims_ < mostClaims)) {
        claim();
    } else if (mayBeManagers && looksLeft > 0 && claims_ < mostClaims) {
        lookForOwner_ = connection_.loop().schedule(
            lookPause, lifetime_.guard([this, parent, looksLeft] { lookForOwner(parent, looksLeft - 1); }));
    } else if (!hasBeenEmbedded_) {
        embed();
    } else {
        settleOrLeave();
    }
}

void TrayIcon::settleOrLeave() {
    if (!isInItsPlace()) {
        leave();
        return;
    }
    placeClient();
    damaged();
    showOrHide();
}

xcb_window_t TrayIcon::parentOfClient() const {
    const auto cookie = xcb_query_tree(connection_.raw(), facts_.client);
    const auto tree = owned(xcb_query_tree_reply(connection_.raw(), cookie, nullptr));
    return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

/// At its start a window manager looks for windows that are there, and then frames those that are mapped:
/// also the one that has come into the bar in between. Were it just taken back, the manager would put it into
/// the root window when it notices. So it is withdrawn from the manager, and comes when it has been let go.
void TrayIcon::claim() {
    if (isClaimed_)
        return;
    isClaimed_ = true;
    const int claim = ++claims_;
    unredirect();
    xcb_unmap_window(connection_.raw(), facts_.client);
    xcb_unmap_notify_event_t withdrawal{};
    withdrawal.response_type = XCB_UNMAP_NOTIFY;
    withdrawal.event = connection_.root();
    withdrawal.window = facts_.client;
    xcb_send_event(connection_.raw(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&withdrawal));
    connection_.loop().schedule(startTime, lifetime_.guard([this, claim] {
        if (isClaimed_ && claim == claims_ && !ended_)
            embed();
    }));
}

}  // namespace velmo::x11
