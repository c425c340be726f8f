#pragma once

#include "geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// Levels at which windows are stacked.
namespace window_layer {
inline constexpr std::int64_t status = 25;
inline constexpr std::int64_t popUpMenu = 101;
}  // namespace window_layer

/// One window as the window server lists it. A member is absent where the server does not tell it.
struct WindowListEntry {
    std::optional<std::int64_t> number;
    std::optional<std::int64_t> layer;
    std::optional<std::int32_t> ownerPID;
    std::optional<std::string> ownerName;
    std::optional<std::string> name;
    /// Points, origin at the top left of the primary screen, y downwards.
    std::optional<Rect> bounds;
    std::optional<bool> isOnScreen;
};

enum class WindowListOption : std::uint32_t { onScreenOnly = 1 };

class WindowServer {
public:
    virtual ~WindowServer() = default;

    /// Front to back. Absent where the server does not answer.
    virtual std::optional<std::vector<WindowListEntry>> windowList(WindowListOption option) const = 0;
};

}  // namespace velmo
