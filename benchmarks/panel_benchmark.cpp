#include "benchmarks.h"
#include "process_figures.h"
#include "running_host.h"
#include "timing.h"
#include "x_event.h"

#include <xcb/xtest.h>

#include <chrono>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int firstRounds = 5;
/// Of a panel that takes its pictures anew, and after each so many whose pictures are still young.
constexpr int laterRounds = 5;
constexpr int quickOpenings = 4;
/// Keys of the virtual server's keyboard.
constexpr std::uint8_t superKey = 133;
constexpr std::uint8_t shiftKey = 50;
constexpr std::uint8_t revealKey = 45;
constexpr std::uint8_t escapeKey = 9;
/// From a reveal until the icons have been pictured.
constexpr std::chrono::milliseconds pictureTime(900);
/// Of pictures that are taken anew, and somewhat more.
constexpr std::chrono::milliseconds pictureAge(2100);
/// After which nothing has anything to do any more.
constexpr std::chrono::milliseconds settlingTime(300);

struct Opening {
    /// Milliseconds from the press to the panel's being on the screen, and to its having been painted.
    double time = 0;
    double painted = 0;
    /// How many of the latter Velmo has had a processor for.
    double work = 0;
};

class PanelDisplay {
public:
    PanelDisplay(Kind kind, int items) : host_(*hostNamed("Velmo"), setupFor(kind, items), wideScreen) {
        host_.fill(kind, items, items);
        if (kind == Kind::bus) {
            for (int number = 0; number < items; ++number)
                windowTitled(display(), itemName(number));
        }
        toggle_ = display().x().area(windowTitled(display(), "Velmo.Toggle")).value();
        movePointer(300, 500);
        std::this_thread::sleep_for(settlingTime);
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(raw(), display().x().root(), XCB_CW_EVENT_MASK, &mask);
        xcb_flush(raw());
    }

    /// Shows the icons and hides them. What the panel needs has been loaded then.
    void takePictures() {
        pressShortcut(revealKey);
        std::this_thread::sleep_for(pictureTime);
        pressShortcut(revealKey);
        std::this_thread::sleep_for(settlingTime);
    }

    Opening open() {
        while (const XEvent event{xcb_poll_for_event(raw())})
            continue;
        const double workBefore = workOf(host_.process());
        const auto begin = Clock::now();
        // The pointer comes and presses in one go: it does not rest, which would have the module loaded.
        movePointer(toggle_.midX(), toggle_.midY());
        fake(XCB_BUTTON_PRESS, 1);
        fake(XCB_BUTTON_RELEASE, 1);
        xcb_flush(raw());
        const double time = untilMapped(begin);
        const double painted = untilPainted(begin);
        return {time, painted, workOf(host_.process()) - workBefore};
    }

    void close() {
        // All that belongs to its opening is done by then.
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        fake(XCB_KEY_PRESS, escapeKey);
        fake(XCB_KEY_RELEASE, escapeKey);
        movePointer(300, 500);
        waitFor([&] { return !display().x().isViewable(panel_); }, "the panel to close");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }

private:
    static Setup setupFor(Kind kind, int items) {
        const nlohmann::json reveal = {{"keyCode", 40}, {"modifiers", 1179648}, {"display", "reveal"}};
        return {.hiddenItems = items,
                .kind = kind,
                .defaults = {{"clickAction", "showPanel"}, {"hotkey", {{"data", reveal.dump()}}}}};
    }

    Display& display() { return host_.display(); }
    xcb_connection_t* raw() { return display().x().raw(); }

    void fake(std::uint8_t type, std::uint8_t detail) {
        xcb_test_fake_input(raw(), type, detail, 0, XCB_WINDOW_NONE, 0, 0, 0);
    }
    void movePointer(int x, int y) {
        xcb_test_fake_input(raw(), XCB_MOTION_NOTIFY, 0, 0, display().x().root(),
                            static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
        xcb_flush(raw());
    }
    void pressShortcut(std::uint8_t key) {
        for (const auto code : {superKey, shiftKey, key})
            fake(XCB_KEY_PRESS, code);
        for (const auto code : {key, shiftKey, superKey})
            fake(XCB_KEY_RELEASE, code);
        xcb_flush(raw());
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
            if (display().x().property(window, "WM_NAME") != "Velmo.Panel")
                continue;
            panel_ = window;
            return time;
        }
    }

    /// Nothing else is ever seen where the panel is: the screen is black there.
    double untilPainted(Clock::time_point begin) {
        constexpr int inset = 3;
        const auto area = display().x().area(panel_).value();
        while (display().x().pixel(area.midX(), area.y + inset) == 0) {
            if (millisecondsSince(begin) > 5000)
                throw std::runtime_error("the panel was not painted");
        }
        return millisecondsSince(begin);
    }

    RunningHost host_;
    Area toggle_;
    xcb_window_t panel_ = XCB_WINDOW_NONE;
};

struct Openings {
    std::vector<double> mapped = {};
    std::vector<double> painted = {};
    std::vector<double> work = {};

    void add(const Opening& opening) {
        mapped.push_back(opening.time);
        painted.push_back(opening.painted);
        work.push_back(opening.work);
    }
    void report(Report& report, const std::string& when, Kind kind, int items) const {
        const auto add = [&](const std::string& what, const std::vector<double>& times) {
            report.add({.part = "panels",
                        .what = when + ", " + what,
                        .host = "Velmo",
                        .kind = nameOf(kind),
                        .items = items},
                       times);
        };
        add("mapped", mapped);
        add("painted", painted);
        add("work", work);
    }
};

struct Panels {
    /// Less than two seconds after the icons were shown.
    Openings first = {};
    Openings later = {};
    /// Where there is no picture, or an older one: the icons are shown for a moment and pictured.
    Openings firstAnew = {};
    Openings laterAnew = {};
};

Opening openOnce(PanelDisplay& display) {
    const auto opening = display.open();
    display.close();
    return opening;
}

void openLater(PanelDisplay& display, Panels& panels) {
    for (int round = 0; round < laterRounds; ++round) {
        std::this_thread::sleep_for(pictureAge);
        panels.laterAnew.add(openOnce(display));
        for (int time = 0; time < quickOpenings; ++time)
            panels.later.add(openOnce(display));
    }
}

void measureOpenings(Report& report, Kind kind, int items) {
    Panels panels;
    for (int round = 0; round < firstRounds; ++round) {
        PanelDisplay pictured(kind, items);
        pictured.takePictures();
        panels.first.add(openOnce(pictured));
        PanelDisplay fresh(kind, items);
        panels.firstAnew.add(openOnce(fresh));
        if (round == 0)
            openLater(fresh, panels);
    }
    panels.first.report(report, "first", kind, items);
    panels.later.report(report, "later", kind, items);
    panels.firstAnew.report(report, "anew, first", kind, items);
    panels.laterAnew.report(report, "anew, later", kind, items);
}

}  // namespace

void measurePanels(Report& report) {
    for (const int items : itemCounts) {
        for (const auto kind : {Kind::tray, Kind::bus})
            measureOpenings(report, kind, items);
    }
}

}  // namespace velmo::desktop
