#pragma once

#include "beside.h"
#include "x_observer.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace velmo::desktop {

/// Lies between a program and the X server, and has a window destroyed just before the server gets a request
/// that names it: an X error for exactly that request. Not while the program has grabbed the server, when
/// nobody can destroy anything. It can note all requests, too.
class RequestTap {
public:
    /// For programs that are to go to `display`.
    explicit RequestTap(const std::string& display);
    ~RequestTap();
    RequestTap(const RequestTap&) = delete;
    RequestTap& operator=(const RequestTap&) = delete;

    /// As the value of DISPLAY.
    std::string display() const { return ":" + std::to_string(displayNumber_); }
    /// Counts requests that name the window from now on, and destroys it before the one of that number,
    /// counted from 1.
    void destroyBefore(xcb_window_t window, int number);
    /// Those so far.
    int count() const { return count_; }
    /// A request of the core protocol, or an extension's.
    struct Request {
        std::uint8_t opcode = 0;
        /// What follows the header: a window in most.
        std::uint32_t subject = 0;
        /// By which of a program's grabs of the server it was alone there, counted from 1; 0 for none.
        int grab = 0;
    };
    /// From now on requests are noted, in the order in which the server gets them.
    void note();
    std::vector<Request> noted() const;

private:
    struct Link {
        int program = -1;
        int server = -1;
        /// From the program, and not handed on yet.
        std::vector<std::uint8_t> waiting;
        bool hasBegun = false;
        /// Its present grab of the server; 0 for none.
        int grab = 0;
    };

    void listenSomewhere();
    void work();
    void accept();
    /// False where one side has gone.
    bool carry(Link& link, short programEvents, short serverEvents);
    void handOn(Link& link);
    void look(Link& link, std::span<const std::uint8_t> request);
    bool isNamedIn(std::span<const std::uint8_t> request) const;
    int connectToServer() const;

    XObserver x_;
    std::string serversSocket_;
    int listener_;
    int displayNumber_ = 0;
    std::vector<Link> links_;
    mutable std::mutex mutex_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    int number_ = 0;
    std::atomic<int> count_ = 0;
    int grabs_ = 0;
    bool isNoting_ = false;
    std::vector<Request> noted_;
    Beside working_{Beside::Times::untilTheEnd, [this] { work(); }};
};

}  // namespace velmo::desktop
