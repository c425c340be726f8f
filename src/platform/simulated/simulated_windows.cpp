#include "simulated/simulated_windows.h"

#include <algorithm>

namespace velmo {

std::unique_ptr<Panel> SimulatedWindows::makePanel(const PanelConfiguration& configuration) {
    if (refuses_)
        return nullptr;
    return std::make_unique<SimulatedPanel>(*this, configuration, nextNumber_++);
}

const SimulatedPanel* SimulatedWindows::visiblePanel() const {
    const auto visible = std::find_if(panels_.begin(), panels_.end(),
                                      [](const SimulatedPanel* panel) { return panel->isVisible(); });
    return visible != panels_.end() ? *visible : nullptr;
}

const SimulatedPanel* SimulatedWindows::panelAt(const Point& point) const {
    const auto* panel = visiblePanel();
    return panel != nullptr && panel->frame().contains(point) ? panel : nullptr;
}

std::unique_ptr<Popover> SimulatedWindows::makePopover() {
    if (refuses_)
        return nullptr;
    return std::make_unique<SimulatedPopover>(*this);
}

std::unique_ptr<Window> SimulatedWindows::makeWindow(const View& content) {
    if (refuses_)
        return nullptr;
    return std::make_unique<SimulatedWindow>(*this, content);
}

}  // namespace velmo
