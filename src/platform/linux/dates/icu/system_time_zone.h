#pragma once

#include "linux/dates/time_zone_setting.h"

#include <unicode/timezone.h>

#include <memory>

namespace velmo {

/// The time zone that a system is set to. What the system's own time zone database says counts: it is newer
/// than ICU's wherever they differ, for governments change their clocks more often than libraries are
/// replaced. UTC where the setting says nothing.
std::unique_ptr<icu::TimeZone> makeTimeZone(const TimeZoneSetting& setting);

}  // namespace velmo
