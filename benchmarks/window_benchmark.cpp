#include "benchmarks.h"
#include "built_files.h"
#include "process_figures.h"
#include "running_host.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int windowRounds = 3;
constexpr int rightButton = 3;
/// Where something at the right edge of the screen is seen.
constexpr int rightmost = wideScreenWidth - 15;
/// Where the bar of a peer shows no item.
constexpr int blank = wideScreenWidth - 500;
/// After what is drawn once a window is there, and before memory is read.
constexpr auto windowSettlingTime = std::chrono::milliseconds(500);

void settle() {
    std::this_thread::sleep_for(windowSettlingTime);
}

void press(RunningHost& host, const std::string& key) {
    host.display().xdotool({"key", key});
    settle();
}

/// Clicks on the bar, and waits until something is below that place, a little to the right.
void openBelow(RunningHost& host, int x, int button) {
    const auto& display = host.display();
    const int right = std::min(x + 15, rightmost);
    constexpr int below = 60;
    waitFor([&] { return display.x().topAt(right, below) == XCB_WINDOW_NONE; }, "the windows to close");
    display.xdotool(
        {"mousemove", std::to_string(x), std::to_string(middleOfBar), "click", std::to_string(button)});
    waitFor([&] { return display.x().topAt(right, below) != XCB_WINDOW_NONE; }, "a window below the bar");
    settle();
}

void awaitWindow(RunningHost& host, const std::string& title) {
    const auto& x = host.display().x();
    waitFor(
        [&] {
            const auto window = x.windowTitled(title);
            return window && x.isViewable(*window);
        },
        title);
    settle();
}

void closeWindow(RunningHost& host) {
    press(host, "alt+F4");
}

void openThoseOfVelmo(RunningHost& host) {
    auto& display = host.display();
    const auto middleOf = [&](const char* title) {
        return display.x().area(windowTitled(display, title))->midX();
    };
    outputOf({velmoProgram}, display.environment());
    awaitWindow(host, "Velmo Settings");
    const auto settings = std::to_string(*display.x().windowTitled("Velmo Settings"));
    for (int tab = 1; tab <= 5; ++tab) {
        display.xdotool(
            {"mousemove", "--window", settings, std::to_string(30 + 80 * tab), "35", "click", "1"});
        settle();
    }
    closeWindow(host);
    openBelow(host, middleOf("Velmo.Toggle"), rightButton);
    press(host, "Escape");
    openBelow(host, middleOf("Velmo.Clock"), rightButton);
    press(host, "Escape");
    openBelow(host, middleOf("Velmo.Clock"), 1);
    press(host, "Escape");
    openBelow(host, middleOf("Velmo.Toggle"), 1);
    awaitWindow(host, "Velmo.Panel");
    press(host, "Escape");
}

void openThoseOfXfce(RunningHost& host) {
    openBelow(host, blank, rightButton);
    press(host, "Escape");
    openBelow(host, 12, 1);
    press(host, "Escape");
    for (const auto& [option, title] :
         {std::pair("--preferences=0", "Panel Preferences"), std::pair("--add-items=0", "Add New Items")}) {
        outputOf({"xfce4-panel", option}, host.display().environment());
        awaitWindow(host, title);
        closeWindow(host);
    }
}

void openThoseOfLxqt(RunningHost& host) {
    constexpr int clock = wideScreenWidth - 25;
    openBelow(host, clock, 1);
    press(host, "Escape");
    openBelow(host, blank, rightButton);
    press(host, "Down");
    press(host, "Return");
    awaitWindow(host, "Configure Panel");
    // Its three pages.
    press(host, "Down");
    press(host, "Down");
    closeWindow(host);
}

struct Windows {
    const char* host;
    void (*open)(RunningHost& host);
    const char* names;
};

constexpr Windows all[] = {
    {"Velmo", openThoseOfVelmo, "settings with all tabs, the toggle's and the clock's menu, calendar, panel"},
    {"xfce4-panel", openThoseOfXfce, "menu, calendar, preferences, new items"},
    {"lxqt-panel", openThoseOfLxqt, "calendar, menu, configuration with all pages"}};

struct Memory {
    double before = 0;
    double after = 0;
};

Memory measureOpened(const Host& host, const Windows& windows, Kind kind, int items) {
    const int hidden = host.isVelmo() ? items : 0;
    const Setup setup = {
        .hiddenItems = hidden, .kind = kind, .clock = true, .defaults = {{"clickAction", "showPanel"}}};
    RunningHost running(host, setup, wideScreen);
    running.fill(kind, items, hidden);
    const auto megabytes = [&] { return static_cast<double>(memoryOf(running.process())) / 1024; };
    settle();
    const double before = megabytes();
    windows.open(running);
    settle();
    return {before, megabytes()};
}

void measureWindows(Report& report, const Host& host, const Windows& windows, Kind kind, int items) {
    std::vector<double> before;
    std::vector<double> after;
    for (int round = 0; round < windowRounds; ++round) {
        const auto memory =
            withPatience(report, host.name, [&] { return measureOpened(host, windows, kind, items); });
        if (!memory)
            return;
        before.push_back(memory->before);
        after.push_back(memory->after);
    }
    const auto add = [&](const char* what, const std::vector<double>& values) {
        report.add({.part = "windows",
                    .what = what,
                    .host = host.name,
                    .kind = nameOf(kind),
                    .items = items,
                    .unit = "MB"},
                   values);
    };
    add("before", before);
    add("all opened once", after);
}

}  // namespace

void measureWindows(Report& report) {
    for (const auto& windows : all) {
        if (const auto* host = hostNamed(windows.host))
            report.note(host->name + " opened " + windows.names);
    }
    for (const auto kind : {Kind::tray, Kind::bus}) {
        for (const int items : itemCounts) {
            for (const auto& windows : all) {
                if (const auto* host = hostNamed(windows.host))
                    measureWindows(report, *host, windows, kind, items);
            }
        }
    }
}

}  // namespace velmo::desktop
