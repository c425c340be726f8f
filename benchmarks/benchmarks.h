#pragma once

#include "report.h"

namespace velmo::desktop {

/// Of items, in what is measured of several.
constexpr int itemCounts[] = {10, 50, 200};

// Each is a name that script/bench knows.

/// From the start of a host until its items are in their places.
void measureStarts(Report& report);
/// At rest, with 10, 50 and 200 items.
void measureMemory(Report& report);
/// Before and after all that a host can open was opened once.
void measureWindows(Report& report);
/// Wakeups while nothing happens, and what a clock that shows minutes costs.
void measureRest(Report& report);
/// The clock alone, for sixty minutes.
void measureHour(Report& report);
/// From the release of the button until all items are shown, or hidden.
void measureReveals(Report& report);
/// The pictures of many icons, asked for at once.
void measureCaptures(Report& report);
/// The panel with the pictures of hidden items, opened for the first time and later.
void measurePanels(Report& report);

}  // namespace velmo::desktop
