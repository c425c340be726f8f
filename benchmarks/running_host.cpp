#include "running_host.h"

#include <stdexcept>

namespace velmo::desktop {

RunningHost::RunningHost(const Host& host, const Setup& setup, const char* screen)
    : host_(&host), display_(screen) {
    display_.startWindowManager();
    host.configure(display_, setup);
    start();
}

void RunningHost::start() {
    process_.emplace(display_.run(host_->command));
    waitFor([&] { return display_.hasTray(); }, host_->name);
}

Clock::time_point RunningHost::restart() {
    process_.reset();
    waitFor([&] { return !display_.hasTray(); }, host_->name + " to go");
    const auto begin = Clock::now();
    start();
    return begin;
}

BusItems& RunningHost::busItems() {
    if (!busItems_)
        busItems_.emplace(display_);
    return *busItems_;
}

void RunningHost::fillTray(int count) {
    while (static_cast<int>(trayIcons_.size()) < count)
        trayIcons_.push_back(display_.dockAndWait(static_cast<int>(trayIcons_.size())));
}

void RunningHost::fillBus(int count, int hidden) {
    constexpr std::chrono::milliseconds interval(5);
    waitFor([&] { return busItems().hasHost(); }, host_->name + " to take items of the bus");
    if (busItems().count() == 0 && count > 0)
        busItems().addToNewHost();
    busItems().addUpTo(count);
    busItems().awaitRequests();
    waitFor([&] { return display_.squares() == count - hidden; }, "the items of the bus", interval);
}

void RunningHost::fill(Kind kind, int count, int hidden) {
    if (kind == Kind::tray)
        fillTray(count);
    else
        fillBus(count, hidden);
}

void RunningHost::letBusItemsRest() {
    if (busItems_)
        busItems_->rest();
}

xcb_window_t windowTitled(const Display& display, const std::string& title) {
    std::optional<xcb_window_t> window;
    waitFor([&] { return (window = display.x().windowTitled(title)).has_value(); }, title);
    return *window;
}

}  // namespace velmo::desktop
