#include "host_benchmark.h"

#include "display.h"
#include "hosts.h"
#include "process_figures.h"
#include "timing.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int starts = 15;
constexpr int iconsAtRest = 10;
constexpr auto settlingTime = std::chrono::seconds(5);
constexpr auto restingTime = std::chrono::minutes(1);

/// A host with icons that nobody touches.
struct RestingHost {
    explicit RestingHost(const Host& host) {
        display.startWindowManager();
        host.configure(display, 0);
        process = std::make_unique<ChildProcess>(display.run(host.command));
        waitFor([&] { return display.hasTray(); }, host.name.c_str());
        for (int number = 0; number < iconsAtRest; ++number)
            display.dockAndWait(number);
    }

    Display display;
    std::unique_ptr<ChildProcess> process;
};

/// From the start of the program to an icon in its place, in milliseconds.
double timeToFirstIcon(const Host& host) {
    Display display;
    display.startWindowManager();
    host.configure(display, 0);
    // What it asks of others runs in a session already: its first start is not counted.
    {
        const auto first = display.run(host.command);
        waitFor([&] { return display.hasTray(); }, host.name.c_str());
    }
    waitFor([&] { return !display.hasTray(); }, (host.name + " to go").c_str());
    const auto begin = Clock::now();
    const auto process = display.run(host.command);
    waitFor([&] { return display.hasTray(); }, host.name.c_str());
    display.dockAndWait(0);
    return millisecondsSince(begin);
}

}  // namespace

bool compareHosts() {
    const auto hosts = installedHosts();
    std::vector<std::vector<double>> times(hosts.size());
    for (int round = 0; round < starts; ++round) {
        for (std::size_t index = 0; index < hosts.size(); ++index)
            times[index].push_back(timeToFirstIcon(hosts[index]));
    }

    // All at once: one minute for all of them, and the same one.
    std::vector<std::unique_ptr<RestingHost>> resting;
    for (const auto& host : hosts)
        resting.push_back(std::make_unique<RestingHost>(host));
    std::this_thread::sleep_for(settlingTime);
    std::vector<SleepCounter> sleeps;
    for (const auto& host : resting)
        sleeps.emplace_back(host->process->id());
    std::this_thread::sleep_for(restingTime);

    std::printf("%-12s %34s %26s %18s\n", "", "start to first icon", "memory, 10 icons", "wakeups a minute");
    double firstTime = 0;
    double firstMemory = 0;
    bool kept = true;
    for (std::size_t index = 0; index < hosts.size(); ++index) {
        const auto process = resting[index]->process->id();
        const long wakeups = sleeps[index].count();
        const double time = median(times[index]);
        const double memory = static_cast<double>(memoryOf(process)) / 1024;
        if (index == 0) {
            firstTime = time;
            firstMemory = memory;
        }
        std::printf("%-12s %9.1f ms, 95th %6.1f  x%5.2f %14.1f MB   x%5.2f %18ld\n",
                    hosts[index].name.c_str(), time, percentile95(times[index]), time / firstTime, memory,
                    memory / firstMemory, wakeups);
        std::fflush(stdout);
        const auto& name = hosts[index].name;
        if (index == 0) {
            kept = isAtMost("wakeups", static_cast<double>(wakeups), 0);
            continue;
        }
        kept = isAtMost("our time to the first icon, of its", firstTime / time, 1) && kept;
        if (name == "xfce4-panel" || name == "lxqt-panel")
            kept = isAtMost("our memory, of its", firstMemory / memory, 0.5) && kept;
    }
    return kept;
}

}  // namespace velmo::desktop
