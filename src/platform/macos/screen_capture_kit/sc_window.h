#pragma once

#include "macos/foundation/ns_object.h"

#include <cstdint>

namespace velmo::macos {

class SCWindow : public ClassOf<SCWindow, "SCWindow", NSObject> {
public:
    std::uint32_t windowID() const { return send<std::uint32_t, "windowID">(); }
};

}  // namespace velmo::macos
