#pragma once

#include "linux/dates/time_zone_setting.h"
#include "linux/event_loop/event_loop.h"

#include <functional>

namespace velmo {

/// Tells when the system's time zone has been set to another one. It sleeps until then.
class TimeZoneWatch {
public:
    /// `onChange` is called for every change in the folders of `files` that touches one of them, which may
    /// leave the setting as it was.
    TimeZoneWatch(EventLoop& loop, TimeZoneFiles files, std::function<void()> onChange);
    ~TimeZoneWatch();
    TimeZoneWatch(const TimeZoneWatch&) = delete;
    TimeZoneWatch& operator=(const TimeZoneWatch&) = delete;

private:
    void read() const;

    TimeZoneFiles files_;
    std::function<void()> onChange_;
    int descriptor_;
    Registration source_;
};

}  // namespace velmo
