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

void PictureSource::set(const ItemPicture& picture, const std::string& folder, const std::string& theme,
                        int side) {
    loading_ = {};
    const auto pixmap = imageOf(picture.pixmap);
    if (picture.name.empty()) {
        settle(pixmap);
        return;
    }
    IconRequest request;
    request.side = side;
    request.name = picture.name;
    request.folder = folder;
    request.theme = theme;
    loading_ = loader_.load(request, [this, pixmap](const auto& icon) { settle(icon ? icon : pixmap); });
}

void PictureSource::settle(const std::optional<Image>& image) {
    if (std::exchange(isSettled_, true) && lookSame(image, image_))
        return;
    image_ = image;
    onChange_();
}

}  // namespace velmo::status_notifier
