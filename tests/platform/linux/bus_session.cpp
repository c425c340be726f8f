#include "bus_session.h"

#include "built_files.h"

#include <poll.h>

#include <chrono>
#include <fstream>

namespace velmo {

void BusSession::SetUp() {
    std::string pattern = std::filesystem::temp_directory_path() / "velmo-bus-XXXXXX";
    folder_ = mkdtemp(pattern.data());
    bus_ = std::make_unique<desktop::PrivateBus>(folder_);
    bus_->start();
    icons_ = std::make_unique<IconLoader>(loop_, iconLoaderProgram);
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

void BusSession::useSlowIcons() {
    const auto file = folder_ / "slow-icons";
    std::ofstream(file) << R"(#!/usr/bin/python3
import os, struct, time
while head := os.read(0, 20):
    side, *sizes = struct.unpack('5I', head)
    rest = b''
    while len(rest) < sum(sizes):
        rest += os.read(0, sum(sizes) - len(rest))
    name = rest[:sizes[0]]
    isMissing = name.startswith(b'none')
    time.sleep(0.1 if isMissing else float(name))
    os.write(1, struct.pack('3I', 0, 0, 0) if isMissing else struct.pack('3I4B', 1, 1, 0, 0, 0, 0, 255))
)";
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    icons_ = std::make_unique<IconLoader>(loop_, file);
}

void BusSession::stopHost() {
    host_.reset();
    sessionBus_.reset();
}

std::unique_ptr<desktop::BusProgram> BusSession::program() const {
    return std::make_unique<desktop::BusProgram>(bus_->address());
}

std::unique_ptr<desktop::BusProgram> BusSession::programWithItem(const std::string& id) {
    auto owner = program();
    owner->addItem("/StatusNotifierItem", id);
    owner->registerItem(owner->name());
    EXPECT_TRUE(until([&] { return item(id) != nullptr; }));
    return owner;
}

std::uint32_t BusSession::colorOf(const status_notifier::Item& item) {
    const auto& bytes = *std::get<Bitmap>(item.icon()->content).pixels;
    return static_cast<std::uint32_t>(bytes[2] << 16 | bytes[1] << 8 | bytes[0]);
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
