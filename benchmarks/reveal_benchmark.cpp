#include "reveal_benchmark.h"

#include "built_files.h"
#include "display.h"
#include "hosts.h"
#include "timing.h"
#include "x_event.h"

#include <poll.h>
#include <sched.h>
#include <xcb/xtest.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

/// As many reveals, and as many hides.
constexpr int revealRounds = 40;
/// A usual screen, or a wider one where the icons need it.
const char* screenFor(int icons) {
    return icons > 50 ? "7680x1080x24" : "1920x1080x24";
}

/// One on which they do not fit side by side, and as many times what the reveal of a bar with room takes.
constexpr const char* crowdedScreen = "1280x720x24";
constexpr double mostCrowded = 3;

/// Between a press and its release, and before the next click.
constexpr std::chrono::milliseconds pause(20);
/// For an icon to move, in milliseconds.
constexpr int longestWait = 5000;

/// A program with hidden icons, and the button that shows them.
class Contender {
public:
    virtual ~Contender() = default;
    explicit Contender(const char* screen) : display_(screen) {}
    Contender(const Contender&) = delete;
    Contender& operator=(const Contender&) = delete;

    Display& display() { return display_; }
    virtual std::string name() const = 0;
    /// The middle of its button, in pixels of the root window.
    virtual std::pair<int, int> button() = 0;
    /// The windows that it moves, one for each icon.
    const std::vector<xcb_window_t>& windows() const { return windows_; }

protected:
    Display display_;
    std::vector<xcb_window_t> windows_;
};

class BareMover : public Contender {
public:
    explicit BareMover(int icons)
        : Contender(screenFor(icons)), process_(display_.run({bareMoverProgram, std::to_string(icons)})) {
        waitFor([&] { return display_.x().windowTitled("toggle").has_value(); }, "the bare program");
        toggle_ = *display_.x().windowTitled("toggle");
        for (const auto window : display_.x().children(display_.x().parent(toggle_))) {
            if (window != toggle_)
                windows_.push_back(window);
        }
    }
    std::string name() const override { return "bare program"; }
    std::pair<int, int> button() override {
        const auto area = display_.x().area(toggle_).value();
        return {area.midX(), area.midY()};
    }

private:
    ChildProcess process_;
    xcb_window_t toggle_ = XCB_WINDOW_NONE;
};

class TrayContender : public Contender {
public:
    TrayContender(const Host& host, int icons, const char* screen) : Contender(screen), name_(host.name) {
        host.configure(display_, icons);
        process_.emplace(display_.run(host.command));
        waitFor([&] { return display_.hasTray(); }, host.name.c_str());
        // Without an icon that stays, xfce4-panel has no arrow.
        display_.dockAndWait(icons);
        for (int number = 0; number < icons; ++number) {
            windows_.push_back(display_.x().parent(display_.dockAndWait(number)));
        }
    }

    std::string name() const override { return name_; }

private:
    std::string name_;
    std::optional<ChildProcess> process_;
};

class VelmoContender : public TrayContender {
public:
    explicit VelmoContender(int icons) : VelmoContender(icons, screenFor(icons)) {}
    VelmoContender(int icons, const char* screen)
        : TrayContender(hostNamed("velmo").value(), icons, screen),
          toggle_(display_.x().windowTitled("Velmo.Toggle").value()) {}
    std::pair<int, int> button() override {
        const auto area = display_.x().area(toggle_).value();
        return {area.midX(), area.midY()};
    }

private:
    xcb_window_t toggle_;
};

class XfceContender : public TrayContender {
public:
    XfceContender(const Host& host, int icons) : TrayContender(host, icons, screenFor(icons)) {}
    /// The arrow is at the right end of the window that holds the icons.
    std::pair<int, int> button() override {
        constexpr int arrow = 16;
        const auto area = display_.x().area(display_.x().parent(windows_.front())).value();
        return {area.x + area.width - arrow / 2, area.midY()};
    }
};

class Stopwatch {
public:
    explicit Stopwatch(Contender& contender) : contender_(contender) {
        for (const auto window : contender.windows()) {
            const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
            xcb_change_window_attributes(raw(), window, XCB_CW_EVENT_MASK, &mask);
        }
    }

