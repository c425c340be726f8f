#include "image_from.h"

#include "macos/appkit/ns_bezier_path.h"
#include "macos/appkit/ns_color.h"
#include "macos/appkit/ns_font.h"
#include "macos/core_graphics/images.h"
#include "macos/objc/autorelease_pool.h"

namespace velmo::macos {
namespace {

void append(const NSBezierPath& path, const PathElement& element) {
    if (const auto* rounded = std::get_if<RoundedRect>(&element))
        path.appendRoundedRect(cgRect(rounded->rect), rounded->xRadius, rounded->yRadius);
    else
        path.appendOval(cgRect(std::get<Oval>(element).rect));
}

NSBezierPath pathOf(const Fill& fill) {
    const auto* rounded = fill.path.size() == 1 ? std::get_if<RoundedRect>(&fill.path.front()) : nullptr;
    if (rounded != nullptr)
        return NSBezierPath::withRoundedRect(cgRect(rounded->rect), rounded->xRadius, rounded->yRadius);
    NSBezierPath path = NSBezierPath::create();
    path.setWindingRule(static_cast<NSWindingRule>(fill.windingRule));
    for (const PathElement& element : fill.path)
        append(path, element);
    return path;
}

void draw(const Drawing& drawing) {
    NSColor::black().setFill();
    for (const Fill& fill : drawing.fills)
        pathOf(fill).fill();
}

NSImage symbolImage(const Symbol& symbol, const NSString& description) {
    NSImage image = NSImage::symbol(NSString::from(symbol.name), description);
    if (symbol.pointSize == 0)
        return image;
    return image.withConfiguration(
        NSImageSymbolConfiguration::with(symbol.pointSize, systemWeight(symbol.weight)));
}

NSImage drawnImage(const Drawing& drawing) {
    return NSImage::drawn(CGSize{drawing.size.width, drawing.size.height}, drawing.flipped,
                          Block<bool(CGRect)>([drawing](const CGRect&) {
                              // It may come on any thread.
                              const AutoreleasePool pool;
                              draw(drawing);
                              return true;
                          }));
}

NSImage bitmapImage(const Bitmap& bitmap) {
    if (bitmap.width <= 0 || bitmap.height <= 0)
        return {};
    const auto width = static_cast<std::uint64_t>(bitmap.width);
    const auto height = static_cast<std::uint64_t>(bitmap.height);
    // Copied, because a context may write to what it is given.
    std::vector<std::uint8_t> pixels = *bitmap.pixels;
    const Object colorSpace = core_graphics::createDeviceRGB();
    const Object context =
        core_graphics::createBitmapContext(static_cast<void*>(pixels.data()), width, height, std::uint64_t{8},
                                           4 * width, colorSpace.get(), core_graphics::bgra);
    const Object image = core_graphics::createImage(context.get());
    return image ? NSImage::with(image.get(), CGSize{bitmap.size.width, bitmap.size.height}) : NSImage();
}

}  // namespace

double systemWeight(FontWeight weight) {
    switch (weight) {
        case FontWeight::medium:
            return mediumWeight.value();
        case FontWeight::semibold:
            return semiboldWeight.value();
        case FontWeight::bold:
            return boldWeight.value();
        case FontWeight::regular:
            break;
    }
    return regularWeight.value();
}

NSImage imageFrom(const Image& image) {
    const NSString description = NSString::from(image.accessibilityDescription);
    // Symbols are templates by themselves.
    if (const auto* symbol = std::get_if<Symbol>(&image.content))
        return symbolImage(*symbol, description);
    const auto* drawing = std::get_if<Drawing>(&image.content);
    NSImage made = drawing != nullptr ? drawnImage(*drawing) : bitmapImage(std::get<Bitmap>(image.content));
    made.setTemplate(image.isTemplate);
    made.setAccessibilityDescription(description);
    return made;
}

}  // namespace velmo::macos
