// Velmo beside other tray hosts of this machine, in one run: how soon the first icon is in its place after
// the start, how much memory a host with ten icons takes, and how long a reveal, pictures and the panel take.

#include "capture_benchmark.h"
#include "display.h"
#include "panel_benchmark.h"
#include "timing.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

double kilobytes(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("Pss:"))
            return std::stod(line.substr(4));
    }
    return 0;
}

struct HostFigures {
    double start = 0;
    double memory = 0;
};

HostFigures measureHost(const std::string& program) {
    HostFigures figures;
    std::vector<double> starts;
    for (int round = 0; round < 5; ++round) {
        Display display;
        const auto begin = Clock::now();
        const auto host = display.run(program);
        waitFor([&] { return display.hasTray(); }, "the tray");
        const auto icon = display.dock(0);
        display.waitUntilDocked(icon);
        starts.push_back(millisecondsSince(begin));
        if (round > 0)
            continue;
        for (int number = 1; number < 10; ++number)
            display.waitUntilDocked(display.dock(number));
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        figures.memory = kilobytes(host.id());
    }
    figures.start = median(starts);
    return figures;
}

struct RevealFigures {
    std::vector<double> reveal;
    std::vector<double> floor;
};

void press(Display& display, bool down) {
    xcb_test_fake_input(display.x().raw(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 1, 0,
                        XCB_WINDOW_NONE, 0, 0, 0);
}

/// What moving as many windows takes a program that does nothing else.
double measureFloor(Display& display, int icons) {
    xcb_connection_t* raw = display.x().raw();
    std::vector<xcb_window_t> windows;
    for (int number = 0; number < icons; ++number) {
        windows.push_back(xcb_generate_id(raw));
        const std::uint32_t values[] = {0, 1};
        xcb_create_window(raw, XCB_COPY_FROM_PARENT, windows.back(), display.x().root(), -500, 200, 30, 26, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
        xcb_map_window(raw, windows.back());
    }
    display.x().area(windows.front());
    const auto begin = Clock::now();
    for (int number = 0; number < icons; ++number) {
        const std::uint32_t values[] = {static_cast<std::uint32_t>(number * 30), 200};
        xcb_configure_window(raw, windows[static_cast<std::size_t>(number)],
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
    }
    display.x().area(windows.back());
    const double time = millisecondsSince(begin);
    for (const auto window : windows)
        xcb_destroy_window(raw, window);
    return time;
}

RevealFigures measureReveal(int icons) {
    Display display;
    const auto hidden = display.startVelmoWithHiddenIcons(icons, {{"autoRehide", false}});
    const auto toggle = *display.x().windowTitled("Velmo.Toggle");
    const auto place = *display.x().area(toggle);
    xcb_test_fake_input(display.x().raw(), XCB_MOTION_NOTIFY, 0, 0, display.x().root(),
                        static_cast<std::int16_t>(place.midX()), 13, 0);
    const auto leftmost = hidden.icons.back();
    const auto isNear = [&] { return display.x().area(leftmost)->x > -5000; };
    RevealFigures figures;
    for (int round = 0; round < 60; ++round) {
        press(display, true);
        display.x().area(toggle);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        const bool revealing = round % 2 == 0;
        const auto begin = Clock::now();
        press(display, false);
        while (isNear() != revealing) {
            if (millisecondsSince(begin) > 5000)
                throw std::runtime_error("the icons did not move");
        }
        if (revealing)
            figures.reveal.push_back(millisecondsSince(begin));
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        figures.floor.push_back(measureFloor(display, icons));
    }
    return figures;
}

bool isInstalled(const std::string& program) {
    std::istringstream folders(std::getenv("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (std::filesystem::exists(std::filesystem::path(folder) / program))
            return true;
    }
    return false;
}

void compareHosts() {
    std::printf("%-14s %24s %10s %22s %10s\n", "host", "first icon after start", "", "memory with 10 icons",
                "");
    const auto ours = measureHost(VELMO_PROGRAM);
    std::printf("%-14s %21.1f ms %10s %19.1f MB %10s\n", "velmo", ours.start, "1", ours.memory / 1024, "1");
    const std::string other = "trayer";
    if (!isInstalled(other))
        return;
    const auto theirs = measureHost(other);
    std::printf("%-14s %21.1f ms %10.2f %19.1f MB %10.2f\n", other.c_str(), theirs.start,
                theirs.start / ours.start, theirs.memory / 1024, theirs.memory / ours.memory);
}

void compareReveals() {
    std::printf("\n%-14s %12s %12s %24s %8s\n", "reveal", "median", "95th", "bare window moves", "ratio");
    for (const int icons : {10, 50, 200}) {
        const auto figures = measureReveal(icons);
        std::printf("%10d icons %9.2f ms %9.2f ms %21.2f ms %8.2f\n", icons, median(figures.reveal),
                    percentile95(figures.reveal), median(figures.floor),
                    median(figures.reveal) / median(figures.floor));
    }
}

}  // namespace

}  // namespace velmo::desktop

/// All of them, or those that are named.
int main(int count, char** names) {
    const std::pair<const char*, void (*)()> comparisons[] = {{"hosts", velmo::desktop::compareHosts},
                                                              {"reveals", velmo::desktop::compareReveals},
                                                              {"captures", velmo::desktop::compareCaptures},
                                                              {"panels", velmo::desktop::comparePanels}};
    try {
        for (const auto& [name, compare] : comparisons) {
            if (count == 1 || std::find(names + 1, names + count, std::string(name)) != names + count)
                compare();
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
