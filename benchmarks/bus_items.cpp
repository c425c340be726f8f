#include "bus_items.h"

#include "timing.h"

#include "linux/process/linux_process_info.h"

#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace velmo::desktop {

namespace {

std::string pathOf(int number) {
    return "/item" + std::to_string(number);
}

}  // namespace

BusItems::BusItems(const Display& display) : program_(display.environment().at("DBUS_SESSION_BUS_ADDRESS")) {}

bool BusItems::hasHost() {
    return program_.isTaken("org.kde.StatusNotifierWatcher");
}

void BusItems::makeItem(int number) {
    const auto name = itemName(number);
    program_.addItem(pathOf(number), name);
    program_.setText(pathOf(number), "Title", name);
    program_.setText(pathOf(number), "Category", "ApplicationStatus");
}

void BusItems::addUpTo(int count) {
    expectedRequests_ = std::max(expectedRequests_, pictureRequests());
    for (; count_ < count; ++count_) {
        makeItem(count_);
        program_.registerItem(pathOf(count_));
        ++expectedRequests_;
    }
}

void BusItems::awaitRequests() {
    waitFor([&] { return pictureRequests() >= expectedRequests_; }, "the host to ask for items",
            std::chrono::milliseconds(5));
}

void BusItems::addToNewHost(int count) {
    for (; count_ < count; ++count_)
        makeItem(count_);
    addFirstToNewHost();
    for (int number = 1; number < count; ++number)
        program_.registerItem(pathOf(number));
}

void BusItems::addFirstToNewHost() {
    const int before = pictureRequests();
    constexpr double patience = 20;
    for (int attempt = 0; attempt < 100; ++attempt) {
        program_.registerItem(pathOf(0));
        const auto begin = Clock::now();
        while (millisecondsSince(begin) < patience) {
            if (pictureRequests() > before)
                return;
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    }
    throw std::runtime_error("nobody takes an item");
}

std::string BusItems::identity(int number) {
    return processName(getpid()).value_or("unknown") + "." + itemName(number);
}

int BusItems::pictureRequests() const {
    return program_.callsOf("GetAll") + program_.callsOf("Get org.kde.StatusNotifierItem IconPixmap");
}

}  // namespace velmo::desktop
