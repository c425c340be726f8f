#pragma once

#include "panel_window_session.h"
#include "tray_client.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace velmo::desktop {

/// A display whose menu bar has icons of the test's own, which have names and are there at once.
class IconsSession : public PanelWindowSession {
protected:
    using Names = std::vector<std::string>;
    struct Placed {
        /// Of an icon; of our own items what follows the dot in their titles.
        std::string name;
        Area area;

        bool operator==(const Placed&) const = default;
    };

    /// What may still be under way when a test looks.
    static constexpr milliseconds moment{300};

    void TearDown() override;

    /// Docks an icon and waits until it is in the bar, right of the divider as every new one.
    xcb_window_t dockIcon(const std::string& name);
    void dockIcons(const Names& names);
    /// Its program ends.
    void endIcon(const std::string& name) { icons_.erase(name); }
    xcb_window_t icon(const std::string& name) const;
    /// By a drag: directly left of the divider, which is expanded.
    void hideIcon(const std::string& name);

    /// All items, from right to left.
    std::vector<Placed> items() const;
    Names names() const;
    Area areaOf(const std::string& name) const;
    /// True where the items lie side by side from the right end of a bar at the top of the monitor.
    bool areLaidOut(const Area& monitor, double scale = 1) const;
    /// True where nothing of the item is on the root window, or below the bar's left end.
    bool isUnseen(const std::string& name) const;

    /// Presses the middle of an item with Super held.
    void take(const std::string& name) const;
    /// Begins to drag it: its middle is `by` pixels farther right then.
    void drag(const std::string& name, int by) const;
    void moveTo(int pixelX, int pixelY = barMiddle) const;
    void release() const;

    /// One of ours, below the bar.
    bool menuIsOpen() const;

    /// Of the test's own icons, and of nothing else on the screen.
    static constexpr std::uint32_t iconColor = 0x2060c0;
    static constexpr int barThickness = 26;
    static constexpr int barMiddle = barThickness / 2;

private:
    struct Icon {
        std::unique_ptr<TrayClient> program;
        xcb_window_t window = XCB_WINDOW_NONE;
    };

    std::string nameOf(xcb_window_t item) const;

    std::map<std::string, Icon> icons_;
};

}  // namespace velmo::desktop
