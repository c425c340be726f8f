#pragma once

#include "ns_control.h"

namespace velmo::macos {

class NSSlider : public ClassOf<NSSlider, "NSSlider", NSControl> {
public:
    static NSSlider create() { return make<"initWithFrame:">(CGRect{}); }

    void setMinValue(double value) const { send<void, "setMinValue:">(value); }
    void setMaxValue(double value) const { send<void, "setMaxValue:">(value); }
};

}  // namespace velmo::macos
