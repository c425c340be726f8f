#pragma once

#include "linux/toolkit/exported_menu.h"

#include <systemd/sd-bus.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace velmo::status_notifier {

/// Entries of a menu in all, and menus in each other, that are read; what is beyond is left out.
inline constexpr std::size_t mostMenuEntries = 1000;
inline constexpr int deepestMenu = 12;

/// Where an entry's picture comes from.
struct MenuIcon {
    /// In the icon theme.
    std::string name;
    /// The content of an image file.
    std::string data;

    bool isEmpty() const { return name.empty() && data.empty(); }
    // The linter takes the zero that the compiler compares with for a pointer.
    auto operator<=>(const MenuIcon&) const = default;  // NOLINT(modernize-use-nullptr)
};

struct MenuLayout {
    ExportedMenuEntry root;
    /// By the entry's id.
    std::map<std::int32_t, MenuIcon> icons;

    /// Null where there is none.
    ExportedMenuEntry* find(std::int32_t id);
};

/// Reads the answer to a question for the layout. An entry whose id was read before is left out, so that no
/// menu contains itself. Absent where the answer is none.
std::optional<MenuLayout> readMenuLayout(sd_bus_message* message);

/// Reads what has changed of some entries, and applies it. True where that concerns any.
bool applyMenuChanges(sd_bus_message* message, MenuLayout& layout);

}  // namespace velmo::status_notifier
