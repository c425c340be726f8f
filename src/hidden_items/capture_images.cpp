#include "hidden_items/capture_images.h"

#include "async/completion.h"
#include "async/when_all.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <set>

namespace velmo {

namespace {

using ShareableWindows = std::optional<ScreenCapture::WindowNumbers>;

std::int64_t pixels(double points, double scale) {
    constexpr double limit = 9223372036854775808.0;
    const double exact = points * scale;
    if (!(exact >= -limit && exact < limit))
        std::abort();
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(exact));
}

/// Absent where it fails.
Task<std::optional<Image>> captureImage(const MenuBarItemInfo& item, double scale,
                                        ScreenCapture& screenCapture) {
    const Rect bounds = item.bounds.standardized();
    const CaptureConfiguration configuration{pixels(bounds.width, scale), pixels(bounds.height, scale),
                                             false};
    Completion<std::optional<Bitmap>> completion([&](Completion<std::optional<Bitmap>>::Callback done) {
        screenCapture.captureWindow(item.windowID, configuration, std::move(done));
    });
    auto bitmap = co_await completion;
    if (!bitmap)
        co_return std::nullopt;
    bitmap->size = {bounds.width, bounds.height};
    co_return Image{std::move(*bitmap), false, {}};
}

}  // namespace

Task<std::map<std::uint32_t, Image>> captureImages(std::vector<MenuBarItemInfo> items, double scale,
                                                   ScreenCapture& screenCapture) {
    std::map<std::uint32_t, Image> images;
    if (!screenCapture.preflightAccess() || items.empty())
        co_return images;
    Completion<ShareableWindows> query([&](Completion<ShareableWindows>::Callback done) {
        screenCapture.getShareableWindows(true, std::move(done));
    });
    const auto windows = co_await query;
    if (!windows)
        co_return images;

    const std::set<std::uint32_t> shareable(windows->begin(), windows->end());
    std::erase_if(items, [&](const auto& item) { return !shareable.contains(item.windowID); });
    std::vector<Task<std::optional<Image>>> captures;
    captures.reserve(items.size());
    for (const MenuBarItemInfo& item : items)
        captures.push_back(captureImage(item, scale, screenCapture));
    WhenAll<std::optional<Image>> all(std::move(captures));
    auto captured = co_await all;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (captured[i])
            images.insert_or_assign(items[i].windowID, std::move(*captured[i]));
    }
    co_return images;
}

}  // namespace velmo
