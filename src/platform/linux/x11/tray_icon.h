#pragma once

#include "lifetime.h"
#include "linux/x11/menu_bar.h"
#include "linux/x11/tray_slot.h"

#include <xcb/damage.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo::x11 {

/// Another program's icon window, embedded in a window of the bar.
class TrayIcon : public BarItem {
public:
    struct Facts {
        xcb_window_t client = XCB_WINDOW_NONE;
        std::uint8_t depth = 0;
        xcb_visualid_t visual = 0;
        /// Names the program, the same at each of its starts.
        std::string application;
        std::optional<std::int32_t> processIdentifier;
        std::optional<std::string> ownerName;
    };

    /// What there is to know of a window that wants to be docked. Absent where it is gone or unfit.
    static std::optional<Facts> examine(const Connection& connection, xcb_window_t client);

    TrayIcon(MenuBar& bar, const Facts& facts, const std::string& identity);
    ~TrayIcon() override;

    xcb_window_t client() const { return facts_.client; }
    /// Called once the program has taken its window away.
    void setOnEnd(std::function<void()> handler) { onEnd_ = std::move(handler); }

    bool isOurs() const override { return false; }
    bool isShown() const override { return wantsToBeShown_ && !ended_; }
    bool hasEnded() const override { return ended_; }
    int preferredWidth() const override { return traySlotWidth(bar_.appearance(), spacing_); }
    void appearanceChanged() override;
    std::optional<Content> content() const override;
    WindowListEntry describe() const override;

protected:
    void resized() override { appearanceChanged(); }
    void moved() override;

private:
    void embed();
    void handle(const xcb_generic_event_t& event);
    void readEmbeddingInfo();
    void readTitle();
    void placeClient();
    void keepSize(const xcb_configure_notify_event_t& change);
    void paint();
    void release() const;
    void end();
    PixelRect clientArea() const { return trayIconArea(bar_.appearance(), spacing_); }

    MenuBar& bar_;
    ItemSpacing spacing_;
    Facts facts_;
    std::optional<std::string> titleText_;
    bool wantsToBeShown_ = true;
    bool ended_ = false;
    /// We draw the icon's content over the bar's background ourselves, since its window has a visual of
    /// another kind, which the server cannot blend.
    bool composited_;
    xcb_damage_damage_t damage_ = 0;
    /// The content has changed since it was painted last.
    bool unpainted_ = false;
    PostedOnce painting_;
    PostedOnce embeddingInfo_;
    PostedOnce title_;
    std::shared_ptr<Timer> sizeCorrection_;
    std::function<void()> onEnd_;
    Registration events_;
    Registration damageEvents_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
