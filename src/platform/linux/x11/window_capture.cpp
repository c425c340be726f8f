#include "window_capture.h"

#include "linux/x11/reply.h"

#include <xcb/composite.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <utility>

namespace velmo::x11 {

namespace {

/// Pixels; a sheet is no wider unless a single picture is.
constexpr int widestSheet = 16000;
/// Pixels; nobody needs an item larger.
constexpr std::int64_t largestSide = 4096;

/// A size that went through points may come back a pixel off; that is not worth a blur.
int sideFor(int own, std::int64_t wanted) {
    return std::abs(wanted - own) <= 1 ? static_cast<int>(wanted) : std::max(own, 1);
}

Bitmap scaled(const Bitmap& bitmap, const CaptureConfiguration& configuration) {
    const int width = static_cast<int>(configuration.width);
    const int height = static_cast<int>(configuration.height);
    if (bitmap.width == width && bitmap.height == height)
        return bitmap;
    Bitmap source = bitmap;
    source.size = {double(width), double(height)};
    Canvas canvas(width, height);
    canvas.drawImage({source}, 0, 0, Appearance{}, Color{});
    const auto rowBytes = static_cast<std::ptrdiff_t>(width) * 4;
    std::vector<std::uint8_t> pixels;
    pixels.reserve(static_cast<std::size_t>(rowBytes * height));
    for (int row = 0; row < height; ++row) {
        const auto* begin = canvas.pixels() + static_cast<std::ptrdiff_t>(row) * canvas.stride();
        pixels.insert(pixels.end(), begin, begin + rowBytes);
    }
    return {width, height, std::make_shared<const std::vector<std::uint8_t>>(std::move(pixels)), {}};
}

}  // namespace

WindowCapture::WindowCapture(MenuBar& bar)
    : bar_(bar),
      connection_(bar.connection()),
      reader_(connection_),
      pass_(connection_.loop(), [this] { takePictures(); }) {}

bool WindowCapture::preflightAccess() const {
    // A server that has once given a picture away goes on doing so.
    hasAccess_ = hasAccess_ || picturesAreGivenAway();
    return hasAccess_;
}

bool WindowCapture::picturesAreGivenAway() const {
    xcb_connection_t* raw = connection_.raw();
    const xcb_pixmap_t pixmap = connection_.newId();
    xcb_composite_name_window_pixmap(raw, bar_.window(), pixmap);
    const auto cookie = xcb_get_image(raw, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0, 1, 1, ~0U);
    xcb_free_pixmap(raw, pixmap);
    return owned(xcb_get_image_reply(raw, cookie, nullptr)) != nullptr;
}

void WindowCapture::getShareableWindows(bool onScreenWindowsOnly,
                                        std::function<void(std::optional<WindowNumbers>)> completion) {
    connection_.loop().post(lifetime_.guard([this, onScreenWindowsOnly, completion = std::move(completion)] {
        completion(shareableWindows(onScreenWindowsOnly));
    }));
}

bool WindowCapture::isOnScreen(const BarItem& item) const {
    const PixelRect screen = bar_.screens().primary();
    const PixelRect area = bar_.onRoot(*item.place());
    return area.x < screen.x + screen.width && screen.x < area.x + area.width;
}

ScreenCapture::WindowNumbers WindowCapture::shareableWindows(bool onScreenOnly) const {
    bar_.layOutIfNeeded();
    WindowNumbers numbers;
    for (const auto* item : bar_.items()) {
        // Asked first: what an item shows may have to be drawn before it can be told.
        if (!item->place() || (onScreenOnly && !isOnScreen(*item)))
            continue;
        if (const auto content = item->content())
            numbers.push_back(content->window);
    }
    return numbers;
}

void WindowCapture::captureWindow(std::uint32_t windowNumber, const CaptureConfiguration& configuration,
                                  std::function<void(std::optional<Bitmap>)> completion) {
    requests_.push_back({windowNumber, configuration, std::move(completion)});
    pass_.request();
}

std::optional<ItemShot> WindowCapture::shotFor(const Request& request) const {
    const auto& wanted = request.configuration;
    if (std::min(wanted.width, wanted.height) < 1 || std::max(wanted.width, wanted.height) > largestSide)
        return std::nullopt;
    for (const auto* item : bar_.items()) {
        const auto content = item->content();
        if (!content || content->window != request.windowNumber)
            continue;
        // What is in the bar's own pixmap ends at the screen's edge.
        if (!content->isApartFromTheBar() && !isOnScreen(*item))
            return std::nullopt;
        const PixelRect area = bar_.shownArea(*item);
        return ItemShot(*content, area, sideFor(area.width, wanted.width),
                        sideFor(area.height, wanted.height));
    }
    return std::nullopt;
}

/// As many as fit on a sheet, side by side.
std::vector<WindowCapture::Request> WindowCapture::nextRequests() {
    std::vector<Request> next;
    int width = 0;
    for (; !requests_.empty(); requests_.pop_front()) {
        auto& request = requests_.front();
        request.shot = shotFor(request);
        if (request.shot) {
            if (width > 0 && width + request.shot->width() > widestSheet) {
                pass_.request();
                break;
            }
            request.shot->setX(width);
            width += request.shot->width();
        }
        next.push_back(std::move(request));
    }
    return next;
}

void WindowCapture::takePictures() {
    bar_.layOutIfNeeded();
    auto requests = nextRequests();
    int width = 0;
    int height = 0;
    for (const auto& request : requests) {
        width += request.shot ? request.shot->width() : 0;
        height = std::max(height, request.shot ? request.shot->height() : 0);
    }
    std::optional<std::vector<std::uint8_t>> pixels;
    if (width > 0) {
        const Pixmap pixmap(connection_, 32, width, height);
        const Picture sheet(connection_.raw(), pixmap.id(), bar_.painting().alphaFormat());
        const xcb_rectangle_t whole = {0, 0, static_cast<std::uint16_t>(width),
                                       static_cast<std::uint16_t>(height)};
        xcb_render_fill_rectangles(connection_.raw(), XCB_RENDER_PICT_OP_SRC, sheet.id(), {}, 1, &whole);
        for (auto& request : requests) {
            if (request.shot)
                request.shot->take(connection_, bar_.painting(), sheet);
        }
        pixels = reader_.read(pixmap.id(), width, height);
    }
    for (auto& request : requests) {
        std::optional<Bitmap> picture;
        if (request.shot && request.shot->hasSucceeded(connection_) && pixels)
            picture = scaled(request.shot->cutFrom(*pixels, width), request.configuration);
        request.completion(std::move(picture));
    }
}

}  // namespace velmo::x11
