#include "benchmarks.h"
#include "process_figures.h"
#include "running_host.h"

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int minutes = 3;
constexpr auto restSettlingTime = std::chrono::seconds(5);

/// With items of all kinds that it takes, and with a clock or without.
struct RestingHost {
    std::unique_ptr<RunningHost> running;
    bool clock;
    /// Of each kind.
    int items;
    /// Of each minute.
    std::vector<double> wakeups = {};
    std::vector<double> milliseconds = {};
};

RestingHost begin(const Host& host, bool clock, int items) {
    RestingHost resting{std::make_unique<RunningHost>(host, Setup{.clock = clock}, twiceAsWideScreen), clock,
                        items};
    resting.running->fillTray(items);
    if (host.takesBusItems) {
        resting.running->fillBus(items);
        resting.running->letBusItemsRest();
    }
    return resting;
}

/// All at once: one minute for all of them, and the same one.
void passAMinute(std::vector<RestingHost>& hosts) {
    std::vector<SleepCounter> sleeps;
    std::vector<double> work;
    for (const auto& host : hosts) {
        sleeps.emplace_back(host.running->process());
        work.push_back(workOf(host.running->process()));
    }
    std::this_thread::sleep_for(std::chrono::minutes(1));
    for (std::size_t index = 0; index < hosts.size(); ++index) {
        const auto process = hosts[index].running->process();
        hosts[index].wakeups.push_back(static_cast<double>(sleeps[index].count()));
        hosts[index].milliseconds.push_back(workOf(process) - work[index]);
    }
}

}  // namespace

void measureRest(Report& report) {
    std::vector<RestingHost> hosts;
    for (const bool clock : {false, true}) {
        for (const int items : itemCounts) {
            for (const auto& host : installedHosts()) {
                if (clock && !host.hasClock)
                    continue;
                if (auto begun = withPatience(report, host.name, [&] { return begin(host, clock, items); }))
                    hosts.push_back(std::move(*begun));
            }
        }
    }
    std::this_thread::sleep_for(restSettlingTime);
    for (int minute = 0; minute < minutes; ++minute)
        passAMinute(hosts);
    for (auto& host : hosts) {
        const std::string what = host.clock ? "clock" : "rest";
        const auto& name = host.running->host().name;
        const auto add = [&](const char* figure, const char* unit, const std::vector<double>& values) {
            report.add({.part = "rest",
                        .what = what + ", " + figure,
                        .host = name,
                        .kind = "both",
                        .items = host.items,
                        .unit = unit},
                       values);
        };
        add("wakeups", "a minute", host.wakeups);
        for (auto& time : host.milliseconds)
            time *= 60;
        add("processor", "ms an hour", host.milliseconds);
        if (!host.clock && host.running->host().isVelmo())
            report.promise("our wakeups a minute with " + std::to_string(host.items) + " items of each kind",
                           spreadOf(host.wakeups).highest, 0);
    }
}

}  // namespace velmo::desktop
