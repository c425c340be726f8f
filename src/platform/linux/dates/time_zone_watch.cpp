#include "time_zone_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <string_view>
#include <utility>

namespace velmo {

namespace {

/// The folder, because the entry itself is replaced.
void watchFolderOf(int descriptor, const std::filesystem::path& file) {
    inotify_add_watch(descriptor, file.parent_path().c_str(),
                      IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ONLYDIR);
}

}  // namespace

TimeZoneWatch::TimeZoneWatch(EventLoop& loop, TimeZoneFiles files, std::function<void()> onChange)
    : files_(std::move(files)),
      onChange_(std::move(onChange)),
      descriptor_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    // Where the system has no watches left, the zone is the one of the start.
    if (descriptor_ < 0)
        return;
    watchFolderOf(descriptor_, files_.localTime);
    watchFolderOf(descriptor_, files_.zoneName);
    source_ = loop.addSource(descriptor_, [this] { read(); });
}

TimeZoneWatch::~TimeZoneWatch() {
    source_ = {};
    if (descriptor_ >= 0)
        close(descriptor_);
}

void TimeZoneWatch::read() const {
    const auto localTime = files_.localTime.filename();
    const auto zoneName = files_.zoneName.filename();
    bool concernsUs = false;
    alignas(inotify_event) std::array<char, 4096> buffer{};
    for (ssize_t size = 0; (size = ::read(descriptor_, buffer.data(), buffer.size())) > 0;) {
        std::string_view rest(buffer.data(), static_cast<std::size_t>(size));
        while (rest.size() >= sizeof(inotify_event)) {
            inotify_event event{};
            std::memcpy(&event, rest.data(), sizeof event);
            const char* name = event.len > 0 ? rest.data() + sizeof event : "";
            concernsUs |= (event.mask & IN_Q_OVERFLOW) != 0 || localTime == name || zoneName == name;
            rest.remove_prefix(sizeof event + event.len);
        }
    }
    if (!concernsUs)
        return;
    // It may end us.
    const auto onChange = onChange_;
    onChange();
}

}  // namespace velmo
