#pragma once

#include "platform/window_server.h"

#include <array>
#include <string_view>

namespace velmo {

/// A window that is, or only resembles, an open menu of another application.
struct MenuKind {
    std::string_view name;
    std::optional<std::int64_t> layer;
    std::optional<std::int32_t> ownerPID;
    /// Absent: the window is listed without bounds.
    std::optional<double> height;
    bool isOtherAppMenu = false;
};

inline constexpr std::int32_t ownProcess = 4242;
inline constexpr std::int32_t otherProcess = 77;

inline constexpr std::array<MenuKind, 9> menuKinds{{
    {"a menu", window_layer::popUpMenu, otherProcess, 300, true},
    {"a short menu", window_layer::popUpMenu, otherProcess, 20.5, true},
    {"a menu too low", window_layer::popUpMenu, otherProcess, 20, false},
    {"an own menu", window_layer::popUpMenu, ownProcess, 300, false},
    {"a window just below menus", window_layer::popUpMenu - 1, otherProcess, 300, false},
    {"a window just above menus", window_layer::popUpMenu + 1, otherProcess, 300, false},
    {"a menu of no known layer", std::nullopt, otherProcess, 300, false},
    {"a menu of no known owner", window_layer::popUpMenu, std::nullopt, 300, false},
    {"a menu of no known bounds", window_layer::popUpMenu, otherProcess, std::nullopt, false},
}};

}  // namespace velmo
