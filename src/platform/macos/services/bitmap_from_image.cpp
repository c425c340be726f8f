#include "bitmap_from_image.h"

#include "macos/core_graphics/images.h"

namespace velmo::macos {

std::optional<Bitmap> bitmapFrom(const Object& image) {
    if (!image)
        return std::nullopt;
    const std::uint64_t width = core_graphics::imageWidth(image.get());
    const std::uint64_t height = core_graphics::imageHeight(image.get());
    if (width == 0 || height == 0)
        return std::nullopt;
    const auto pixels = std::make_shared<std::vector<std::uint8_t>>(4 * width * height);
    const Object colorSpace = core_graphics::createDeviceRGB();
    const Object context = core_graphics::createBitmapContext(static_cast<void*>(pixels->data()), width,
                                                              height, std::uint64_t{8}, 4 * width,
                                                              colorSpace.get(), core_graphics::bgra);
    if (!context)
        return std::nullopt;
    core_graphics::drawImage(context.get(),
                             CGRect{{0, 0}, {static_cast<double>(width), static_cast<double>(height)}},
                             image.get());
    return Bitmap{.width = static_cast<int>(width), .height = static_cast<int>(height), .pixels = pixels};
}

}  // namespace velmo::macos
