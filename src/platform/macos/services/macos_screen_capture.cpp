#include "macos_screen_capture.h"

#include "bitmap_from_image.h"
#include "macos/core_graphics/window_list.h"
#include "macos/foundation/main_thread.h"
#include "macos/objc/autorelease_pool.h"
#include "macos/screen_capture_kit/sc_screenshot_manager.h"
#include "macos/screen_capture_kit/sc_shareable_content.h"

#include <functional>
#include <memory>
#include <utility>

namespace velmo::macos {
namespace {

/// A function that is called on the main thread, once, and ends there, whoever lets go of this at last.
template <typename Answer>
class OnMainThread {
public:
    explicit OnMainThread(std::function<void(Answer)> function)
        : function_(std::make_shared<std::function<void(Answer)>>(std::move(function))) {}

    void call(const Answer& answer) const {
        runOnMainThread([function = function_, answer] { std::exchange(*function, nullptr)(answer); });
    }

private:
    std::shared_ptr<std::function<void(Answer)>> function_;
};

ScreenCapture::WindowNumbers numbersOf(const std::map<std::uint32_t, SCWindow>& windows) {
    ScreenCapture::WindowNumbers numbers;
    for (const auto& [number, window] : windows)
        numbers.push_back(number);
    return numbers;
}

SCStreamConfiguration streamConfiguration(const CaptureConfiguration& configuration) {
    SCStreamConfiguration made = SCStreamConfiguration::create();
    made.setWidth(static_cast<NSUInteger>(configuration.width));
    made.setHeight(static_cast<NSUInteger>(configuration.height));
    made.setShowsCursor(configuration.showsCursor);
    made.setCaptureResolution(SCCaptureResolutionType::best);
    made.setPixelFormat(SCStreamConfiguration::bgra);
    return made;
}

}  // namespace

bool MacosScreenCapture::preflightAccess() const {
    return core_graphics::preflightCapture();
}

bool MacosScreenCapture::requestAccess() {
    return core_graphics::requestCapture();
}

void MacosScreenCapture::getShareableWindows(bool onScreenWindowsOnly,
                                             std::function<void(std::optional<WindowNumbers>)> completion) {
    auto answered =
        lifetime_.guard([this, completion = std::move(completion)](const SCShareableContent& content) {
            windows_.clear();
            for (const SCWindow& window : content.windows().all<SCWindow>())
                windows_[window.windowID()] = window;
            completion(content ? std::optional(numbersOf(windows_)) : std::nullopt);
        });
    SCShareableContent::get(
        false, onScreenWindowsOnly,
        SCShareableContent::Completion([kept = OnMainThread<SCShareableContent>(answered)](
                                           const SCShareableContent& content, const NSError& /*error*/) {
            const AutoreleasePool pool;
            kept.call(content);
        }));
}

void MacosScreenCapture::captureWindow(std::uint32_t windowNumber, const CaptureConfiguration& configuration,
                                       std::function<void(std::optional<Bitmap>)> completion) {
    const auto window = windows_.find(windowNumber);
    if (window == windows_.end()) {
        runOnMainThread([completion = std::move(completion)] { completion(std::nullopt); });
        return;
    }
    SCScreenshotManager::captureImage(
        SCContentFilter::with(window->second), streamConfiguration(configuration),
        SCScreenshotManager::Completion([kept = OnMainThread<std::optional<Bitmap>>(std::move(completion))](
                                            const Object& image, const NSError& /*error*/) {
            const AutoreleasePool pool;
            kept.call(bitmapFrom(image));
        }));
}

}  // namespace velmo::macos
