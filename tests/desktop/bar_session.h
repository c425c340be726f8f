#pragma once

#include "counted_text_renderer.h"
#include "desktop_session.h"

#include "linux/defaults/file_global_preferences.h"
#include "linux/event_loop/event_loop.h"
#include "linux/local_events.h"
#include "linux/toolkit/lazy_toolkit.h"
#include "linux/x11/menu_bar.h"
#include "linux/x11/notifier_tray.h"
#include "linux/x11/tray_host.h"

#include <memory>
#include <optional>

namespace velmo::desktop {

/// A display with a menu bar in the test's own process, without the core: its services can be asked directly.
/// The loop runs only while the test waits for something.
class BarSession : public DesktopSession {
protected:
    void TearDown() override;

    /// On the server that was started before. `order` has the identities of items from right to left.
    void startBar(const std::vector<std::string>& order = {});
    /// Ends its connection, too.
    void stopBar();
    /// Lets items on a session bus of the test's own into the bar.
    void startNotifierTray();
    FileGlobalPreferences& globalPreferences();
    /// Runs the loop until the condition holds; false where it does not within the limit.
    bool turnUntil(const std::function<bool()>& condition, milliseconds limit = milliseconds(8000));

    /// A window of the test's own, as a program makes it for its icon: 20 x 20 pixels, of `depth` bits, with
    /// a background of these pixels (0xAARRGGBB, 20 a row).
    xcb_window_t makeIcon(std::uint8_t depth, const std::vector<std::uint32_t>& pixels) const;
    /// Hands the window to the tray and waits until it is in the bar.
    void dock(xcb_window_t window);
    /// A window of the test's own that lies over the bar, and hears of presses.
    xcb_window_t coverBar() const;
    /// In pixels of the root window.
    Area areaOnScreen(const x11::BarItem& item) const;
    const x11::BarItem* itemOf(xcb_window_t window) const;

    static constexpr int iconSide = 20;

    EventLoop loop_;
    CurrentEvent currentEvent_;
    LocalEvents localEvents_{currentEvent_};
    LazyToolkit toolkit_{loop_};
    CountedTextRenderer text_;
    std::optional<FileGlobalPreferences> globalPreferences_;
    std::unique_ptr<x11::Connection> connection_;
    std::unique_ptr<x11::DesktopSettings> settings_;
    std::unique_ptr<x11::ScreenList> screens_;
    std::unique_ptr<x11::Modifiers> modifiers_;
    std::unique_ptr<x11::MenuBar> bar_;
    std::unique_ptr<x11::TrayHost> tray_;
    std::unique_ptr<x11::NotifierTray> notifierTray_;
};

}  // namespace velmo::desktop
