#include "model/observation.h"

#include "model/reveal_table.h"

#include <sstream>

namespace velmo {

std::string describeClick(EventType type, const Point& place) {
    std::ostringstream out;
    out << static_cast<std::uint32_t>(type) << " at " << place.x << ", " << place.y << "; ";
    return out.str();
}

std::string describeHeldKey(std::string_view signature, std::uint32_t id, std::uint32_t keyCode,
                            std::uint32_t modifiers, std::uint32_t options) {
    std::string text(signature);
    for (const std::uint32_t number : {id, keyCode, modifiers, options})
        text += ' ' + std::to_string(number);
    return text + "; ";
}

std::string describe(const Observation& observation) {
    const Observation& o = observation;
    std::ostringstream out;
    out << std::boolalpha << "level " << nameOf(o.level) << "; lengths: toggle " << o.toggleLength
        << ", divider " << o.hiddenDividerLength << ", always-hidden divider " << o.alwaysHiddenDividerLength
        << "; enabled: divider " << o.hiddenDividerEnabled << ", always-hidden divider "
        << o.alwaysHiddenDividerEnabled << "; always-hidden divider visible " << o.alwaysHiddenDividerVisible
        << "; images: toggle \"" << o.toggleImage << "\", divider \"" << o.hiddenDividerImage
        << "\", always-hidden divider \"" << o.alwaysHiddenDividerImage << "\"; clock " << o.clock
        << "; hover tracked " << o.hoverTracked << "; pointer in menu bar " << o.pointerInMenuBar
        << "; panel ";
    if (o.panel)
        out << "at " << o.panel->x << ", " << o.panel->y;
    else
        out << "-";
    out << "; knows " << o.snapshot << "; posted " << o.posted << "; timers " << o.timers << ", next in ";
    if (o.nanosecondsToNextTimer)
        out << *o.nanosecondsToNextTimer << " ns";
    else
        out << "-";
    out << "; posts " << o.clicks << "; prompts " << o.prompts << "; holds " << o.heldKeys
        << "; account: " << o.account << "; reached " << o.reached;
    return out.str();
}

}  // namespace velmo
