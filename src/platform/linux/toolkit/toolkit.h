#pragma once

#include "linux/drawing/appearance.h"
#include "linux/event_loop/hosted_loop.h"
#include "linux/toolkit/accessible_bar.h"
#include "linux/toolkit/confirmation.h"
#include "linux/toolkit/exported_menu.h"
#include "linux/toolkit/toolkit_host.h"
#include "menu.h"
#include "window_factory.h"

#include <functional>
#include <string>

namespace velmo {

/// What a person looks at beyond the bar itself. It is loaded when it is needed first, so that a bar at
/// rest stays small.
class Toolkit : public LoopHost, public WindowFactory {
public:
    virtual void setAppearance(const Appearance& appearance) = 0;
    /// Shows the menu with its upper left corner at (x, y), in pixels of the root window, or where it fits
    /// on the screen. Returns once it has closed and the chosen item has been performed; the hosted loop
    /// runs meanwhile.
    virtual void popUp(const Menu& menu, int x, int y) = 0;
    /// The same for another program's menu, which follows its changes while it is open.
    virtual void popUp(ExportedMenu& menu, int x, int y) = 0;
    /// Shows a text below (x, y), in pixels of the root window, until it is hidden or has been read.
    virtual void showToolTip(const std::string& text, int x, int y) = 0;
    /// The same for a text with markup that is known to be harmless.
    virtual void showRichToolTip(const std::string& markup, int x, int y) = 0;
    virtual void hideToolTip() = 0;
    /// Tells assistive programs of the bar. Null once it goes.
    virtual void setAccessibleBar(AccessibleBar* bar) = 0;
    /// Asks the user, and does it where the answer is yes. Returns at once. While a question is open, it
    /// comes to the front instead of another one.
    virtual void confirm(const Confirmation& confirmation, const std::function<void()>& action) = 0;
};

/// The name and type of the function that makes a module's toolkit.
inline constexpr const char* toolkitFunctionName = "velmoMakeToolkit";
using MakeToolkit = Toolkit* (*)(ToolkitHost*);

}  // namespace velmo
