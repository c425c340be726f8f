#pragma once

#include "image.h"
#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/item_properties.h"

#include <functional>
#include <optional>
#include <vector>

namespace velmo::status_notifier {

/// Makes an image of what an item names or sends. The former one stays until the new one is there.
class PictureSource {
public:
    PictureSource(IconLoader& loader, std::function<void()> onChange);

    /// Of the pictures the first one that can be had. `request` is what is asked for each, but for its name.
    /// An icon that is being loaded comes first, so that one that changes without end is seen to change.
    void set(std::vector<ItemPicture> pictures, IconRequest request);
    /// Covers as many points as it has pixels.
    const std::optional<Image>& image() const { return image_; }
    /// False while the first image is being found.
    bool isSettled() const { return isSettled_; }

private:
    struct Wanted {
        /// Those that have not been tried yet.
        std::vector<ItemPicture> pictures;
        IconRequest request;
    };

    void begin();
    void tryNext();
    void loaded(const std::optional<Image>& image);
    void settle(const std::optional<Image>& image);

    IconLoader& loader_;
    Wanted wanted_;
    /// What is wanted once the icon that is being loaded is there.
    std::optional<Wanted> next_;
    std::function<void()> onChange_;
    std::optional<Image> image_;
    bool isSettled_ = false;
    bool isLoading_ = false;
    Registration loading_;
};

}  // namespace velmo::status_notifier
