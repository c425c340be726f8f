#pragma once

#include "simulated/simulated_panel.h"
#include "simulated/simulated_popover.h"
#include "simulated/simulated_window.h"
#include "window_factory.h"

#include <vector>

namespace velmo {

/// Makes windows that keep what they are told and show nothing.
class SimulatedWindows : public WindowFactory {
public:
    void prepare() override { ++preparations_; }
    std::unique_ptr<Panel> makePanel(const PanelConfiguration& configuration) override;
    std::unique_ptr<Popover> makePopover() override;
    std::unique_ptr<Window> makeWindow(const View& content) override;

    /// How often something was announced.
    int preparations() const { return preparations_; }
    /// The living ones, in the order of their making.
    const std::vector<SimulatedPanel*>& panels() const { return panels_; }
    const std::vector<SimulatedPopover*>& popovers() const { return popovers_; }
    const std::vector<SimulatedWindow*>& windows() const { return windows_; }

    /// Nothing that shows views can be made from now on.
    void setRefuses(bool refuses) { refuses_ = refuses; }
    /// Null where none is visible.
    const SimulatedPanel* visiblePanel() const;
    const SimulatedPanel* panelAt(const Point& point) const;

    /// What every content wants from now on, in points.
    void setFittingSize(const Size& size) { fittingSize_ = size; }
    const Size& fittingSize() const { return fittingSize_; }

private:
    friend class SimulatedPanel;
    friend class SimulatedPopover;
    friend class SimulatedWindow;

    /// Clear of the numbers of other windows.
    static constexpr WindowNumber firstNumber = 900000;

    std::vector<SimulatedPanel*> panels_;
    std::vector<SimulatedPopover*> popovers_;
    std::vector<SimulatedWindow*> windows_;
    Size fittingSize_{100, 36};
    bool refuses_ = false;
    int preparations_ = 0;
    WindowNumber nextNumber_ = firstNumber;
};

}  // namespace velmo
