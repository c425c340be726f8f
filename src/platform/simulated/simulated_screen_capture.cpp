#include "simulated/simulated_screen_capture.h"

#include <utility>

namespace velmo {

void SimulatedScreenCapture::getShareableWindows(
    bool onScreenWindowsOnly, std::function<void(std::optional<WindowNumbers>)> completion) {
    queries_.push_back(onScreenWindowsOnly);
    runLoop_.schedule(queryDuration_,
                      [windows = windows_, completion = std::move(completion)] { completion(windows); });
}

void SimulatedScreenCapture::captureWindow(std::uint32_t windowNumber,
                                           const CaptureConfiguration& configuration,
                                           std::function<void(std::optional<Bitmap>)> completion) {
    requests_.push_back({windowNumber, configuration, runLoop_.now()});
    const auto duration = durations_.find(windowNumber);
    std::optional<Bitmap> bitmap;
    if (!failing_.contains(windowNumber)) {
        bitmap = Bitmap{static_cast<int>(configuration.width), static_cast<int>(configuration.height),
                        std::make_shared<std::vector<std::uint8_t>>(
                            static_cast<std::size_t>(configuration.width * configuration.height * 4)),
                        Size{}};
    }
    runLoop_.schedule(
        duration == durations_.end() ? 0 : duration->second,
        [bitmap = std::move(bitmap), completion = std::move(completion)] { completion(bitmap); });
}

}  // namespace velmo
