#include "window_manager_session.h"

namespace velmo::desktop {

void WindowManagerSession::SetUp() {
    DesktopSession::SetUp();
    startServer();
}

void WindowManagerSession::start(const nlohmann::json& defaults) {
    startWindowManagerNamed(GetParam());
    writeDefaults(defaults);
    startVelmo();
}

void WindowManagerSession::change(xcb_window_t window, const std::string& states) const {
    outputOf({"wmctrl", "-i", "-r", std::to_string(window), "-b", states}, environment_);
}

}  // namespace velmo::desktop
