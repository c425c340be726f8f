#pragma once

#include "panel.h"
#include "popover.h"
#include "window.h"

#include <memory>

namespace velmo {

/// Makes everything that shows views. A result is null where the system cannot show any.
class WindowFactory {
public:
    virtual ~WindowFactory() = default;

    virtual std::unique_ptr<Panel> makePanel(const PanelConfiguration& configuration) = 0;
    virtual std::unique_ptr<Popover> makePopover() = 0;
    /// Fitted to the content.
    virtual std::unique_ptr<Window> makeWindow(const View& content) = 0;
};

}  // namespace velmo
