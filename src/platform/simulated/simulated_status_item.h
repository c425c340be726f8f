#pragma once

#include "simulated/simulated_status_bar_button.h"

#include <cstdint>

namespace velmo {

class SimulatedStatusItem : public StatusItem {
public:
    SimulatedStatusItem(SimulatedStatusBar& statusBar, double length, bool hasButton);
    SimulatedStatusItem(const SimulatedStatusItem&) = delete;
    SimulatedStatusItem& operator=(const SimulatedStatusItem&) = delete;
    ~SimulatedStatusItem() override;

    double length() const override { return length_; }
    void setLength(double length) override;
    void setAutosaveName(const std::string& name) override;
    bool isVisible() const override { return visible_; }
    void setVisible(bool visible) override;
    SimulatedStatusBarButton* button() override { return button_.get(); }

    const SimulatedStatusBarButton* button() const { return button_.get(); }
    const std::string& autosaveName() const { return autosaveName_; }
    /// The room that the item takes: its length, or what its content needs. Points.
    double width() const;

private:
    SimulatedStatusBar& statusBar_;
    double length_;
    bool visible_ = true;
    std::string autosaveName_;
    std::unique_ptr<SimulatedStatusBarButton> button_;
};

}  // namespace velmo
