#include "panel_benchmark.h"

#include "display.h"
#include "timing.h"
#include "x_event.h"

#include <xcb/xtest.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int firstRounds = 9;
constexpr int laterRounds = 20;
/// Keys of the virtual server's keyboard.
constexpr std::uint8_t superKey = 133;
constexpr std::uint8_t shiftKey = 50;
constexpr std::uint8_t panelKey = 33;
constexpr std::uint8_t revealKey = 45;
constexpr std::uint8_t escapeKey = 9;
/// From a reveal until the icons have been pictured.
constexpr std::chrono::milliseconds pictureTime(900);

/// What opens the panel.
enum class Trigger { shortcut, click };

class PanelDisplay {
public:
    PanelDisplay(int icons, Trigger trigger) : display_("3840x1080x24"), trigger_(trigger) {
        const auto shortcut = [](int key, const char* name) {
            const nlohmann::json binding = {{"keyCode", key}, {"modifiers", 1179648}, {"display", name}};
            return nlohmann::json{{"data", binding.dump()}};
        };
        hidden_.emplace(display_.startVelmoWithHiddenIcons(icons, {{"autoRehide", false},
                                                                   {"clickAction", "showPanel"},
                                                                   {"refreshPanelOnOpen", false},
                                                                   {"hotkey", shortcut(40, "reveal")},
                                                                   {"panelHotkey", shortcut(35, "panel")}}));
        toggle_ = display_.x().area(*display_.x().windowTitled("Velmo.Toggle")).value();
        movePointer(300, 500);
        pressShortcut(revealKey);
        std::this_thread::sleep_for(pictureTime);
        pressShortcut(revealKey);
        std::this_thread::sleep_for(pictureTime);
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(raw(), display_.x().root(), XCB_CW_EVENT_MASK, &mask);
        xcb_flush(raw());
    }

    struct Opening {
        /// Milliseconds from the press to the panel's being on the screen, and to its having been painted.
        double time = 0;
        double painted = 0;
        /// How many of the latter Velmo has had a processor for.
        double work = 0;
    };
    Opening open() {
        while (const XEvent event{xcb_poll_for_event(raw())})
            continue;
        const double workBefore = work();
        const auto begin = Clock::now();
        if (trigger_ == Trigger::shortcut) {
            pressShortcut(panelKey);
        } else {
            // The pointer comes and presses in one go: nothing can be prepared meanwhile.
            movePointer(toggle_.midX(), toggle_.midY());
            fake(XCB_BUTTON_PRESS, 1);
            fake(XCB_BUTTON_RELEASE, 1);
            xcb_flush(raw());
        }
        const double time = untilMapped(begin);
        const double painted = untilPainted(begin);
        return {time, painted, work() - workBefore};
    }

    void close() {
        // All that belongs to its opening is done by then.
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        fake(XCB_KEY_PRESS, escapeKey);
        fake(XCB_KEY_RELEASE, escapeKey);
        movePointer(300, 500);
        waitFor([&] { return !display_.x().isViewable(panel_); }, "the panel to close");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }

private:
    xcb_connection_t* raw() { return display_.x().raw(); }

    void fake(std::uint8_t type, std::uint8_t detail) {
        xcb_test_fake_input(raw(), type, detail, 0, XCB_WINDOW_NONE, 0, 0, 0);
    }
    void movePointer(int x, int y) {
        xcb_test_fake_input(raw(), XCB_MOTION_NOTIFY, 0, 0, display_.x().root(), static_cast<std::int16_t>(x),
                            static_cast<std::int16_t>(y), 0);
        xcb_flush(raw());
    }
    void pressShortcut(std::uint8_t key) {
        for (const auto code : {superKey, shiftKey, key})
            fake(XCB_KEY_PRESS, code);
        for (const auto code : {key, shiftKey, superKey})
            fake(XCB_KEY_RELEASE, code);
        xcb_flush(raw());
    }

    double work() const {
        double nanoseconds = 0;
        std::ifstream("/proc/" + std::to_string(hidden_->velmo.id()) + "/schedstat") >> nanoseconds;
        return nanoseconds / 1e6;
    }

    double untilMapped(Clock::time_point begin) {
        while (true) {
            const XEvent event(xcb_wait_for_event(raw()));
            if (!event)
                throw std::runtime_error("the display went");
            const double time = millisecondsSince(begin);
            if (time > 5000)
                throw std::runtime_error("the panel did not open");
            if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY)
                continue;
            const auto window = reinterpret_cast<const xcb_map_notify_event_t&>(*event).window;
            if (display_.x().property(window, "WM_NAME") != "Velmo.Panel")
                continue;
            panel_ = window;
            return time;
        }
    }

    /// Nothing else is ever seen where the panel is: the screen is black there.
    double untilPainted(Clock::time_point begin) {
        constexpr int inset = 3;
        const auto area = display_.x().area(panel_).value();
        while (display_.x().pixel(area.midX(), area.y + inset) == 0) {
            if (millisecondsSince(begin) > 5000)
                throw std::runtime_error("the panel was not painted");
        }
        return millisecondsSince(begin);
    }

    Display display_;
    Trigger trigger_;
    std::optional<Display::HiddenIcons> hidden_;
    Area toggle_;
    xcb_window_t panel_ = XCB_WINDOW_NONE;
};

struct Openings {
    std::vector<double> time;
    std::vector<double> painted;
    std::vector<double> work;

    void add(const PanelDisplay::Opening& opening) {
        time.push_back(opening.time);
        painted.push_back(opening.painted);
        work.push_back(opening.work);
    }
    void print() const {
        std::printf(" %9.2f ms %9.2f ms %9.2f ms %9.2f ms", median(time), percentile95(time), median(painted),
                    median(work));
    }
};

void measure(int icons, Trigger trigger) {
    Openings first;
    Openings later;
    for (int round = 0; round < firstRounds; ++round) {
        PanelDisplay display(icons, trigger);
        first.add(display.open());
        display.close();
        if (round > 0)
            continue;
        for (int time = 0; time < laterRounds; ++time) {
            later.add(display.open());
            display.close();
        }
    }
    std::printf("%9d icons %10s", icons, trigger == Trigger::shortcut ? "shortcut" : "click");
    first.print();
    later.print();
    std::printf("\n");
}

}  // namespace

bool comparePanels() {
    std::printf("\n%-15s %10s", "panel", "by");
    for (const char* when : {"first time", "later"})
        std::printf(" %12s %12s %12s %12s", when, "95th", "painted", "work");
    std::printf("\n");
    for (const int icons : {10, 100}) {
        for (const auto trigger : {Trigger::shortcut, Trigger::click})
            measure(icons, trigger);
    }
    return true;
}

}  // namespace velmo::desktop
