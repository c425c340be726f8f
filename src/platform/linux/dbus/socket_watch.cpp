#include "socket_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <utility>

namespace velmo::dbus {

namespace {

/// Empty where the address, of one alternative, names none. Bytes may be written as %XX.
std::filesystem::path socketFile(const std::string& address) {
    constexpr const char* prefix = "unix:path=";
    if (!address.starts_with(prefix))
        return {};
    const std::string value = address.substr(std::string(prefix).size());
    std::string file;
    for (std::size_t place = 0; place < value.size() && value[place] != ',' && value[place] != ';'; ++place) {
        if (value[place] == '%' && place + 2 < value.size()) {
            file.push_back(static_cast<char>(std::strtol(value.substr(place + 1, 2).c_str(), nullptr, 16)));
            place += 2;
        } else {
            file.push_back(value[place]);
        }
    }
    return file;
}

}  // namespace

std::unique_ptr<SocketWatch> SocketWatch::start(EventLoop& loop, const std::string& address,
                                                std::function<void()> onChange) {
    const auto file = socketFile(address);
    if (!file.is_absolute())
        return nullptr;
    const int descriptor = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    if (inotify_add_watch(descriptor, file.parent_path().c_str(),
                          IN_CREATE | IN_MOVED_TO | IN_MOVE_SELF | IN_ONLYDIR) < 0) {
        close(descriptor);
        return nullptr;
    }
    return std::unique_ptr<SocketWatch>(
        new SocketWatch(loop, descriptor, file.filename(), std::move(onChange)));
}

SocketWatch::SocketWatch(EventLoop& loop, int descriptor, std::string name, std::function<void()> onChange)
    : descriptor_(descriptor),
      name_(std::move(name)),
      onChange_(std::move(onChange)),
      source_(loop.addSource(descriptor, [this] { read(); })) {}

SocketWatch::~SocketWatch() {
    source_ = {};
    close(descriptor_);
}

void SocketWatch::read() {
    alignas(inotify_event) std::array<char, 4096> buffer{};
    bool hasChanged = false;
    for (ssize_t size = 0; (size = ::read(descriptor_, buffer.data(), buffer.size())) > 0;) {
        for (ssize_t place = 0; place < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + place);
            hasChanged = hasChanged || (event->mask & (IN_IGNORED | IN_MOVE_SELF)) != 0 ||
                         (event->len > 0 && name_ == event->name);
            place += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
    // A copy, because the handler may end this watch.
    if (const auto handler = onChange_; hasChanged)
        handler();
}

}  // namespace velmo::dbus