    /// Clicks, and returns the milliseconds from the release until the last icon is where it belongs.
    double click(bool reveals) {
        const auto [x, y] = contender_.button();
        fake(XCB_MOTION_NOTIFY, 0, x, y);
        fake(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1);
        finish();
        std::this_thread::sleep_for(pause);
        while (const XEvent event{xcb_poll_for_event(raw())})
            continue;
        const auto begin = Clock::now();
        fake(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
        xcb_flush(raw());
        while (shown_.size() != (reveals ? contender_.windows().size() : 0))
            note(*nextEvent());
        const double time = millisecondsSince(begin);
        std::this_thread::sleep_for(pause);
        return time;
    }

private:
    xcb_connection_t* raw() { return contender_.display().x().raw(); }

    void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0) {
        xcb_test_fake_input(raw(), type, detail, 0, contender_.display().x().root(),
                            static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    }
    void finish() { contender_.display().x().area(contender_.windows().front()); }

    XEvent nextEvent() {
        while (true) {
            if (XEvent event{xcb_poll_for_event(raw())})
                return event;
            pollfd descriptor = {xcb_get_file_descriptor(raw()), POLLIN, 0};
            if (poll(&descriptor, 1, longestWait) <= 0)
                throw std::runtime_error(contender_.name() + ": a click did not move all icons");
        }
    }

    void note(const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_CONFIGURE_NOTIFY)
            return;
        const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (change.x >= 0)
            shown_.insert(change.window);
        else
            shown_.erase(change.window);
    }

    Contender& contender_;
    std::set<xcb_window_t> shown_;
};

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

struct Figures {
    std::vector<double> reveals;
    std::vector<double> hides;
};

/// A round of one after a round of the other: what else the machine does falls on all alike.
std::vector<Figures> race(const std::vector<std::unique_ptr<Contender>>& contenders) {
    const OutOfTheWay outOfTheWay;
    std::vector<Stopwatch> watches;
    for (const auto& contender : contenders)
        watches.emplace_back(*contender);
    std::vector<Figures> figures(contenders.size());
    for (int round = 0; round < revealRounds; ++round) {
        for (std::size_t index = 0; index < watches.size(); ++index) {
            for (const bool reveals : {true, false}) {
                const double time = watches[index].click(reveals);
                (reveals ? figures[index].reveals : figures[index].hides).push_back(time);
            }
        }
    }
    return figures;
}

void print(int icons, const std::vector<std::string>& names, const std::vector<Figures>& figures) {
    for (std::size_t index = 0; index < figures.size(); ++index) {
        std::printf("%4d icons %-13s", icons, names[index].c_str());
        const auto print = [&](const char* what, std::vector<double> Figures::*times) {
            const auto& theirs = figures[index].*times;
            const auto& ours = figures.front().*times;
            std::printf("  %s %6.2f ms, 95th %6.2f", what, median(theirs), percentile95(theirs));
            if (index > 0)
                std::printf(", ours is %.2f and %.2f times that", median(ours) / median(theirs),
                            percentile95(ours) / percentile95(theirs));
        };
        print("reveal", &Figures::reveals);
        print("hide", &Figures::hides);
        std::printf("\n");
        std::fflush(stdout);
    }
}

/// Of the first one's medians and those of the other.
bool areAtMost(const char* what, const Figures& ours, const Figures& theirs, double limit) {
    bool kept = isAtMost((std::string("reveals, as many times ") + what).c_str(),
                         median(ours.reveals) / median(theirs.reveals), limit);
    return isAtMost((std::string("hides, as many times ") + what).c_str(),
                    median(ours.hides) / median(theirs.hides), limit) &&
           kept;
}

/// Where icons become narrower with each reveal, and wider with each that hides them.
bool compareCrowdedReveals() {
    bool kept = true;
    for (const int icons : {60, 100}) {
        std::vector<std::unique_ptr<Contender>> contenders;
        contenders.push_back(std::make_unique<VelmoContender>(icons));
        contenders.push_back(std::make_unique<VelmoContender>(icons, crowdedScreen));
        const auto figures = race(contenders);
        print(icons, {"with room", "crowded"}, figures);
        kept = areAtMost("those with room", figures[1], figures[0], mostCrowded) && kept;
    }
    return kept;
}

}  // namespace

bool compareReveals() {
    bool kept = true;
    const auto xfce = hostNamed("xfce4-panel");
    std::printf("\nfrom the release of the button to the last icon at its place (median)\n");
    for (const int icons : {10, 50, 200}) {
        std::vector<std::unique_ptr<Contender>> contenders;
        contenders.push_back(std::make_unique<VelmoContender>(icons));
        contenders.push_back(std::make_unique<BareMover>(icons));
        if (xfce)
            contenders.push_back(std::make_unique<XfceContender>(*xfce, icons));
        const auto figures = race(contenders);
        std::vector<std::string> names;
        for (const auto& contender : contenders)
            names.push_back(contender->name());
        print(icons, names, figures);
        kept = areAtMost("the bare program's", figures[0], figures[1], 2) && kept;
        if (xfce)
            kept = areAtMost("xfce4-panel's", figures[0], figures[2], 1.0 / 3) && kept;
    }
    return compareCrowdedReveals() && kept;
}

}  // namespace velmo::desktop
