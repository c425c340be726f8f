#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <vector>

namespace velmo::x11 {

/// What a property of a window, which any program may have written, holds as a text. Empty where the answer
/// is null, or the property of another type.
std::string textIn(const xcb_get_property_reply_t* answer, xcb_atom_t type);

/// What it holds as numbers, whatever its type. Empty where the answer is null, or its numbers have not 32
/// bits.
std::vector<std::uint32_t> numbersIn(const xcb_get_property_reply_t* answer);

}  // namespace velmo::x11
