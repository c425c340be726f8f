#include "benchmarks.h"
#include "process_figures.h"
#include "running_host.h"

#include <chrono>
#include <memory>
#include <numeric>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int fewMinutes = 3;
constexpr int minutesOfAnHour = 60;
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

    Report::Subject subject(const char* part, const char* figure, const char* unit) const {
        return {.part = part,
                .what = std::string(clock ? "clock, " : "rest, ") + figure,
                .host = running->host().name,
                .kind = "both",
                .items = items,
                .unit = unit};
    }
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

/// Each host with each number of items.
void beginAll(std::vector<RestingHost>& hosts, bool clock, Report& report) {
    for (const int items : itemCounts) {
        for (const auto& host : installedHosts()) {
            if (clock && !host.hasClock)
                continue;
            if (auto begun = withPatience(report, host.name, [&] { return begin(host, clock, items); }))
                hosts.push_back(std::move(*begun));
        }
    }
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

void passMinutes(std::vector<RestingHost>& hosts, int count) {
    std::this_thread::sleep_for(restSettlingTime);
    for (int minute = 0; minute < count; ++minute)
        passAMinute(hosts);
}

}  // namespace

void measureRest(Report& report) {
    std::vector<RestingHost> hosts;
    beginAll(hosts, false, report);
    beginAll(hosts, true, report);
    passMinutes(hosts, fewMinutes);
    for (auto& host : hosts) {
        report.add(host.subject("rest", "wakeups", "a minute"), host.wakeups);
        for (auto& time : host.milliseconds)
            time *= minutesOfAnHour;
        report.add(host.subject("rest", "processor", "ms an hour"), host.milliseconds);
        if (!host.clock && host.running->host().isVelmo())
            report.promise("our wakeups a minute with " + std::to_string(host.items) + " items of each kind",
                           spreadOf(host.wakeups).highest, 0);
    }
}

void measureHour(Report& report) {
    std::vector<RestingHost> hosts;
    beginAll(hosts, true, report);
    passMinutes(hosts, minutesOfAnHour);
    for (const auto& host : hosts) {
        report.add(host.subject("hour", "wakeups", "a minute"), host.wakeups);
        report.add(host.subject("hour", "processor", "ms in all"),
                   {std::accumulate(host.milliseconds.begin(), host.milliseconds.end(), 0.0)});
    }
}

}  // namespace velmo::desktop
