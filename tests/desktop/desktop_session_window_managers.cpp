// The window managers of a session: how they start, replace each other, and end.

#include "desktop_session.h"
#include "probe_window.h"

#include <fstream>
#include <utility>

namespace velmo::desktop {

namespace {

/// They look for much of what a whole desktop has, on a machine that others use as well.
constexpr milliseconds longestStart(30000);

}  // namespace

xcb_window_t DesktopSession::windowManagersWindow() const {
    const auto check = x().cardinals(x().root(), "_NET_SUPPORTING_WM_CHECK");
    return !check.empty() && x().exists(check.front()) ? check.front() : xcb_window_t{XCB_WINDOW_NONE};
}

void DesktopSession::startWindowManager(const std::vector<std::string>& command) {
    const auto former = windowManagersWindow();
    // It ends with this function: one that was cut off the display may live on, and never sleep.
    const auto replaced = std::exchange(windowManager_, run(command));
    ASSERT_TRUE(eventually(
        [&] {
            const auto latter = windowManagersWindow();
            return latter != XCB_WINDOW_NONE && latter != former;
        },
        longestStart));
    waitUntilWindowsAreManaged();
}

void DesktopSession::waitUntilWindowsAreManaged() const {
    xcb_window_t frame = XCB_WINDOW_NONE;
    {
        const ProbeWindow probe(x());
        EXPECT_TRUE(eventually([&] { return probe.isManaged(); }));
        frame = probe.frame();
    }
    EXPECT_TRUE(eventually([&] { return frame == x().root() || !x().isViewable(frame); }));
}

std::vector<std::string> DesktopSession::windowManagerCommand(const std::string& name) const {
    const auto settings = [this](const std::filesystem::path& file, const std::string& text) {
        std::filesystem::create_directories((home_ / file).parent_path());
        std::ofstream(home_ / file) << text;
        return (home_ / file).string();
    };
    if (name == "i3") {
        // Without a file it would ask for one; without a bar in it, its own would want to be the tray.
        return {"i3", "-c", settings("i3.conf", "# i3 config file (v4)\nbar {\n  i3bar_command true\n}\n")};
    }
    if (name == "xfwm4") {
        settings("config/xfce4/xfconf/xfce-perchannel-xml/xfwm4.xml",
                 "<channel name=\"xfwm4\" version=\"1.0\"><property name=\"general\" type=\"empty\">"
                 "<property name=\"prevent_focus_stealing\" type=\"bool\" value=\"true\"/>"
                 "</property></channel>\n");
        // Its settings come by way of a session bus.
        return {"dbus-run-session", "--", "xfwm4", "--compositor=off"};
    }
    if (name == "fluxbox") {
        // Where it lacks a program that draws the background, it would show a window that says so.
        const auto style = settings(".fluxbox/overlay", "background: none\n");
        return {"fluxbox", "-rc",
                settings(".fluxbox/init",
                         "session.screen0.toolbar.visible: false\n"
                         "session.screen0.toolbar.tools: workspacename\n"
                         "session.styleOverlay: " +
                             style + "\n")};
    }
    if (name == "icewm")
        settings(".icewm/preferences", "ShowTaskBar=0\n");
    return {name};
}

void DesktopSession::startWindowManagerNamed(const std::string& name) {
    startWindowManager(windowManagerCommand(name));
}

void DesktopSession::replaceWindowManager(const std::string& former, const std::string& latter) {
    auto command = windowManagerCommand(latter);
    if (former == "fluxbox" || latter == "fluxbox") {
        // It knows nothing of being replaced.
        crashWindowManager();
    } else {
        command.emplace_back("--replace");
    }
    startWindowManager(command);
}

void DesktopSession::crashWindowManager() const {
    const auto window = windowManagersWindow();
    xcb_kill_client(x().raw(), window);
    ASSERT_TRUE(eventually([&] { return !x().exists(window); }));
}

}  // namespace velmo::desktop
