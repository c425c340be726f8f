#pragma once

#include "macos/foundation/ns_string.h"

namespace velmo::macos {

class CALayer : public ClassOf<CALayer, "CALayer", NSObject> {
public:
    void setCornerRadius(CGFloat radius) const { send<void, "setCornerRadius:">(radius); }
    void setMasksToBounds(bool masks) const { send<void, "setMasksToBounds:">(masks); }
};

}  // namespace velmo::macos
