#pragma once

#include "image.h"

#include <systemd/sd-bus.h>

#include <cstddef>
#include <optional>
#include <string>

namespace velmo::status_notifier {

enum class ItemStatus { passive, active, needsAttention };

/// One of an item's pictures.
struct ItemPicture {
    /// In the icon theme, or an absolute path; empty for none.
    std::string name;
    /// The best of the pixmaps, in the size that is shown.
    std::optional<Bitmap> pixmap;

    bool isEmpty() const { return name.empty() && !pixmap; }
};

/// What an item tells of itself.
struct ItemProperties {
    std::string id;
    std::string title;
    ItemStatus status = ItemStatus::active;
    std::string iconThemePath;
    ItemPicture icon;
    ItemPicture attentionIcon;
    ItemPicture overlayIcon;
    std::string toolTipTitle;
    std::string toolTipDescription;
    /// Path of the menu's object; empty for none.
    std::string menuPath;
    bool itemIsMenu = false;

    /// How much had to be read to learn this.
    std::size_t messageBytes = 0;
};

/// Reads the answer to a question for all properties. Those of a wrong type are as if they were missing.
/// Pixmaps are chosen for a side of `iconSide` pixels, overlays for `overlaySide`.
ItemProperties readItemProperties(sd_bus_message* message, int iconSide, int overlaySide);

}  // namespace velmo::status_notifier
