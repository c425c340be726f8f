#include "session_bus.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace velmo::dbus {

namespace {

/// Between attempts to connect: doubled from the first to the last.
constexpr Seconds firstPause = 0.1;
constexpr Seconds lastPause = 60;
/// Where the file system tells of the socket's return, attempts end with this pause: a bus listens soon
/// after its socket is there.
constexpr Seconds lastPauseWhenWatching = 5;
/// A connection that lasted so long was a good one.
constexpr Seconds goodConnection = 5;

}  // namespace

std::optional<std::string> sessionBusAddress() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address) {
        if (std::string(address) == "disabled:")
            return std::nullopt;
        return address;
    }
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (!folder || *folder != '/')
        return std::nullopt;
    const auto socket = std::filesystem::path(folder) / "bus";
    std::error_code error;
    if (!std::filesystem::is_socket(socket, error))
        return std::nullopt;
    return "unix:path=" + socket.string();
}

SessionBus::SessionBus(EventLoop& loop, std::function<void(const std::shared_ptr<Bus>&)> onUp,
                       std::function<void()> onDown)
    : loop_(loop), onUp_(std::move(onUp)), onDown_(std::move(onDown)), pause_(firstPause) {}

SessionBus::~SessionBus() {
    if (timer_)
        timer_->invalidate();
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
    if (timer_)
        timer_->invalidate();
    bool isMalformed = false;
    bus_ = Bus::open(loop_, address_, lifetime_.guard([this] { lost(); }), isMalformed);
    if (bus_) {
        connectedAt_ = loop_.now();
        onUp_(bus_);
    } else if (!isMalformed) {
        retry();
    }
}

void SessionBus::lost() {
    onDown_();
    bus_->close();
    bus_ = nullptr;
    if (loop_.now() - connectedAt_ >= goodConnection)
        pause_ = firstPause;
    retry();
}

void SessionBus::retry() {
    watchSocket();
    const Seconds last = socketWatch_ ? lastPauseWhenWatching : lastPause;
    if (socketWatch_ && pause_ > last)
        return;
    timer_ = loop_.schedule(std::min(pause_, last), lifetime_.guard([this] { connect(); }));
    pause_ *= 2;
}

void SessionBus::watchSocket() {
    if (socketWatch_)
        return;
    socketWatch_ = SocketWatch::start(loop_, address_, [this] {
        pause_ = firstPause;
        if (!bus_)
            connect();
    });
}

}  // namespace velmo::dbus
