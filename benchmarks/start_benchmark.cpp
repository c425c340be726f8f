#include "benchmarks.h"
#include "running_host.h"
#include "timing.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int startRounds = 31;

/// A host that has run before: what it asks of others runs in the session already.
struct Starter {
    const Host* host;
    Kind kind;
    std::unique_ptr<RunningHost> running;
    std::vector<double> times;

    void start() {
        running = std::make_unique<RunningHost>(*host);
        if (kind == Kind::bus)
            running->fillBus(1);
    }

    /// From the start of the program to an item in its place, in milliseconds.
    double timeToFirstItem() {
        if (!running)
            start();
        const auto begin = running->restart();
        if (kind == Kind::tray) {
            const auto icon = running->display().dockAndWait(0);
            const double time = millisecondsSince(begin);
            xcb_destroy_window(running->display().x().raw(), icon);
            return time;
        }
        waitFor([&] { return running->busItems().hasHost(); }, host->name);
        running->busItems().addToNewHost();
        waitFor([&] { return running->display().squares() > 0; }, "an item of the bus");
        return millisecondsSince(begin);
    }
};

}  // namespace

void measureStarts(Report& report) {
    std::vector<Starter> starters;
    for (const auto kind : {Kind::tray, Kind::bus}) {
        for (const auto& host : installedHosts()) {
            if (host.takes(kind))
                starters.push_back({&host, kind, nullptr, {}});
        }
    }
    for (int round = 0; round < startRounds; ++round) {
        for (auto& starter : starters) {
            const auto time = withPatience(report, *starter.host, [&] {
                try {
                    return starter.timeToFirstItem();
                } catch (...) {
                    starter.running.reset();
                    throw;
                }
            });
            if (time)
                starter.times.push_back(*time);
        }
    }
    const Starter* ours = nullptr;
    for (const auto& starter : starters) {
        report.add({.part = "starts",
                    .what = "first item",
                    .host = starter.host->name,
                    .kind = nameOf(starter.kind),
                    .items = 1},
                   starter.times);
        if (starter.host->isVelmo())
            ours = &starter;
        else if (!starter.times.empty())
            report.promise(std::string("our time to the first ") +
                               (starter.kind == Kind::tray ? "icon of the tray" : "item of the bus") +
                               ", of " + starter.host->name + "'s",
                           median(ours->times) / median(starter.times), 1);
    }
}

}  // namespace velmo::desktop
