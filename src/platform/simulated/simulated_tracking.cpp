#include "simulated/simulated_application.h"
#include "simulated/simulated_status_bar.h"

#include <algorithm>

namespace velmo {

struct SimulatedStatusBar::Area {
    const SimulatedStatusItem& item;
    Rect rect;
    TrackingAreaOptions options = 0;
    TrackingAreaOwner* owner = nullptr;
    bool inside = false;
};

/// Owns its area; the list holds it weakly and so forgets it.
class SimulatedStatusBar::AreaToken : public TrackingArea {
public:
    explicit AreaToken(std::shared_ptr<Area> area) : area_(std::move(area)) {}

private:
    std::shared_ptr<Area> area_;
};

std::unique_ptr<TrackingArea> SimulatedStatusBar::addArea(const SimulatedStatusItem& item, const Rect& rect,
                                                          TrackingAreaOptions options,
                                                          TrackingAreaOwner* owner) {
    if (refusesTrackingAreas_)
        return nullptr;
    auto area = std::make_shared<Area>(Area{item, rect, options, owner});
    area->inside = isInside(*area, pointer_);
    std::erase_if(areas_, [](const auto& candidate) { return candidate.expired(); });
    areas_.push_back(area);
    return std::make_unique<AreaToken>(std::move(area));
}

bool SimulatedStatusBar::isInside(const Area& area, const Point& point) {
    layOut();
    const StatusItemSlot& slot = slotOf(area.item);
    if (!isOnScreen(slot))
        return false;
    Rect frame = *slot.frame;
    if ((area.options & tracking::inVisibleRect) == 0)
        frame = {frame.x + area.rect.x, frame.y + area.rect.y, area.rect.width, area.rect.height};
    return frame.contains(point);
}

std::vector<std::pair<TrackingAreaOptions, const SimulatedStatusItem*>> SimulatedStatusBar::trackingAreas()
    const {
    std::vector<std::pair<TrackingAreaOptions, const SimulatedStatusItem*>> areas;
    for (const auto& weak : areas_) {
        if (const auto area = weak.lock())
            areas.emplace_back(area->options, &area->item);
    }
    return areas;
}

void SimulatedStatusBar::pointerMoved(const Point& location, SimulatedApplication& application) {
    pointer_ = location;
    // The program never is the active one.
    constexpr TrackingAreaOptions needed = tracking::mouseEnteredAndExited | tracking::activeAlways;
    for (const bool entering : {false, true}) {
        const auto areas = areas_;
        for (const auto& weak : areas) {
            const auto area = weak.lock();
            if (!area || isInside(*area, location) != entering || area->inside == entering)
                continue;
            area->inside = entering;
            if ((area->options & needed) != needed)
                continue;
            const Event event{entering ? EventType::mouseEntered : EventType::mouseExited};
            application.handle(event, [&] {
                if (entering)
                    area->owner->mouseEnteredWith(event);
                else
                    area->owner->mouseExitedWith(event);
            });
        }
    }
}

}  // namespace velmo
