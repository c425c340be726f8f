#include "session_bus.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

namespace velmo::dbus {

namespace {

/// Between attempts to connect: doubled from the first to the last.
constexpr Seconds firstPause = 0.1;
constexpr Seconds lastPause = 60;
/// A connection that lasted so long was a good one.
constexpr std::chrono::seconds goodConnection(5);

/// A bus that comes anew has another identity at the same place.
std::string withoutIdentity(std::string address) {
    constexpr std::string_view key = ",guid=";
    for (auto begin = address.find(key); begin != std::string::npos; begin = address.find(key))
        address.erase(begin, address.find_first_of(",;", begin + key.size()) - begin);
    return address;
}

}  // namespace

std::optional<std::string> sessionBusAddress() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address) {
        if (std::string(address) == "disabled:")
            return std::nullopt;
        return withoutIdentity(address);
    }
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (!folder || *folder != '/')
        return std::nullopt;
    return "unix:path=" + (std::filesystem::path(folder) / "bus").string();
}

bool takeStartByBus() {
    const char* type = std::getenv("DBUS_STARTER_BUS_TYPE");
    const bool isStartedByBus = type && std::string(type) == "session";
    unsetenv("DBUS_STARTER_BUS_TYPE");
    unsetenv("DBUS_STARTER_ADDRESS");
    return isStartedByBus;
}

SessionBus::SessionBus(EventLoop& loop, std::function<void(const std::shared_ptr<Bus>&)> onUp,
                       std::function<void()> onDown)
    : loop_(loop), onUp_(std::move(onUp)), onDown_(std::move(onDown)), pause_(firstPause) {}

SessionBus::~SessionBus() {
    if (bus_)
        bus_->close();
}

void SessionBus::start(const std::optional<std::string>& address) {
    if (!address)
        return;
    address_ = *address;
    connect();
}

void SessionBus::connect() {
    if (bus_)
        return;
    timer_.end();
    bool isMalformed = false;
    bus_ = Bus::open(loop_, address_, lifetime_.guard([this] { lost(); }), isMalformed);
    if (bus_) {
        // What else happens in the folder is none of our business.
        socketWatch_ = nullptr;
        connectedAt_ = std::chrono::steady_clock::now();
        onUp_(bus_);
    } else if (!isMalformed) {
        retry();
    }
}

void SessionBus::lost() {
    onDown_();
    bus_->close();
    bus_ = nullptr;
    if (std::chrono::steady_clock::now() - connectedAt_ >= goodConnection)
        pause_ = firstPause;
    retry();
}

void SessionBus::retry() {
    watchSocket();
    timer_ = loop_.schedule(pause_, lifetime_.guard([this] { connect(); }));
    pause_ = std::min(2 * pause_, lastPause);
}

/// Anew each time: the folder may be another one by now.
void SessionBus::watchSocket() {
    socketWatch_ = SocketWatch::start(loop_, address_, [this] {
        pause_ = firstPause;
        if (!bus_)
            connect();
    });
}

}  // namespace velmo::dbus
