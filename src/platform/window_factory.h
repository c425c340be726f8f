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

    /// One of these is likely to be wanted soon: what takes a while for the first one may be done before, in
    /// later turns of the loop. Harmless any number of times.
    virtual void prepare() {}
    virtual std::unique_ptr<Panel> makePanel(const PanelConfiguration& configuration) = 0;
    virtual std::unique_ptr<Popover> makePopover() = 0;
    /// Fitted to the content.
    virtual std::unique_ptr<Window> makeWindow(const View& content) = 0;
};

}  // namespace velmo
