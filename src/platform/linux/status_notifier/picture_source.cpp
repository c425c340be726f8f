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
    next_ = Wanted{std::move(pictures), std::move(request)};
    const bool needsNoLoading = next_->pictures.empty() || next_->pictures.front().name.empty();
    if (!isLoading_ || needsNoLoading)
        begin();
}

void PictureSource::begin() {
    loading_ = {};
    isLoading_ = false;
    wanted_ = *std::exchange(next_, std::nullopt);
    tryNext();
}

void PictureSource::tryNext() {
    auto& pictures = wanted_.pictures;
    if (pictures.empty()) {
        settle(std::nullopt);
        return;
    }
    const auto picture = pictures.front();
    pictures.erase(pictures.begin());
    const auto pixmap = imageOf(picture.pixmap);
    if (picture.name.empty()) {
        loaded(pixmap);
        return;
    }
    wanted_.request.name = picture.name;
    isLoading_ = true;
    loading_ = loader_.load(wanted_.request, [this, pixmap](const std::optional<Image>& icon) {
        isLoading_ = false;
        loaded(icon ? icon : pixmap);
    });
}

void PictureSource::loaded(const std::optional<Image>& image) {
    if (image)
        settle(image);
    // What has come meanwhile waits until this has come to its end: an item that changes all the time would
    // never get beyond the first of its pictures.
    if (!image && (!next_ || !wanted_.pictures.empty()))
        tryNext();
    else if (next_)
        begin();
}

void PictureSource::settle(const std::optional<Image>& image) {
    if (std::exchange(isSettled_, true) && lookSame(image, image_))
        return;
    image_ = image;
    onChange_();
}

}  // namespace velmo::status_notifier
