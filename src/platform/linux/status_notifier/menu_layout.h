#pragma once

#include "linux/toolkit/exported_menu.h"

#include <systemd/sd-bus.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

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

    bool isEmpty() const { return size() == 0; }
    /// In bytes.
    std::size_t size() const { return name.size() + data.size(); }
    // The linter takes the zero that the compiler compares with for a pointer.
    auto operator<=>(const MenuIcon&) const = default;  // NOLINT(modernize-use-nullptr)
};

class MenuLayout {
public:
    MenuLayout() = default;
    // The entries below the root stay where they are in memory.
    MenuLayout(MenuLayout&&) = default;
    MenuLayout& operator=(MenuLayout&&) = default;

    const ExportedMenuEntry& root() const { return root_; }
    void setRoot(ExportedMenuEntry root);
    /// Null where there is none.
    ExportedMenuEntry* find(std::int32_t id);

    /// By the entry's id; none of them is empty.
    const std::map<std::int32_t, MenuIcon>& icons() const { return icons_; }
    /// Leaves it out where all of them together would be too large.
    void setIcon(std::int32_t id, MenuIcon icon);
    /// Takes it away.
    MenuIcon takeIcon(std::int32_t id);

private:
    void addEntriesOf(ExportedMenuEntry& parent);

    ExportedMenuEntry root_;
    /// All but the root.
    std::unordered_map<std::int32_t, ExportedMenuEntry*> entries_;
    std::map<std::int32_t, MenuIcon> icons_;
    std::size_t iconBytes_ = 0;
};

/// Reads the answer to a question for the layout. An entry whose id was read before is left out, so that no
/// menu contains itself. Absent where the answer is none.
std::optional<MenuLayout> readMenuLayout(sd_bus_message* message);

/// What a message has changed.
struct MenuChanges {
    std::set<std::int32_t> entries;
    /// How many it has named, also of such as do not exist.
    std::size_t count = 0;
    /// False where it names more.
    bool isComplete = true;
};

/// Reads what has changed of some entries, as far as the message names no more than `most`, and applies it.
MenuChanges applyMenuChanges(sd_bus_message* message, MenuLayout& layout, std::size_t most);

}  // namespace velmo::status_notifier
