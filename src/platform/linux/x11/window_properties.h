#pragma once

#include "linux/x11/atoms.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// What properties of windows say, which any program may have written.
namespace velmo::x11::window_properties {

using Numbers = std::vector<std::uint32_t>;

bool isAmong(const Numbers& atoms, xcb_atom_t atom);
/// By its states.
bool isMaximized(const Atoms& atoms, const Numbers& states);
/// A program that wants no frame, by its hints about that, its types and the margins within its window: what
/// shows icons behind all windows has no frame either, and one that draws its own has a shadow in its window.
bool wantsToBeBare(const Atoms& atoms, const Numbers& hints, const Numbers& types, const Numbers& margins);
/// A menu by its types, or, because some toolkits say nothing of it, by what it wants to be kept beneath it.
bool looksLikeMenu(const Atoms& atoms, const xcb_get_window_attributes_reply_t& attributes,
                   const Numbers& types);
/// True where a window manager has marked a window as one of its own. Managers leave the mark on windows that
/// they let go, and say so in it.
bool isMark(const std::string& state);
/// Of a list of windows those that `isWanted` holds for: `first` before all others if it is there, and of
/// hundreds only the first, among which docks are, and the last.
std::vector<xcb_window_t> managedAmong(Numbers windows, xcb_window_t first,
                                       const std::function<bool(xcb_window_t)>& isWanted);

}  // namespace velmo::x11::window_properties
