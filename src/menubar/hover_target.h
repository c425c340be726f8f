#pragma once

#include "platform/tracking_area.h"

#include <functional>

namespace velmo {

/// Owner of the toggle's tracking area.
class HoverTarget : public TrackingAreaOwner {
public:
    std::function<void()> onEnter;
    std::function<void()> onExit;

    void mouseEnteredWith(const Event& event) override;
    void mouseExitedWith(const Event& event) override;
};

}  // namespace velmo
