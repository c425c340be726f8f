#pragma once

#include "screens.h"

namespace velmo::macos {

class MacosScreens : public Screens {
public:
    std::vector<Screen> all() const override;
    std::optional<Screen> main() const override;
};

}  // namespace velmo::macos
