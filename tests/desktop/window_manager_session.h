#pragma once

#include "desktop_session.h"
#include "window_managers.h"

#include <string>

namespace velmo::desktop {

/// Velmo under each of `windowManagers`.
class WindowManagerSession : public DesktopSession, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override;
    /// The window manager, then Velmo.
    void start(const nlohmann::json& defaults = {{"autoRehide", false}, {"hideOnClickOutside", false}});
    /// Of a window, as `wmctrl` has them: "add,fullscreen".
    void change(xcb_window_t window, const std::string& states) const;
};

}  // namespace velmo::desktop
