#include "benchmarks.h"
#include "running_host.h"
#include "timing.h"

#include <memory>
#include <optional>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int startRounds = 31;

/// A host that has run before: what it asks of others runs in the session already.
struct Contender {
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
    std::vector<Contender> contenders;
    for (const auto kind : {Kind::tray, Kind::bus}) {
        for (const auto& host : installedHosts()) {
            if (host.takes(kind))
                contenders.push_back({&host, kind, nullptr, {}});
        }
    }
    for (int round = 0; round < startRounds; ++round) {
        for (auto& contender : contenders) {
            const auto time = withPatience(report, *contender.host, [&] {
                try {
                    return contender.timeToFirstItem();
                } catch (...) {
                    contender.running.reset();
                    throw;
                }
            });
            if (time)
                contender.times.push_back(*time);
        }
    }
    const Contender* ours = nullptr;
    for (const auto& contender : contenders) {
        report.add({.part = "starts",
                    .what = "first item",
                    .host = contender.host->name,
                    .kind = nameOf(contender.kind),
                    .items = 1},
                   contender.times);
        if (contender.host->isVelmo())
            ours = &contender;
        else if (!contender.times.empty())
            report.promise("our time to the first item, of " + contender.host->name + "'s",
                           median(ours->times) / median(contender.times), 1);
    }
}

}  // namespace velmo::desktop
