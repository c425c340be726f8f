#pragma once

namespace velmo::macos::doubles {

/// What the calendar of GNUstep lacks, done with what it has.
void addCalendarMethods();

}  // namespace velmo::macos::doubles
