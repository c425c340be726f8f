#pragma once

#include "linux/event_loop/event_loop.h"
#include "linux/registration.h"

#include <functional>
#include <memory>
#include <string>

namespace velmo::dbus {

/// Tells when the socket of a bus's address appears in the file system, or when its folder has gone and with
/// it the watch, without looking for them again and again.
class SocketWatch {
public:
    /// Null where the address names no file, or its folder is not there.
    static std::unique_ptr<SocketWatch> start(EventLoop& loop, const std::string& address,
                                              std::function<void()> onChange);
    ~SocketWatch();
    SocketWatch(const SocketWatch&) = delete;
    SocketWatch& operator=(const SocketWatch&) = delete;

private:
    SocketWatch(EventLoop& loop, int descriptor, std::string name, std::function<void()> onChange);
    void read();

    int descriptor_;
    std::string name_;
    std::function<void()> onChange_;
    Registration source_;
};

}  // namespace velmo::dbus
