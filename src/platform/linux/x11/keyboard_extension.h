#pragma once

// The header of the protocol has a field with a name that C++ keeps for itself.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

#include <cstdint>

namespace velmo::x11 {

/// Names the keyboard that all others act on.
inline constexpr std::uint16_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;

/// Makes a connection aware of the X keyboard extension: changes of the keyboard come as its events, and a
/// key that is held repeats its press without seeming to be released in between. False where the server lacks
/// it.
bool useKeyboardExtension(xcb_connection_t* connection);

/// A connection that hears of all that changes in the state of the keyboard hears of what keys change only:
/// no longer of each button of the mouse.
void selectKeyStates(xcb_connection_t* connection);

}  // namespace velmo::x11
