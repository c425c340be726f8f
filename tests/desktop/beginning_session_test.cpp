#include "tray_client.h"
#include "window_managers.h"

#include "desktop_session.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace velmo::desktop {

namespace {

/// A session that begins: the window manager and the programs with icons start together.
class BeginningSession : public DesktopSession, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startVelmo();
    }
    bool isInTheBar(xcb_window_t icon) const {
        return x().parent(x().parent(icon)) == bar() && x().isViewable(icon);
    }
    /// Of those that are not in the bar.
    std::string whereabouts(const std::vector<xcb_window_t>& icons) const {
        std::ostringstream text;
        for (const auto icon : icons) {
            if (isInTheBar(icon))
                continue;
            text << icon << (x().isViewable(icon) ? ", seen" : ", not seen");
            for (auto parent = x().parent(icon); parent != XCB_WINDOW_NONE; parent = x().parent(parent))
                text << ", in " << parent << " \"" << x().property(parent, "_NET_WM_NAME") << '"';
            text << '\n';
        }
        return text.str();
    }
    std::ptrdiff_t iconsOf(const std::string& windowClass) const {
        const auto items = x().children(bar());
        return std::count_if(items.begin(), items.end(), [&](auto item) {
            const auto icon = x().windowOfClass(item, windowClass);
            return icon && isInTheBar(*icon);
        });
    }
};

TEST_P(BeginningSession, LosesNoIconToTheWindowManager) {
    TrayClient program(environment_.at("DISPLAY"));
    std::vector<xcb_window_t> icons;
    for (int number = 0; number < 60; ++number)
        icons.push_back(program.makeIcon("icon" + std::to_string(number)));
    const auto manager = run(windowManagerCommand(GetParam()));
    for (const auto icon : icons) {
        program.dock(icon);
        // So that some come while it looks for windows.
        std::this_thread::sleep_for(milliseconds(2));
    }
    const auto areThere = [&] {
        return std::all_of(icons.begin(), icons.end(), [&](auto icon) { return isInTheBar(icon); });
    };
    EXPECT_TRUE(
        eventually([&] { return areThere() && stays(areThere, milliseconds(500)); }, milliseconds(30000)))
        << whereabouts(icons);
}

TEST_P(BeginningSession, LosesNoIconOfRealProgramsToTheWindowManager) {
    constexpr int programCount = 6;
    std::vector<ChildProcess> programs;
    programs.push_back(run(windowManagerCommand(GetParam())));
    programs.push_back(run({"parcellite"}));
    for (int count = 0; count < programCount; ++count) {
        programs.push_back(run({"gxkb"}));
        std::this_thread::sleep_for(milliseconds(50));
    }
    const auto areThere = [&] { return iconsOf("Gxkb") == programCount && iconsOf("Parcellite") == 1; };
    EXPECT_TRUE(
        eventually([&] { return areThere() && stays(areThere, milliseconds(500)); }, milliseconds(30000)))
        << iconsOf("Gxkb") << " and " << iconsOf("Parcellite");
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, BeginningSession, windowManagers,
                         [](const auto& manager) { return manager.param; });

}  // namespace

}  // namespace velmo::desktop
