#pragma once

#include "model/menu_plan.h"
#include "model/own_item.h"
#include "model/trigger.h"
#include "platform/event.h"

#include <string>

namespace velmo {

/// One step of the walk: the trigger, and those of the other fields that it has a use for.
struct Step {
    Trigger trigger = Trigger::advance;
    OwnItem item = OwnItem::toggle;
    bool rightButton = false;
    EventType eventType = EventType::leftMouseUp;
    ModifierFlags flags = 0;
    /// A place in points, scrolling deltas, or in `x` alone a number of points or seconds, or
    /// a status.
    double x = 0;
    double y = 0;
    std::int64_t nanoseconds = 0;
    bool on = false;
    /// Which of several: screens, menus, styles, actions, shortcuts, entries of the panel.
    std::size_t choice = 0;
    MenuPlan menu;
};

std::string describe(const Step& step);

}  // namespace velmo
