#pragma once

#include "status_bar.h"

namespace velmo::macos {

class MacosStatusBar : public StatusBar {
public:
    std::unique_ptr<StatusItem> makeStatusItem(double length) override;
    double thickness() const override;
};

}  // namespace velmo::macos
