#include "bus_items.h"

#include "timing.h"

#include "linux/process/linux_process_info.h"

#include <unistd.h>

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

void BusItems::makeItem() {
    const auto name = itemName(count_);
    program_.addItem(pathOf(count_), name);
    program_.setText(pathOf(count_), "Title", name);
    program_.setText(pathOf(count_), "Category", "ApplicationStatus");
    ++count_;
}

void BusItems::add(int count) {
    const int before = pictureRequests();
    for (int added = 0; added < count; ++added) {
        makeItem();
        program_.registerItem(pathOf(count_ - 1));
    }
    waitFor([&] { return pictureRequests() - before >= count; }, "the host to ask for items",
            std::chrono::milliseconds(5));
}

void BusItems::addToNewHost() {
    if (count_ == 0)
        makeItem();
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
