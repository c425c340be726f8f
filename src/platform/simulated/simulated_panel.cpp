#include "simulated/simulated_panel.h"

#include "simulated/simulated_windows.h"

namespace velmo {

SimulatedPanel::SimulatedPanel(SimulatedWindows& windows, const PanelConfiguration& configuration,
                               WindowNumber number)
    : windows_(windows), configuration_(configuration), number_(number) {
    windows_.panels_.push_back(this);
}

SimulatedPanel::~SimulatedPanel() {
    std::erase(windows_.panels_, this);
}

void SimulatedPanel::close() {
    isVisible_ = false;
    if (onClose_)
        onClose_();
}

Size SimulatedPanel::fittingSize() const {
    return windows_.fittingSize();
}

}  // namespace velmo
