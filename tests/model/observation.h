#pragma once

#include "menubar/reveal_level.h"
#include "platform/event.h"
#include "platform/geometry.h"

#include <cstdint>
#include <optional>
#include <string>

namespace velmo {

/// All that can be seen of the menu bar between two steps.
struct Observation {
    RevealLevel level = RevealLevel::none;
    double toggleLength = 0;
    double hiddenDividerLength = 0;
    double alwaysHiddenDividerLength = 0;
    bool hiddenDividerEnabled = false;
    bool alwaysHiddenDividerEnabled = false;
    bool alwaysHiddenDividerVisible = false;
    /// Names of what is shown, empty for nothing.
    std::string toggleImage;
    std::string hiddenDividerImage;
    std::string alwaysHiddenDividerImage;
    /// Whether the clock is on, and its calendar open.
    std::string clock;
    bool hoverTracked = false;
    bool pointerInMenuBar = false;
    /// The lower left corner of the panel. Absent while it is not shown.
    std::optional<Point> panel;
    /// Names of the items that are known to be hidden, to be always hidden, and of those with a picture.
    std::string snapshot;
    std::size_t posted = 0;
    /// Pending re-hides, hides after a click outside, reveals by hover, ticks, waits of tasks, queries and
    /// pictures.
    std::size_t timers = 0;
    std::optional<std::int64_t> nanosecondsToNextTimer;
    /// The events that were posted on the user's behalf since the last look.
    std::string clicks;
    /// How often the user was asked for consent to them.
    int prompts = 0;
    /// The hot keys that are registered.
    std::string heldKeys;
    /// What the program asked of others meanwhile.
    std::string account;
    /// Whether the step found what it was to act on.
    bool reached = true;

    bool operator==(const Observation&) const = default;
};

std::string describeClick(EventType type, const Point& place);
std::string describeHeldKey(std::string_view signature, std::uint32_t id, std::uint32_t keyCode,
                            std::uint32_t modifiers, std::uint32_t options);
std::string describe(const Observation& observation);

}  // namespace velmo
