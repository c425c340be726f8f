#pragma once

#include <string>

namespace velmo::status_notifier {

/// How a host shows icons.
struct IconLook {
    /// Pixels.
    int side = 20;
    /// Of the smaller icon in a corner of another one.
    int overlaySide = 10;
    /// Name of the icon theme; empty for the usual one.
    std::string theme;

    bool operator==(const IconLook&) const = default;
};

}  // namespace velmo::status_notifier
