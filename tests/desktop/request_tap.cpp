#include "request_tap.h"

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

namespace velmo::desktop {

namespace {

constexpr std::size_t unit = 4;
/// Before the name and the data of what a program proves itself with.
constexpr std::size_t greetingSize = 12;

std::string socketOf(int display) {
    return "/tmp/.X11-unix/X" + std::to_string(display);
}

sockaddr_un addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

template <typename Number>
Number numberAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
    Number number = 0;
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

std::size_t padded(std::size_t size) {
    return (size + unit - 1) / unit * unit;
}

/// 0 where its beginning is not complete.
std::size_t sizeOfGreeting(std::span<const std::uint8_t> bytes) {
    return bytes.size() < greetingSize ? 0
                                       : greetingSize + padded(numberAt<std::uint16_t>(bytes, 6)) +
                                             padded(numberAt<std::uint16_t>(bytes, 8));
}

std::size_t sizeOfRequest(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < unit)
        return 0;
    if (const auto units = numberAt<std::uint16_t>(bytes, 2); units > 0)
        return units * unit;
    return bytes.size() < 2 * unit ? 0 : numberAt<std::uint32_t>(bytes, unit) * unit;
}

std::uint32_t subjectOf(std::span<const std::uint8_t> request) {
    return request.size() < 2 * unit ? 0 : numberAt<std::uint32_t>(request, unit);
}

void sendAll(int descriptor, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const auto sent = send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return;
        bytes = bytes.subspan(static_cast<std::size_t>(sent));
    }
}

/// Waits until the other side has read everything, and had the time to do it.
void untilDone(int descriptor) {
    int unread = 1;
    for (int count = 0; count < 1000 && unread > 0; ++count) {
        if (ioctl(descriptor, SIOCOUTQ, &unread) != 0)
            return;
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
}

}  // namespace

RequestTap::RequestTap(const std::string& display)
    : x_(display),
      serversSocket_(socketOf(std::stoi(display.substr(1)))),
      listener_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    listenSomewhere();
}

/// Beyond the numbers that servers choose by themselves.
void RequestTap::listenSomewhere() {
    constexpr int first = 500;
    constexpr int last = 999;
    for (int number = first; number <= last && displayNumber_ == 0; ++number) {
        const auto address = addressOf(socketOf(number));
        if (bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
            displayNumber_ = number;
    }
    listen(listener_, SOMAXCONN);
}

RequestTap::~RequestTap() {
    working_.end();
    for (const auto& link : links_) {
        close(link.program);
        close(link.server);
    }
    close(listener_);
    unlink(socketOf(displayNumber_).c_str());
}

void RequestTap::destroyBefore(xcb_window_t window, int number) {
    const std::lock_guard lock(mutex_);
    window_ = window;
    number_ = number;
    count_ = 0;
}

void RequestTap::note() {
    const std::lock_guard lock(mutex_);
    isNoting_ = true;
    noted_.clear();
}

std::vector<RequestTap::Request> RequestTap::noted() const {
    const std::lock_guard lock(mutex_);
    return noted_;
}

void RequestTap::work() {
    std::vector<pollfd> watched = {{listener_, POLLIN, 0}};
    for (const auto& link : links_) {
        watched.push_back({link.program, POLLIN, 0});
        watched.push_back({link.server, POLLIN, 0});
    }
    constexpr int pause = 20;
    if (poll(watched.data(), watched.size(), pause) <= 0)
        return;
    auto events = watched.begin() + 1;
    std::erase_if(links_, [&](Link& link) {
        const auto ofProgram = (events++)->revents;
        const auto ofServer = (events++)->revents;
        if (carry(link, ofProgram, ofServer))
            return false;
        close(link.program);
        close(link.server);
        return true;
    });
    if (watched.front().revents != 0)
        accept();
}

void RequestTap::accept() {
    const int program = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (program >= 0)
        links_.push_back({program, connectToServer(), {}});
}

int RequestTap::connectToServer() const {
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto address = addressOf(serversSocket_);
    connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return server;
}

bool RequestTap::carry(Link& link, short programEvents, short serverEvents) {
    std::array<std::uint8_t, 65536> bytes{};
    if (programEvents != 0) {
        const auto got = recv(link.program, bytes.data(), bytes.size(), 0);
        if (got <= 0)
            return false;
        link.waiting.insert(link.waiting.end(), bytes.begin(), bytes.begin() + got);
        handOn(link);
    }
    if (serverEvents != 0) {
        const auto got = recv(link.server, bytes.data(), bytes.size(), 0);
        if (got <= 0)
            return false;
        sendAll(link.program, std::span(bytes).first(static_cast<std::size_t>(got)));
    }
    return true;
}

/// What is complete, request by request.
void RequestTap::handOn(Link& link) {
    std::span<const std::uint8_t> rest = link.waiting;
    for (;;) {
        const auto size = link.hasBegun ? sizeOfRequest(rest) : sizeOfGreeting(rest);
        if (size == 0 || size > rest.size())
            break;
        if (std::exchange(link.hasBegun, true))
            look(link, rest.first(size));
        sendAll(link.server, rest.first(size));
        rest = rest.subspan(size);
    }
    link.waiting.erase(link.waiting.begin(), link.waiting.end() - static_cast<std::ptrdiff_t>(rest.size()));
}

void RequestTap::look(Link& link, std::span<const std::uint8_t> request) {
    const std::lock_guard lock(mutex_);
    if (request.front() == XCB_GRAB_SERVER)
        link.grab = ++grabs_;
    if (request.front() == XCB_UNGRAB_SERVER)
        link.grab = 0;
    if (isNoting_)
        noted_.push_back({request.front(), subjectOf(request), link.grab});
    if (link.grab != 0 || !isNamedIn(request) || ++count_ != number_)
        return;
    untilDone(link.server);
    xcb_destroy_window(x_.raw(), window_);
    x_.exists(window_);
}

bool RequestTap::isNamedIn(std::span<const std::uint8_t> request) const {
    if (window_ == XCB_WINDOW_NONE)
        return false;
    for (std::size_t offset = unit; offset + unit <= request.size(); offset += unit) {
        if (numberAt<std::uint32_t>(request, offset) == window_)
            return true;
    }
    return false;
}

}  // namespace velmo::desktop
