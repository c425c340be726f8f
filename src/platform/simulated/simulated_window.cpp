#include "simulated/simulated_window.h"

#include "simulated/simulated_windows.h"

#include <utility>

namespace velmo {

SimulatedWindow::SimulatedWindow(SimulatedWindows& windows, View content)
    : windows_(windows), content_(std::move(content)) {
    windows_.windows_.push_back(this);
}

SimulatedWindow::~SimulatedWindow() {
    std::erase(windows_.windows_, this);
}

void SimulatedWindow::close() {
    if (!std::exchange(isVisible_, false))
        return;
    if (const auto handler = onClose_)
        handler();
}

}  // namespace velmo
