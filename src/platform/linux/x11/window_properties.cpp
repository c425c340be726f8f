#include "window_properties.h"

#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <iterator>

namespace velmo::x11::window_properties {

namespace {

/// Of the hints about a window's frame: which of the numbers count, and where the one about the frame is.
constexpr std::size_t hintFlags = 0;
constexpr std::size_t hintFrame = 2;
constexpr std::uint32_t saysFrame = 1U << 1U;
/// Of a list not more are asked.
constexpr std::ptrdiff_t mostManaged = 256;

}  // namespace

bool isAmong(const Numbers& atoms, xcb_atom_t atom) {
    return std::find(atoms.begin(), atoms.end(), atom) != atoms.end();
}

bool isMaximized(const Atoms& atoms, const Numbers& states) {
    return isAmong(states, atoms.netWmStateMaximizedHorz) && isAmong(states, atoms.netWmStateMaximizedVert);
}

bool wantsToBeBare(const Atoms& atoms, const Numbers& hints, const Numbers& types, const Numbers& margins) {
    const bool hasShadow = std::any_of(margins.begin(), margins.end(), [](auto width) { return width > 0; });
    return hints.size() > hintFrame && (hints[hintFlags] & saysFrame) != 0 && hints[hintFrame] == 0 &&
           !hasShadow && !isAmong(types, atoms.netWmWindowTypeDesktop) &&
           !isAmong(types, atoms.netWmWindowTypeDock);
}

bool looksLikeMenu(const Atoms& atoms, const xcb_get_window_attributes_reply_t& attributes,
                   const Numbers& types) {
    if (attributes.map_state != XCB_MAP_STATE_VIEWABLE || !attributes.override_redirect ||
        attributes._class != XCB_WINDOW_CLASS_INPUT_OUTPUT)
        return false;
    if (types.empty() || types.front() == atoms.netWmWindowTypeNormal)
        return attributes.save_under;
    const std::array menuTypes = {atoms.netWmWindowTypeMenu, atoms.netWmWindowTypePopupMenu,
                                  atoms.netWmWindowTypeDropdownMenu, atoms.netWmWindowTypeCombo};
    return std::find_first_of(types.begin(), types.end(), menuTypes.begin(), menuTypes.end()) != types.end();
}

bool isMark(const std::string& state) {
    std::uint32_t number = XCB_ICCCM_WM_STATE_WITHDRAWN;
    if (state.size() == sizeof number)
        std::memcpy(&number, state.data(), sizeof number);
    return number != XCB_ICCCM_WM_STATE_WITHDRAWN;
}

std::vector<xcb_window_t> managedAmong(Numbers windows, xcb_window_t first,
                                       const std::function<bool(xcb_window_t)>& isWanted) {
    std::erase_if(windows, [&](xcb_window_t window) { return !isWanted(window); });
    if (const auto found = std::find(windows.begin(), windows.end(), first); found != windows.end())
        std::rotate(windows.begin(), found, found + 1);
    if (std::ssize(windows) > mostManaged)
        windows.erase(windows.begin() + mostManaged / 2, windows.end() - mostManaged / 2);
    return windows;
}

}  // namespace velmo::x11::window_properties
