#include "macos_desktop.h"

#include "desktop/macos_application.h"
#include "desktop/macos_events.h"
#include "desktop/macos_screens.h"
#include "desktop/macos_status_bar.h"
#include "objc/autorelease_pool.h"
#include "services/macos_accessibility.h"
#include "services/macos_dates.h"
#include "services/macos_event_poster.h"
#include "services/macos_global_preferences.h"
#include "services/macos_hot_key_service.h"
#include "services/macos_login_service.h"
#include "services/macos_process_info.h"
#include "services/macos_run_loop.h"
#include "services/macos_screen_capture.h"
#include "services/macos_session.h"
#include "services/macos_user_defaults.h"
#include "services/macos_window_server.h"
#include "services/macos_workspace.h"
#include "windows/macos_window_factory.h"

namespace velmo {

struct MacosDesktop::Services {
    /// For what is made before the application runs.
    macos::AutoreleasePool pool;
    macos::MacosApplication application;
    macos::MacosRunLoop runLoop;
    macos::MacosUserDefaults userDefaults;
    macos::MacosProcessInfo processInfo;
    macos::MacosStatusBar statusBar;
    macos::MacosScreens screens;
    macos::MacosEvents events;
    macos::MacosWindowServer windowServer;
    macos::MacosHotKeyService hotKeys;
    macos::MacosScreenCapture screenCapture;
    macos::MacosAccessibility accessibility;
    macos::MacosEventPoster eventPoster;
    macos::MacosWindowFactory windows{runLoop};
    macos::MacosWorkspace workspace;
    macos::MacosDates dates;
    macos::MacosLoginService loginService;
    macos::MacosGlobalPreferences globalPreferences;
    macos::MacosSession session;
};

MacosDesktop::MacosDesktop() : services_(std::make_unique<Services>()) {}

MacosDesktop::~MacosDesktop() = default;

Platform MacosDesktop::platform() const {
    Services& services = *services_;
    return {.application = services.application,
            .runLoop = services.runLoop,
            .userDefaults = services.userDefaults,
            .processInfo = services.processInfo,
            .statusBar = services.statusBar,
            .screens = services.screens,
            .events = services.events,
            .windowServer = services.windowServer,
            .hotKeys = services.hotKeys,
            .screenCapture = services.screenCapture,
            .accessibility = services.accessibility,
            .eventPoster = services.eventPoster,
            .windows = services.windows,
            .workspace = services.workspace,
            .dates = services.dates,
            .loginService = services.loginService,
            .globalPreferences = services.globalPreferences,
            .session = services.session};
}

}  // namespace velmo
