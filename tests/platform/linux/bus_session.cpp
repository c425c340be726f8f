#include "bus_session.h"

#include <poll.h>

#include <chrono>

namespace velmo {

void BusSession::SetUp() {
    std::string pattern = std::filesystem::temp_directory_path() / "velmo-bus-XXXXXX";
    folder_ = mkdtemp(pattern.data());
    bus_ = std::make_unique<desktop::PrivateBus>(folder_);
    bus_->start();
    icons_ = std::make_unique<IconLoader>(loop_, VELMO_ICON_LOADER);
}

void BusSession::TearDown() {
    stopHost();
    icons_.reset();
    bus_.reset();
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

bool BusSession::until(const std::function<bool()>& condition, Seconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(limit);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        loop_.turn();
        if (loop_.prepareToSleep()) {
            pollfd descriptor{loop_.descriptor(), POLLIN, 0};
            poll(&descriptor, 1, 2);
        }
    }
    return true;
}

void BusSession::runFor(Seconds time) {
    until([] { return false; }, time);
}

void BusSession::startHost() {
    status_notifier::Host::Handlers handlers;
    handlers.added = [this](auto& item) { items_.push_back(&item); };
    handlers.changed = [this](auto&) { ++changes_; };
    handlers.removed = [this](auto& item) { std::erase(items_, &item); };
    sessionBus_ = std::make_unique<dbus::SessionBus>(
        loop_,
        [this, handlers](const auto& bus) {
            ++timesUp_;
            host_ = std::make_unique<status_notifier::Host>(loop_, *icons_, bus, look_, handlers);
        },
        [this] { host_ = nullptr; });
    sessionBus_->start(bus_->address());
    // The watcher is there once the bus has dealt with our first requests.
    runFor(0.05);
}

void BusSession::stopHost() {
    host_.reset();
    sessionBus_.reset();
}

std::unique_ptr<desktop::BusProgram> BusSession::program() const {
    return std::make_unique<desktop::BusProgram>(bus_->address());
}

bool BusSession::untilItems(std::size_t count) {
    return until([&] { return items_.size() == count; });
}

status_notifier::Item* BusSession::item(const std::string& id) const {
    for (auto* item : items_) {
        if (item->properties().id == id)
            return item;
    }
    return nullptr;
}

}  // namespace velmo
