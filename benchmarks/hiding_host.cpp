#include "hiding_host.h"

#include "built_files.h"
#include "running_host.h"
#include "timing.h"
#include "x_event.h"

#include <poll.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace velmo::desktop {

namespace {

/// For an item to move, in milliseconds.
constexpr int longestWait = 5000;

Place middleOf(const Display& display, xcb_window_t window) {
    const auto area = display.x().area(window).value();
    return {area.midX(), area.midY()};
}

class BareMover : public WindowMover {
public:
    BareMover(int items, const char* screen)
        : display_(screen), process_(display_.run({bareMoverProgram, std::to_string(items)})) {
        toggle_ = windowTitled(display_, "toggle");
        std::vector<xcb_window_t> windows;
        for (const auto window : display_.x().children(display_.x().parent(toggle_))) {
            if (window != toggle_)
                windows.push_back(window);
        }
        watch(windows);
    }
    Display& display() override { return display_; }
    std::string name() const override { return "bare program"; }
    Place button() const override { return middleOf(display_, toggle_); }

private:
    Display display_;
    ChildProcess process_;
    xcb_window_t toggle_ = XCB_WINDOW_NONE;
};

class Velmo : public WindowMover {
public:
    Velmo(Kind kind, int items, const char* screen)
        : kind_(kind), host_(*hostNamed("Velmo"), {.hiddenItems = items, .kind = kind}, screen) {
        const auto& x = host_.display().x();
        host_.fill(kind, items + 1, items);
        std::vector<xcb_window_t> windows;
        for (int number = 0; number < items; ++number) {
            if (kind == Kind::tray)
                windows.push_back(x.parent(host_.trayIcons()[static_cast<std::size_t>(number)]));
            else
                windows.push_back(windowTitled(host_.display(), itemName(number)));
        }
        host_.letBusItemsRest();
        toggle_ = windowTitled(host_.display(), "Velmo.Toggle");
        watch(windows);
    }
    Display& display() override { return host_.display(); }
    std::string name() const override { return "Velmo"; }
    Kind kind() const override { return kind_; }
    Place button() const override { return middleOf(host_.display(), toggle_); }

private:
    Kind kind_;
    RunningHost host_;
    xcb_window_t toggle_ = XCB_WINDOW_NONE;
};

/// The arrow is at the right end of the window that holds the items.
Place arrowOf(const Display& display, xcb_window_t window) {
    constexpr int arrow = 16;
    const auto area = display.x().area(window).value();
    return {area.x + area.width - arrow / 2, area.midY()};
}

class XfceTray : public WindowMover {
public:
    XfceTray(const Host& host, int items, const char* screen) : host_(host, {.hiddenItems = items}, screen) {
        host_.fillTray(items + 1);
        const auto& x = host_.display().x();
        std::vector<xcb_window_t> windows;
        for (const auto icon : host_.trayIcons())
            windows.push_back(x.parent(icon));
        // Without an icon that stays, it has no arrow.
        windows.pop_back();
        holder_ = x.parent(windows.front());
        watch(windows);
    }
    Display& display() override { return host_.display(); }
    std::string name() const override { return host_.host().name; }
    Place button() const override { return arrowOf(host_.display(), holder_); }

private:
    RunningHost host_;
    xcb_window_t holder_ = XCB_WINDOW_NONE;
};

/// One that paints items of the bus, which are no windows.
class BusPainter : public HidingHost {
public:
    BusPainter(const Host& host, int items, const char* screen)
        : items_(items), host_(host, {.hiddenItems = items, .kind = Kind::bus}, screen) {
        host_.fillBus(items + 1, items);
        host_.letBusItemsRest();
    }
    Display& display() override { return host_.display(); }
    const Display& display() const { return host_.display(); }
    std::string name() const override { return host_.host().name; }
    Kind kind() const override { return Kind::bus; }
    void beginToWatch() override {}
    void awaitChange(bool revealed) override {
        const auto begin = Clock::now();
        while (host_.display().squares() != (revealed ? items_ + 1 : 1)) {
            if (millisecondsSince(begin) > longestWait)
                throw std::runtime_error("a click did not show or hide all of " + std::to_string(items_) +
                                         " items of the bus");
            // To look takes the server's time.
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
    }

private:
    int items_;
    RunningHost host_;
};

class XfceBus : public BusPainter {
public:
    XfceBus(const Host& host, int items, const char* screen) : BusPainter(host, items, screen) {
        const auto& x = display().x();
        holder_ = x.windowOfClass(x.topAt(1, 1), "Wrapper-2.0").value();
    }
    Place button() const override { return arrowOf(display(), holder_); }

private:
    xcb_window_t holder_ = XCB_WINDOW_NONE;
};

/// Its button stands where the first item is once they are shown. They are hidden some time after the pointer
/// has left them.
class LxqtBus : public BusPainter {
public:
    using BusPainter::BusPainter;
    Place button() const override { return {middleOfBar, middleOfBar}; }
    bool hidesOnClick() const override { return false; }
    void letHide() override {
        display().xdotool({"mousemove", "300", "500"});
        waitFor([&] { return display().squares() == 1; }, name() + " to hide items",
                std::chrono::milliseconds(10));
    }
};

}  // namespace

void WindowMover::watch(const std::vector<xcb_window_t>& windows) {
    count_ = windows.size();
    for (const auto window : windows) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(display().x().raw(), window, XCB_CW_EVENT_MASK, &mask);
    }
}

void WindowMover::beginToWatch() {
    while (const XEvent event{xcb_poll_for_event(display().x().raw())})
        note(*event);
}

void WindowMover::note(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_CONFIGURE_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    if (change.x >= 0)
        shown_.insert(change.window);
    else
        shown_.erase(change.window);
}

void WindowMover::awaitChange(bool revealed) {
    auto* const raw = display().x().raw();
    while (shown_.size() != (revealed ? count_ : 0)) {
        const XEvent event{xcb_poll_for_event(raw)};
        if (!event) {
            pollfd descriptor = {xcb_get_file_descriptor(raw), POLLIN, 0};
            if (poll(&descriptor, 1, longestWait) <= 0)
                throw std::runtime_error("a click has left " + std::to_string(shown_.size()) + " of " +
                                         std::to_string(count_) + " " + nameOf(kind()) + " items on the bar");
            continue;
        }
        note(*event);
    }
}

std::unique_ptr<HidingHost> makeBareMover(int items, const char* screen) {
    return std::make_unique<BareMover>(items, screen);
}

std::unique_ptr<HidingHost> makeVelmo(Kind kind, int items, const char* screen) {
    return std::make_unique<Velmo>(kind, items, screen);
}

std::unique_ptr<HidingHost> makeXfce(const Host& host, Kind kind, int items, const char* screen) {
    if (kind == Kind::tray)
        return std::make_unique<XfceTray>(host, items, screen);
    return std::make_unique<XfceBus>(host, items, screen);
}

std::unique_ptr<HidingHost> makeLxqt(const Host& host, int items, const char* screen) {
    return std::make_unique<LxqtBus>(host, items, screen);
}

}  // namespace velmo::desktop
