#pragma once

#include "lifetime.h"
#include "linux/dbus/bus.h"
#include "linux/dbus/socket_watch.h"
#include "scoped_timer.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo::dbus {

/// Where the session's bus is, or will be, as the environment tells, whichever bus it is. Absent where it
/// tells of none.
std::optional<std::string> sessionBusAddress();

/// Whether the bus has started this process, asked once, while it has one thread: the environment does not
/// tell it to the programs that we start.
bool takeStartByBus();

/// The session's bus, as long as there is one: followed when it goes away and comes back.
class SessionBus {
public:
    SessionBus(EventLoop& loop, std::function<void(const std::shared_ptr<Bus>&)> onUp,
               std::function<void()> onDown);
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Without an address nothing is done, now and later.
    void start(const std::optional<std::string>& address);
    /// Null while there is none.
    const std::shared_ptr<Bus>& bus() const { return bus_; }

private:
    void connect();
    void lost();
    void retry();
    void watchSocket();

    EventLoop& loop_;
    std::function<void(const std::shared_ptr<Bus>&)> onUp_;
    std::function<void()> onDown_;
    std::string address_;
    std::shared_ptr<Bus> bus_;
    std::chrono::steady_clock::time_point connectedAt_;
    Seconds pause_;
    std::unique_ptr<SocketWatch> socketWatch_;
    ScopedTimer timer_;
    Lifetime lifetime_;
};

}  // namespace velmo::dbus
