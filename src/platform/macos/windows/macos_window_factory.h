#pragma once

#include "window_factory.h"

namespace velmo::macos {

/// Views are not rendered yet: there are no panels, popovers and windows, and the core goes without.
class MacosWindowFactory : public WindowFactory {
public:
    std::unique_ptr<Panel> makePanel(const PanelConfiguration& /*configuration*/) override { return nullptr; }
    std::unique_ptr<Popover> makePopover() override { return nullptr; }
    std::unique_ptr<Window> makeWindow(const View& /*content*/) override { return nullptr; }
};

}  // namespace velmo::macos
