#pragma once

#include "platform.h"
#include "simulated/simulated_accessibility.h"
#include "simulated/simulated_application.h"
#include "simulated/simulated_dates.h"
#include "simulated/simulated_event_poster.h"
#include "simulated/simulated_events.h"
#include "simulated/simulated_global_preferences.h"
#include "simulated/simulated_hot_key_service.h"
#include "simulated/simulated_login_service.h"
#include "simulated/simulated_menus.h"
#include "simulated/simulated_process_info.h"
#include "simulated/simulated_run_loop.h"
#include "simulated/simulated_screen_capture.h"
#include "simulated/simulated_screens.h"
#include "simulated/simulated_session.h"
#include "simulated/simulated_status_bar.h"
#include "simulated/simulated_user_defaults.h"
#include "simulated/simulated_window_server.h"
#include "simulated/simulated_windows.h"
#include "simulated/simulated_workspace.h"

#include <array>

namespace velmo {

enum class MouseButton { left, right };

/// A whole desktop in memory. The core runs on `platform()`; whoever drives the simulation sets the parts up,
/// does what a user does, and lets the time pass. The desktop outlives the programs that run on it, so that
/// one can be ended and started again.
///
/// User actions are dispatched at once. What they post is run by `runLoop().advance()` and its kin.
class SimulatedDesktop {
public:
    SimulatedDesktop() = default;
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;

    Platform platform();

    SimulatedApplication& application() { return application_; }
    SimulatedRunLoop& runLoop() { return runLoop_; }
    SimulatedUserDefaults& userDefaults() { return userDefaults_; }
    SimulatedProcessInfo& processInfo() { return processInfo_; }
    SimulatedScreens& screens() { return screens_; }
    SimulatedEvents& events() { return events_; }
    SimulatedStatusBar& statusBar() { return statusBar_; }
    SimulatedWindowServer& windowServer() { return windowServer_; }
    SimulatedHotKeyService& hotKeys() { return hotKeys_; }
    SimulatedScreenCapture& screenCapture() { return screenCapture_; }
    SimulatedAccessibility& accessibility() { return accessibility_; }
    SimulatedEventPoster& eventPoster() { return eventPoster_; }
    SimulatedWindows& windows() { return windows_; }
    SimulatedWorkspace& workspace() { return workspace_; }
    SimulatedDates& dates() { return dates_; }
    SimulatedLoginService& loginService() { return loginService_; }
    SimulatedGlobalPreferences& globalPreferences() { return globalPreferences_; }
    SimulatedSession& session() { return session_; }
    SimulatedMenus& menus() { return menus_; }

    /// Shorthand for `runLoop().advance()`.
    void advance(Seconds seconds) { runLoop_.advance(seconds); }

    /// Moves the pointer (points, origin at the bottom left of the primary screen) and tells the tracking
    /// areas that it enters or leaves.
    void movePointer(const Point& location);

    /// These act on one of the program's own items wherever the pointer is. False where the item cannot be
    /// reached: there is none, it is invisible, or wholly off the screens.
    bool press(std::string_view autosaveName, MouseButton button = MouseButton::left,
               ModifierFlags flags = 0);
    bool release(std::string_view autosaveName, MouseButton button = MouseButton::left,
                 ModifierFlags flags = 0);
    bool click(std::string_view autosaveName, MouseButton button = MouseButton::left,
               ModifierFlags flags = 0);

    /// These act where the pointer is: on the own item or the panel under it, or else on another application,
    /// where the global monitors see it.
    void pressAtPointer(MouseButton button = MouseButton::left, ModifierFlags flags = 0);
    void releaseAtPointer(MouseButton button = MouseButton::left, ModifierFlags flags = 0);
    void clickAtPointer(MouseButton button = MouseButton::left, ModifierFlags flags = 0);
    /// Presses a key while no own window has the keyboard. False where a monitor swallowed it: it then
    /// reaches no other application either.
    bool pressKey(std::uint16_t keyCode);
    /// Deltas in points.
    void scrollAtPointer(double deltaX, double deltaY);

private:
    SimulatedStatusItem* reachableItem(std::string_view autosaveName);
    void pressItem(SimulatedStatusItem& item, MouseButton button, ModifierFlags flags);
    void releaseItem(SimulatedStatusItem* item, MouseButton button, ModifierFlags flags);
    /// The last press of a mouse button that is held down on an own item.
    struct Press {
        /// 0: not on an own item.
        WindowNumber window = 0;
        std::int64_t number = 0;
    };
    Press& pressOf(MouseButton button) { return presses_[button == MouseButton::left ? 0 : 1]; }

    SimulatedRunLoop runLoop_;
    SimulatedApplication application_;
    SimulatedUserDefaults userDefaults_;
    SimulatedProcessInfo processInfo_;
    SimulatedScreens screens_;
    SimulatedEvents events_{application_};
    SimulatedMenus menus_;
    SimulatedStatusBar statusBar_{screens_, menus_};
    SimulatedWindowServer windowServer_{statusBar_, screens_, processInfo_};
    SimulatedHotKeyService hotKeys_;
    SimulatedScreenCapture screenCapture_{runLoop_};
    SimulatedAccessibility accessibility_;
    SimulatedEventPoster eventPoster_{runLoop_};
    SimulatedWindows windows_;
    SimulatedWorkspace workspace_;
    SimulatedDates dates_;
    SimulatedLoginService loginService_;
    SimulatedGlobalPreferences globalPreferences_;
    SimulatedSession session_;
    std::array<Press, 2> presses_{};
    std::int64_t pressCount_ = 0;
};

}  // namespace velmo
