#pragma once

#include "icons_session.h"
#include "screen_mode.h"

#include <string>
#include <vector>

namespace velmo::desktop {

/// A root window large enough for several monitors, and a bar with two icons that are shown and two that are
/// hidden.
class ScreensSession : public IconsSession {
protected:
    struct Monitor {
        std::string name;
        Area area;
    };

    void SetUp() override {
        IconsSession::SetUp();
        startServer("2560x1440x24");
        startWindowManager();
    }

    /// The first one is the primary one.
    void setMonitors(const std::vector<Monitor>& monitors) const {
        for (const auto& monitor : monitors)
            setMonitor(monitor, monitor.name == monitors.front().name);
    }
    /// One that is there already goes and comes anew.
    void setMonitor(const Monitor& monitor, bool isPrimary) const {
        remove(monitor);
        addMonitor((isPrimary ? "*" : "") + monitor.name, monitor.area,
                   monitor.name == withOutput ? "screen" : "none");
    }
    void makePrimary(const Monitor& monitor) const { setMonitor(monitor, true); }
    void remove(const Monitor& monitor) const { removeMonitor(monitor.name); }

    /// Another resolution of the one monitor that there is.
    void setMode(int width, int height) const {
        requestScreenMode(width, height, environment_);
        ASSERT_TRUE(eventually([&] { return x().area(x().root())->width == width; }));
    }

    void start(const nlohmann::json& defaults = nlohmann::json::object()) {
        nlohmann::json complete = defaults;
        complete.emplace("autoRehide", false);
        writeDefaults(complete);
        startVelmo();
        dockIcons({"one", "two", "three", "four"});
        hideIcon("four");
        hideIcon("three");
        before_ = names();
        ASSERT_EQ(before_, (Names{"Toggle", "one", "two", "Divider", "three", "four"}));
        // Neither the toggle's tooltip nor a hover is wanted.
        moveTo(x().area(bar())->x + 300, x().area(bar())->y + 400);
    }
    void startRevealed(const nlohmann::json& defaults = nlohmann::json::object()) {
        start(defaults);
        reveal();
    }
    void reveal() const {
        click(toggle());
        ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
        moveTo(x().area(bar())->x + 300, x().area(bar())->y + 400);
    }

    bool iconsAreSeenOnlyOn(const Area& monitor) const {
        const auto root = *x().area(x().root());
        const auto pixels = x().pixels(root);
        for (std::size_t place = 0; place < pixels.size(); ++place) {
            const int pixelX = static_cast<int>(place) % root.width;
            const int pixelY = static_cast<int>(place) / root.width;
            const bool isInside = pixelX >= monitor.x && pixelX < monitor.x + monitor.width &&
                                  pixelY >= monitor.y && pixelY < monitor.y + monitor.height;
            if (pixels[place] == iconColor && !isInside)
                return false;
        }
        return true;
    }
    /// Left, right, top, bottom, then begin and end along each of them.
    std::vector<std::uint32_t> strut() const {
        for (const auto window : windowsBelow(x().root())) {
            if (x().property(window, "_NET_WM_NAME") == "Velmo menu bar space")
                return x().cardinals(window, "_NET_WM_STRUT_PARTIAL");
        }
        return {};
    }
    std::vector<xcb_window_t> windowsBelow(xcb_window_t window) const {
        auto found = x().children(window);
        for (const auto child : std::vector(found)) {
            const auto grandchildren = x().children(child);
            found.insert(found.end(), grandchildren.begin(), grandchildren.end());
        }
        return found;
    }
    static std::vector<std::uint32_t> strutOf(const Area& monitor, bool isAtTheTop = true) {
        const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
        std::vector<std::uint32_t> strut(12);
        if (isAtTheTop) {
            strut[2] = number(monitor.y + barThickness);
            strut[8] = number(monitor.x);
            strut[9] = number(monitor.x + monitor.width - 1);
        }
        return strut;
    }
    void expectBarOn(const Area& monitor, bool isAtTheTop = true) const {
        EXPECT_TRUE(eventually([&] { return areLaidOut(monitor); })) << testing::PrintToString(names());
        EXPECT_EQ(names(), before_);
        EXPECT_TRUE(isInside(areaOf("Toggle"), monitor));
        EXPECT_TRUE(isInside(areaOf("one"), monitor));
        const bool isRevealed = !dividerIsExpanded();
        for (const char* name : {"three", "four"}) {
            EXPECT_EQ(isInside(areaOf(name), monitor), isRevealed) << name;
            EXPECT_EQ(isUnseen(name), !isRevealed) << name;
        }
        EXPECT_TRUE(iconsAreSeenOnlyOn(monitor));
        EXPECT_EQ(strut(), strutOf(monitor, isAtTheTop));
    }
    static bool isInside(const Area& area, const Area& monitor) {
        return area.x >= monitor.x && area.y >= monitor.y &&
               area.x + area.width <= monitor.x + monitor.width &&
               area.y + area.height <= monitor.y + monitor.height;
    }

    const std::string withOutput = "left";
    const Monitor left{"left", {0, 0, 1280, 720}};
    const Monitor right{"right", {1280, 0, 1280, 1000}};
    const Monitor below{"below", {0, 720, 1000, 700}};
    Names before_;
};

}  // namespace velmo::desktop
