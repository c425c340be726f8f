#include "desktop_session.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

namespace {

/// Another tray, as people have one, that takes turns with Velmo.
class OtherTray : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
        writeDefaults(
            {{"autoRehide", false},
             {"statusItemOrder", {"Velmo.Toggle", "parcellite.Parcellite", "Velmo.Divider", "gxkb.Gxkb"}}});
        startVelmo();
        programs_.push_back(run({"gxkb"}));
        programs_.push_back(run({"parcellite"}));
    }
    /// Under any window of that class, and seen.
    bool isInTray(const std::string& iconClass, const std::string& trayClass) const {
        for (const auto window : x().children(x().root())) {
            const auto tray = x().property(window, "WM_CLASS").find(trayClass) != std::string::npos
                                  ? std::optional(window)
                                  : x().windowOfClass(window, trayClass);
            const auto icon = tray ? x().windowOfClass(*tray, iconClass) : std::nullopt;
            if (icon && x().isViewable(*icon))
                return true;
        }
        return false;
    }
    void expectIconsAtTheirPlaces() const {
        const auto hidden = iconOf("Gxkb");
        const auto visible = iconOf("Parcellite");
        EXPECT_TRUE(eventually([&] { return isHidden(hidden) && isOnScreen(visible); }));
    }

    std::vector<ChildProcess> programs_;
};

TEST_F(OtherTray, TakesTheIconsWhileVelmoIsEndedAndGivesThemBack) {
    expectIconsAtTheirPlaces();
    stopVelmo();
    {
        const auto tray = run({"trayer", "--edge", "bottom"});
        EXPECT_TRUE(
            eventually([&] { return isInTray("Gxkb", "trayer") && isInTray("Parcellite", "trayer"); }));
    }
    startVelmo();
    expectIconsAtTheirPlaces();
}

}  // namespace

}  // namespace velmo::desktop
