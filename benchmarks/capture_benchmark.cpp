#include "benchmarks.h"
#include "display.h"
#include "timing.h"

#include "linux/event_loop/event_loop.h"
#include "linux/linux_desktop.h"
#include "screen_capture.h"

#include <cstddef>
#include <cstdlib>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int captureRounds = 60;
/// Of an icon in the bar, in pixels.
constexpr CaptureConfiguration size = {30, 22};

/// The bar in this process, so that its services can be asked directly.
class Bar {
public:
    explicit Bar(const Display& display) {
        for (const auto& [name, value] : display.environment())
            setenv(name.c_str(), value.c_str(), 1);
        std::string problem;
        if (desktop_.start(problem) != LinuxDesktop::Start::ready)
            throw std::runtime_error(problem);
    }

    template <typename Condition>
    void turnUntil(const Condition& condition) {
        auto& loop = static_cast<EventLoop&>(desktop_.platform().runLoop);
        while (!condition()) {
            loop.turn();
            loop.prepareToSleep();
        }
    }

    double captureTime(std::span<const xcb_window_t> windows) {
        std::size_t completed = 0;
        bool allTaken = true;
        const auto begin = Clock::now();
        for (const auto window : windows) {
            desktop_.platform().screenCapture.captureWindow(window, size, [&](const auto& bitmap) {
                ++completed;
                allTaken = allTaken && bitmap.has_value();
            });
        }
        turnUntil([&] { return completed == windows.size(); });
        const double time = millisecondsSince(begin);
        if (!allTaken)
            throw std::runtime_error("an icon had no picture");
        return time;
    }

private:
    LinuxDesktop desktop_;
};

double oneAfterAnother(Display& display, std::span<const xcb_window_t> windows) {
    const auto begin = Clock::now();
    for (const auto window : windows) {
        xcb_connection_t* raw = display.x().raw();
        const auto cookie = xcb_get_image(raw, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0, 20, 20, ~0U);
        std::free(xcb_get_image_reply(raw, cookie, nullptr));
    }
    return millisecondsSince(begin);
}

}  // namespace

void measureCaptures(Report& report) {
    Display display("3840x1080x24");
    Bar bar(display);
    std::vector<xcb_window_t> windows;
    for (const std::size_t count : {10, 50, 100}) {
        while (windows.size() < count) {
            windows.push_back(display.dock(static_cast<int>(windows.size())));
            bar.turnUntil([&] { return display.isDocked(windows.back()); });
        }
        std::vector<double> together;
        std::vector<double> floor;
        for (int round = 0; round < captureRounds; ++round) {
            together.push_back(bar.captureTime(windows));
            floor.push_back(oneAfterAnother(display, windows));
        }
        const auto add = [&](const char* what, const char* host, const std::vector<double>& times) {
            report.add({.part = "captures",
                        .what = what,
                        .host = host,
                        .kind = nameOf(Kind::tray),
                        .items = static_cast<int>(count)},
                       times);
        };
        add("at once", "Velmo", together);
        add("one after the other", "bare program", floor);
    }
}

}  // namespace velmo::desktop
