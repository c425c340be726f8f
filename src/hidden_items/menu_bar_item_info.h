#pragma once

#include "platform/geometry.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velmo {

/// The window of one menu bar item.
struct MenuBarItemInfo {
    std::uint32_t windowID = 0;
    std::int32_t ownerPID = 0;
    std::string ownerName;
    std::optional<std::string> title;
    /// Points, origin at the top left of the primary screen.
    Rect bounds;
    bool isOnScreen = true;

    /// What to call the item. Absent where neither title nor owner tells anything.
    std::optional<std::string> displayName() const;

    bool operator==(const MenuBarItemInfo&) const = default;
};

}  // namespace velmo

template <>
struct std::hash<velmo::MenuBarItemInfo> {
    std::size_t operator()(const velmo::MenuBarItemInfo& item) const noexcept;
};
