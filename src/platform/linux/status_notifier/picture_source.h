#pragma once

#include "image.h"
#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/item_properties.h"

#include <functional>
#include <optional>
#include <string>

namespace velmo::status_notifier {

/// Makes an image of what an item names or sends. The former one stays until the new one is there.
class PictureSource {
public:
    PictureSource(IconLoader& loader, std::function<void()> onChange);

    /// `folder` is where the item's own icons lie, `side` is in pixels.
    void set(const ItemPicture& picture, const std::string& folder, const std::string& theme, int side);
    /// Covers as many points as it has pixels.
    const std::optional<Image>& image() const { return image_; }
    /// False while the first image is being found.
    bool isSettled() const { return isSettled_; }

private:
    void settle(const std::optional<Image>& image);

    IconLoader& loader_;
    std::function<void()> onChange_;
    std::optional<Image> image_;
    bool isSettled_ = false;
    Registration loading_;
};

}  // namespace velmo::status_notifier
