#include "benchmarks.h"
#include "running_host.h"
#include "timing.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

/// How many there are in the session when the host starts, and how often it does.
constexpr std::pair<int, int> sessions[] = {{1, 31}, {10, 21}, {50, 11}, {200, 5}};

/// A host that has run before: what it asks of others runs in the session already.
struct Starter {
    const Host* host;
    Kind kind;
    int items;
    std::unique_ptr<RunningHost> running = {};
    std::vector<double> times = {};

    void start() {
        running = std::make_unique<RunningHost>(*host, Setup{}, wideScreen);
        if (kind == Kind::bus)
            running->fillBus(items);
    }

    /// From the start of the program to all items in their places, in milliseconds.
    double timeToItems() {
        if (!running)
            start();
        const auto begin = running->restart();
        auto& display = running->display();
        if (kind == Kind::tray) {
            const auto icons = display.dockAllAndWait(items);
            const double time = millisecondsSince(begin);
            for (const auto icon : icons)
                xcb_destroy_window(display.x().raw(), icon);
            return time;
        }
        waitFor([&] { return running->busItems().hasHost(); }, host->name);
        running->busItems().addToNewHost(items);
        waitFor([&] { return display.squares() >= items; }, "the items of the bus");
        return millisecondsSince(begin);
    }

    void measure(Report& report) {
        const auto time = withPatience(report, host->name, [&] {
            try {
                return timeToItems();
            } catch (...) {
                running.reset();
                throw;
            }
        });
        if (time)
            times.push_back(*time);
    }
};

void promiseToBeFirst(Report& report, const std::vector<Starter>& starters, const Starter& ours) {
    const char* things = ours.kind == Kind::tray ? " icons of the tray" : " items of the bus";
    for (const auto& starter : starters) {
        if (starter.kind == ours.kind && !starter.host->isVelmo() && !starter.times.empty())
            report.promise(
                "our time to " + std::to_string(ours.items) + things + ", of " + starter.host->name + "'s",
                median(ours.times) / median(starter.times), 1);
    }
}

void measureStarts(Report& report, int items, int rounds) {
    std::vector<Starter> starters;
    for (const auto kind : {Kind::tray, Kind::bus}) {
        for (const auto& host : installedHosts()) {
            if (host.takes(kind))
                starters.push_back({&host, kind, items});
        }
    }
    for (int round = 0; round < rounds; ++round) {
        for (auto& starter : starters)
            starter.measure(report);
    }
    for (const auto& starter : starters)
        report.add({.part = "starts",
                    .what = "all items",
                    .host = starter.host->name,
                    .kind = nameOf(starter.kind),
                    .items = items},
                   starter.times);
    for (const auto& starter : starters) {
        if (starter.host->isVelmo())
            promiseToBeFirst(report, starters, starter);
    }
}

}  // namespace

void measureStarts(Report& report) {
    for (const auto& [items, rounds] : sessions)
        measureStarts(report, items, rounds);
}

}  // namespace velmo::desktop
