#include "benchmarks.h"
#include "process_figures.h"
#include "running_host.h"

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int memoryRounds = 3;
constexpr auto memorySettlingTime = std::chrono::seconds(2);

/// Megabytes by host and number of items.
using Memories = std::map<std::pair<const Host*, int>, std::vector<double>>;

/// All hosts at once: what they share is divided among all alike.
void measureRound(Report& report, Kind kind, Memories& memories) {
    std::vector<std::unique_ptr<RunningHost>> running;
    for (const auto& host : installedHosts()) {
        if (!host.takes(kind))
            continue;
        auto started = withPatience(report, host.name, [&] {
            auto begun = std::make_unique<RunningHost>(host, Setup{}, wideScreen);
            begun->fill(kind, itemCounts[0]);
            return begun;
        });
        if (started)
            running.push_back(std::move(*started));
    }
    for (const int count : itemCounts) {
        std::erase_if(running, [&](const auto& host) {
            const auto filled = withPatience(report, host->host().name, [&] {
                host->fill(kind, count);
                return true;
            });
            return !filled;
        });
        std::this_thread::sleep_for(memorySettlingTime);
        for (const auto& host : running)
            memories[{&host->host(), count}].push_back(static_cast<double>(memoryOf(host->process())) / 1024);
    }
}

}  // namespace

void measureMemory(Report& report) {
    for (const auto kind : {Kind::tray, Kind::bus}) {
        const char* things = kind == Kind::tray ? " icons of the tray" : " items of the bus";
        Memories memories;
        for (int round = 0; round < memoryRounds; ++round)
            measureRound(report, kind, memories);
        for (const int count : itemCounts) {
            const auto& ours = memories.at({hostNamed("Velmo"), count});
            for (const auto& host : installedHosts()) {
                const auto& theirs = memories[{&host, count}];
                report.add({.part = "memory",
                            .what = "at rest",
                            .host = host.name,
                            .kind = nameOf(kind),
                            .items = count,
                            .unit = "MB"},
                           theirs);
                if (host.isLarge && !theirs.empty())
                    report.promise(
                        "our memory with " + std::to_string(count) + things + ", of " + host.name + "'s",
                        median(ours) / median(theirs), 0.5);
            }
        }
    }
}

}  // namespace velmo::desktop
