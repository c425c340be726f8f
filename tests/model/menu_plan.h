#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace velmo {

enum class MenuChoice { nothing, toggleHidden, toggleAlwaysHidden, openPanel, openSettings, quit, hideClock };

inline constexpr std::size_t menuChoiceCount = 7;

/// What the user does with a menu of the program that a step happens to open.
struct MenuPlan {
    /// How long the menu stays open.
    std::int64_t nanoseconds = 0;
    /// Pressed as soon as the menu is open.
    std::optional<std::size_t> shortcut;
    /// Nothing is chosen where the menu does not have it.
    MenuChoice choice = MenuChoice::nothing;
};

}  // namespace velmo
