#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What programs say to the tray, and of the windows that they have there.
namespace velmo::x11::tray_protocol {

/// The window that a message wants to be docked. `opcode` is the type of such messages. Absent for any other.
std::optional<xcb_window_t> windowToDock(const xcb_client_message_event_t& message, xcb_atom_t opcode);

/// The name of a program from the two texts of its class, which stay the same from start to start: at most
/// 128 characters of ASCII that can be seen. Empty where it has none.
std::string applicationFrom(std::string classes);

/// What an icon's window is called, in UTF-8 and cut off where it is long, from the title in UTF-8 or else
/// the older one in Latin-1. Absent where it has neither.
std::optional<std::string> titleFrom(const std::string& title, const std::string& olderTitle);

/// Whether a program wants its icon to be seen, from the numbers that it gives for that. True also where it
/// does not say.
bool wantsToBeShown(const std::vector<std::uint32_t>& embeddingInfo);

}  // namespace velmo::x11::tray_protocol
