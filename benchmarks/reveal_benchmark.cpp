#include "benchmarks.h"
#include "hiding_host.h"
#include "running_host.h"
#include "timing.h"

#include <sched.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

/// As many reveals, and as many hides, of one that hides on a click.
constexpr int revealRounds = 100;
/// Of one that hides in its own time, which are waited for.
constexpr int revealsWithoutHides = 20;

const char* screenFor(int items) {
    return items > 50 ? wideScreen : usualScreen;
}

/// One on which they do not fit side by side, and as many times what the reveal of a bar with room takes.
constexpr const char* crowdedScreen = "1280x720x24";
constexpr double mostCrowded = 3;

/// Between a press and its release, and before the next click.
constexpr std::chrono::milliseconds pause(20);

struct Racer {
    std::unique_ptr<HidingHost> host;
    std::vector<double> reveals = {};
    std::vector<double> hides = {};
    bool hasFailed = false;
};

/// Clicks, and returns the milliseconds from the release until the last item is where it belongs.
double click(HidingHost& host, bool reveals) {
    const auto& x = host.display().x();
    const auto fake = [&](std::uint8_t type, std::uint8_t detail, Place place = {}) {
        xcb_test_fake_input(x.raw(), type, detail, 0, x.root(), static_cast<std::int16_t>(place.x),
                            static_cast<std::int16_t>(place.y), 0);
    };
    fake(XCB_MOTION_NOTIFY, 0, host.button());
    fake(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1);
    x.pointer();
    std::this_thread::sleep_for(pause);
    host.beginToWatch();
    const auto begin = Clock::now();
    fake(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
    xcb_flush(x.raw());
    host.awaitChange(reveals);
    const double time = millisecondsSince(begin);
    std::this_thread::sleep_for(pause);
    return time;
}

/// The watch keeps to the last processor and leaves the others to those that it watches: it is woken by each
/// icon that moves, and the server would wait for it.
class OutOfTheWay {
public:
    OutOfTheWay() {
        sched_getaffinity(0, sizeof(allowed_), &allowed_);
        if (CPU_COUNT(&allowed_) < 2)
            return;
        int last = CPU_SETSIZE - 1;
        while (!CPU_ISSET(last, &allowed_))
            --last;
        cpu_set_t own;
        CPU_ZERO(&own);
        CPU_SET(last, &own);
        sched_setaffinity(0, sizeof(own), &own);
    }
    ~OutOfTheWay() { sched_setaffinity(0, sizeof(allowed_), &allowed_); }
    OutOfTheWay(const OutOfTheWay&) = delete;
    OutOfTheWay& operator=(const OutOfTheWay&) = delete;

private:
    cpu_set_t allowed_{};
};

bool takesPart(const HidingHost& host, int round) {
    return host.hidesOnClick() || round % (revealRounds / revealsWithoutHides) == 0;
}

/// False where it failed for good. A panel that is busy may not heed a click, and is then clicked again.
bool takeTurn(Report& report, Racer& racer) {
    auto& host = *racer.host;
    const auto succeeds = [&](const auto& action) {
        return withPatience(report, host.name(), action).has_value();
    };
    const auto clicks = [&](bool reveals, std::vector<double>& times) {
        bool isFirst = true;
        return succeeds([&] {
            // One that is made again may find done what the one before it was made for.
            const bool counts = std::exchange(isFirst, false);
            const double time = click(host, reveals);
            if (counts)
                times.push_back(time);
            return true;
        });
    };
    const auto lets = [&] {
        return succeeds([&] {
            host.letHide();
            return true;
        });
    };
    return clicks(true, racer.reveals) && (host.hidesOnClick() ? clicks(false, racer.hides) : lets());
}

/// A round of one after a round of the other, each time in another order: what else the machine does falls on
/// all alike, and so does the pause behind one that hides in its own time.
void race(Report& report, std::vector<Racer*> racers) {
    const OutOfTheWay outOfTheWay;
    std::mt19937 random;
    for (int round = 0; round < revealRounds; ++round) {
        std::shuffle(racers.begin(), racers.end(), random);
        for (auto* const racer : racers) {
            if (racer->hasFailed || !takesPart(*racer->host, round))
                continue;
            racer->hasFailed = !takeTurn(report, *racer);
        }
    }
}

void add(Report& report, const Racer& racer, int items, const std::string& where = {}) {
    const auto add = [&](const std::string& what, const std::vector<double>& times) {
        report.add({.part = "reveals",
                    .what = what + where,
                    .host = racer.host->name(),
                    .kind = nameOf(racer.host->kind()),
                    .items = items},
                   times);
    };
    add("reveal", racer.reveals);
    add("hide", racer.hides);
}

/// Of the medians.
void promise(Report& report, int items, const Racer& ours, const Racer& theirs, const std::string& what,
             double limit) {
    for (const auto& [verb, times] :
         {std::pair("reveals", &Racer::reveals), std::pair("hides", &Racer::hides)}) {
        if (!(theirs.*times).empty())
            report.promise(
                std::string("our ") + verb + " of " + std::to_string(items) + ", as many times " + what,
                median(ours.*times) / median(theirs.*times), limit);
    }
}

std::vector<Racer> peersThatHide(Report& report, int items, const char* screen) {
    std::vector<Racer> peers;
    const auto add = [&](const Host& host, const auto& make) {
        if (auto made = withPatience(report, host.name, make))
            peers.push_back({std::move(*made)});
    };
    if (const auto* xfce = hostNamed("xfce4-panel")) {
        for (const auto kind : {Kind::tray, Kind::bus})
            add(*xfce, [&] { return makeXfce(*xfce, kind, items, screen); });
    }
    if (const auto* lxqt = hostNamed("lxqt-panel"))
        add(*lxqt, [&] { return makeLxqt(*lxqt, items, screen); });
    return peers;
}

void measureWithRoom(Report& report, int items) {
    const auto* screen = screenFor(items);
    std::map<Kind, Racer> ours;
    for (const auto kind : {Kind::tray, Kind::bus})
        ours[kind] = {makeVelmo(kind, items, screen)};
    Racer bare = {makeBareMover(items, screen)};
    auto peers = peersThatHide(report, items, screen);
    std::vector<Racer*> racers = {&ours[Kind::tray], &ours[Kind::bus], &bare};
    for (auto& peer : peers)
        racers.push_back(&peer);
    race(report, racers);
    for (const auto* racer : racers)
        add(report, *racer, items);
    const auto compare = [&](Kind kind, const Racer& theirs, double limit) {
        const std::string things = kind == Kind::tray ? "" : ", items of the bus";
        promise(report, items, ours[kind], theirs, theirs.host->name() + "'s" + things, limit);
    };
    for (const auto kind : {Kind::tray, Kind::bus})
        compare(kind, bare, 2);
    for (const auto& peer : peers)
        compare(peer.host->kind(), peer, 1.0 / 3);
}

/// Where icons become narrower with each reveal, and wider with each that hides them.
void measureCrowded(Report& report, int items) {
    Racer withRoom = {makeVelmo(Kind::tray, items, screenFor(items))};
    Racer crowded = {makeVelmo(Kind::tray, items, crowdedScreen)};
    race(report, {&withRoom, &crowded});
    add(report, withRoom, items, ", with room");
    add(report, crowded, items, ", crowded");
    promise(report, items, crowded, withRoom, "those with room", mostCrowded);
}

}  // namespace

void measureReveals(Report& report) {
    for (const int items : {10, 50, 200})
        measureWithRoom(report, items);
    for (const int items : {60, 100})
        measureCrowded(report, items);
}

}  // namespace velmo::desktop
