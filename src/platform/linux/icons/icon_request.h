#pragma once

#include <string>
#include <tuple>

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
    /// Whom it is for. Those who wait take turns.
    std::string owner;

    /// True where both stand for the same picture.
    bool isSame(const IconRequest& other) const {
        return std::tie(side, name, folder, theme, data) ==
               std::tie(other.side, other.name, other.folder, other.theme, other.data);
    }
};

}  // namespace velmo
