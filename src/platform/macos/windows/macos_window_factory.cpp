#include "macos_window_factory.h"

#include "macos_panel.h"
#include "macos_popover.h"
#include "macos_window.h"

namespace velmo::macos {

std::unique_ptr<Panel> MacosWindowFactory::makePanel(const PanelConfiguration& configuration) {
    return std::make_unique<MacosPanel>(loop_, configuration);
}

std::unique_ptr<Popover> MacosWindowFactory::makePopover() {
    return std::make_unique<MacosPopover>(loop_);
}

std::unique_ptr<Window> MacosWindowFactory::makeWindow(const View& content) {
    return std::make_unique<MacosWindow>(loop_, content);
}

}  // namespace velmo::macos
