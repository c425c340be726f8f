#include "managed_windows.h"

#include "linux/x11/window_tree.h"

#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>

namespace velmo::x11 {

namespace {

/// A frame has the window in it, or one more window between.
constexpr int managedDepth = 2;
/// Beside what a frame is drawn with; more are not asked.
constexpr std::size_t mostChildren = 16;

}  // namespace

ManagedWindows::ManagedWindows(const Connection& connection)
    : connection_(connection), resourceMask_(xcb_get_setup(connection.raw())->resource_id_mask) {
    const auto& atoms = connection.atoms();
    const auto value = connection.property(connection.root(), atoms.netSupportingWmCheck, XCB_ATOM_WINDOW,
                                           sizeof(xcb_window_t));
    if (value.size() == sizeof(xcb_window_t))
        std::memcpy(&managersWindow_, value.data(), sizeof(xcb_window_t));
}

bool ManagedWindows::contain(xcb_window_t window) const {
    return contain(window, managedDepth);
}

bool ManagedWindows::contain(xcb_window_t window, int depth) const {
    if (isMarked(window))
        return true;
    if (depth == 0)
        return false;
    const auto children = childrenOf(connection_, window);
    const auto isAnothers = [this](xcb_window_t child) { return !managerMade(child); };
    if (managerMade(window) && std::any_of(children.begin(), children.end(), isAnothers))
        return true;
    const std::span asked(children.data(), std::min(children.size(), mostChildren));
    return std::any_of(asked.begin(), asked.end(),
                       [&](xcb_window_t child) { return contain(child, depth - 1); });
}

bool ManagedWindows::havePutInto(xcb_window_t parent, xcb_window_t window) const {
    // Managers that give no window of theirs away, or have frames made by a helper, mark at least the window.
    return parent != connection_.root() && !haveOneMaker(parent, window) &&
           (managerMade(parent) || isMarked(window));
}

bool ManagedWindows::managerMade(xcb_window_t window) const {
    return managersWindow_ != XCB_WINDOW_NONE && haveOneMaker(window, managersWindow_);
}

bool ManagedWindows::isMarked(xcb_window_t window) const {
    const auto name = connection_.atoms().wmState;
    // Managers leave it on windows that they let go.
    std::uint32_t state = XCB_ICCCM_WM_STATE_WITHDRAWN;
    const auto value = connection_.property(window, name, name, sizeof state);
    if (value.size() == sizeof state)
        std::memcpy(&state, value.data(), sizeof state);
    return state != XCB_ICCCM_WM_STATE_WITHDRAWN;
}

}  // namespace velmo::x11
