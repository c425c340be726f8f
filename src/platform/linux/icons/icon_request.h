#pragma once

#include <compare>
#include <string>

namespace velmo {

/// An icon to be had from a file.
struct IconRequest {
    /// Pixels.
    int side = 0;
    /// In the icon theme, or an absolute path.
    std::string name;
    /// A folder in which to look first; empty for none.
    std::string folder;
    /// Name of the icon theme.
    std::string theme;
    /// The content of an image file, instead of a name; empty for none.
    std::string data;

    auto operator<=>(const IconRequest&) const = default;
};

}  // namespace velmo
