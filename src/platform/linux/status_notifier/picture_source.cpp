#include "picture_source.h"

#include <utility>

namespace velmo::status_notifier {

namespace {

std::optional<Image> imageOf(const std::optional<Bitmap>& pixmap) {
    return pixmap ? std::optional(Image{*pixmap, false, {}}) : std::nullopt;
}

/// Compares the pixels, too: many programs send their icon again without need.
bool lookSame(const std::optional<Image>& left, const std::optional<Image>& right) {
    if (!left || !right)
        return left.has_value() == right.has_value();
    const auto& one = std::get<Bitmap>(left->content);
    const auto& other = std::get<Bitmap>(right->content);
    return left->isTemplate == right->isTemplate && one.width == other.width && one.height == other.height &&
           *one.pixels == *other.pixels;
}

}  // namespace

PictureSource::PictureSource(IconLoader& loader, std::function<void()> onChange)
    : loader_(loader), onChange_(std::move(onChange)) {}

void PictureSource::set(std::vector<ItemPicture> pictures, IconRequest request) {
    loading_ = {};
    pictures_ = std::move(pictures);
    request_ = std::move(request);
    tryNext();
}

void PictureSource::tryNext() {
    if (pictures_.empty()) {
        settle(std::nullopt);
        return;
    }
    const auto picture = pictures_.front();
    pictures_.erase(pictures_.begin());
    const auto use = [this, pixmap = imageOf(picture.pixmap)](const std::optional<Image>& icon) {
        if (icon || pixmap)
            settle(icon ? icon : pixmap);
        else
            tryNext();
    };
    request_.name = picture.name;
    if (picture.name.empty())
        use(std::nullopt);
    else
        loading_ = loader_.load(request_, use);
}

void PictureSource::settle(const std::optional<Image>& image) {
    if (std::exchange(isSettled_, true) && lookSame(image, image_))
        return;
    image_ = image;
    onChange_();
}

}  // namespace velmo::status_notifier
