#pragma once

#include "status_bar.h"

namespace velmo::macos {

class MacosStatusBar : public StatusBar {
public:
    std::unique_ptr<StatusItem> makeStatusItem(double length) override;
    double thickness() const override;
    /// Always: what is at the top of a screen is the bar or, where it hides itself, the place it comes to.
    bool isOn(const Screen& /*screen*/) const override { return true; }
};

}  // namespace velmo::macos
