#include "simulated/simulated_windows.h"

namespace velmo {

std::unique_ptr<Panel> SimulatedWindows::makePanel(const PanelConfiguration& configuration) {
    if (refuses_)
        return nullptr;
    return std::make_unique<SimulatedPanel>(*this, configuration, nextNumber_++);
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
