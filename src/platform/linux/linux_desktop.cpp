#include "linux_desktop.h"

#include "linux/application/linux_application.h"
#include "linux/dates/linux_dates.h"
#include "linux/dbus/application_service.h"
#include "linux/dbus/assistance.h"
#include "linux/dbus/color_scheme.h"
#include "linux/defaults/file_global_preferences.h"
#include "linux/defaults/file_user_defaults.h"
#include "linux/event_loop/event_loop.h"
#include "linux/local_events.h"
#include "linux/login/autostart_login_service.h"
#include "linux/process/linux_process_info.h"
#include "linux/session/linux_session.h"
#include "linux/text/lazy_text_renderer.h"
#include "linux/toolkit/lazy_toolkit.h"
#include "linux/workspace/linux_workspace.h"
#include "linux/x11/accessible_items.h"
#include "linux/x11/global_events.h"
#include "linux/x11/hot_keys.h"
#include "linux/x11/item_drag.h"
#include "linux/x11/menu_bar.h"
#include "linux/x11/notifier_tray.h"
#include "linux/x11/panel_keys.h"
#include "linux/x11/single_instance.h"
#include "linux/x11/synthetic_events.h"
#include "linux/x11/toolkit_services.h"
#include "linux/x11/tray_host.h"
#include "linux/x11/window_capture.h"
#include "linux/x11/window_list.h"

#include <utility>

namespace velmo {

namespace {

constexpr const char* orderKey = "statusItemOrder";

}  // namespace

/// In the order in which they need each other.
struct LinuxDesktop::Services {
    EventLoop loop;
    CurrentEvent currentEvent;
    LocalEvents localEvents{currentEvent};
    LinuxProcessInfo processInfo;
    LinuxApplication application{loop, currentEvent};
    std::unique_ptr<x11::Connection> connection;
    std::unique_ptr<x11::SingleInstance> instance;
    std::unique_ptr<FileUserDefaults> userDefaults;
    FileGlobalPreferences globalPreferences{globalPreferencesFile(hostName())};
    std::unique_ptr<x11::DesktopSettings> settings;
    std::unique_ptr<x11::ScreenList> screens;
    std::unique_ptr<x11::Modifiers> modifiers;
    LazyToolkit toolkit{loop};
    LazyTextRenderer text{dateLocaleFromEnvironment()};
    std::unique_ptr<x11::MenuBar> bar;
    std::unique_ptr<x11::Keyboard> keyboard;
    std::unique_ptr<x11::ItemDrag> drag;
    std::unique_ptr<x11::GlobalEvents> events;
    std::unique_ptr<x11::WindowList> windowList;
    std::unique_ptr<x11::HotKeys> hotKeys;
    std::unique_ptr<x11::KeyEvents> keyEvents;
    std::unique_ptr<x11::PanelKeys> panelKeys;
    std::unique_ptr<x11::WindowCapture> windowCapture;
    std::unique_ptr<x11::ToolkitServices> toolkitServices;
    std::unique_ptr<x11::TrayHost> tray;
    std::unique_ptr<x11::SyntheticEvents> syntheticEvents;
    std::unique_ptr<x11::NotifierTray> notifierTray;
    /// Until it is on the bus for the first time.
    bool isStartedByBus = dbus::takeStartByBus();
    std::unique_ptr<dbus::ApplicationService> applicationService;
    std::unique_ptr<dbus::ColorScheme> colorScheme;
    std::unique_ptr<dbus::Assistance> assistance;
    std::unique_ptr<x11::AccessibleItems> accessibleItems;
    LinuxWorkspace workspace{processInfo};
    LinuxDates dates{loop};
    AutostartLoginService loginService{autostartEnvironment(), processInfo};
    LinuxSession session{
        processInfo, [this] { return notifierTray ? notifierTray->bus() : nullptr; },
        [this](const auto& confirmation, const auto& then) { toolkit.confirm(confirmation, then); }};
    Registration settingsChanges;
    Registration screenChanges;
    Registration barLeaves;
    Registration barEnd;
    bool isCutOff = false;

    bool build();
};

/// False where another program is the tray.
bool LinuxDesktop::Services::build() {
    const auto end = [this] {
        isCutOff = true;
        loop.stop();
    };
    connection->setOnLost(end);
    instance->setOnReopen([this] { application.reopen(); });
    instance->setOnCommand([this](auto command) { application.perform(command); });
    userDefaults = std::make_unique<FileUserDefaults>(userDefaultsFile());
    settings = std::make_unique<x11::DesktopSettings>(*connection);
    screens = std::make_unique<x11::ScreenList>(*connection, *settings);
    modifiers = std::make_unique<x11::Modifiers>(*connection);
    bar = std::make_unique<x11::MenuBar>(
        x11::MenuBar::Environment{*connection, *settings, *screens, *modifiers, currentEvent, localEvents,
                                  toolkit, text, processInfo.processIdentifier(), globalPreferences},
        userDefaults->stringListForKey(orderKey),
        [this](const auto& order) { userDefaults->setStringList(order, orderKey); });
    // Any program can destroy it. Without it, this one would only keep another from being started.
    barEnd = connection->onWindow(bar->window(), [end](const xcb_generic_event_t& event) {
        if (event.response_type == XCB_DESTROY_NOTIFY)
            end();
    });
    keyboard = std::make_unique<x11::Keyboard>(*connection);
    drag = std::make_unique<x11::ItemDrag>(*bar, *modifiers, *keyboard);
    events = std::make_unique<x11::GlobalEvents>(*bar);
    windowList = std::make_unique<x11::WindowList>(*bar);
    windowCapture = std::make_unique<x11::WindowCapture>(*bar);
    syntheticEvents = std::make_unique<x11::SyntheticEvents>(*bar);
    hotKeys = std::make_unique<x11::HotKeys>(*connection, *keyboard, *modifiers);
    keyEvents = std::make_unique<x11::KeyEvents>(*connection, *keyboard, *modifiers);
    localEvents.setKeyTranslation([this](auto key, auto state) { return keyEvents->keyDown(key, state); });
    panelKeys = std::make_unique<x11::PanelKeys>(*connection, *keyboard, *modifiers, *hotKeys, localEvents,
                                                 *keyEvents);
    // Before what the toolkit shows is laid out anew.
    toolkit.setAppearance(settings->appearance());
    settingsChanges = settings->onChange([this, scale = settings->appearance().scale]() mutable {
        toolkit.setAppearance(settings->appearance());
        if (std::exchange(scale, settings->appearance().scale) != settings->appearance().scale)
            toolkit.closeMenus();
    });
    screenChanges = screens->onChange([this] { toolkit.closeMenus(); });
    barLeaves = bar->onLeave([this] { toolkit.closeMenus(); });
    toolkitServices = std::make_unique<x11::ToolkitServices>(*bar, *events, *userDefaults);
    toolkit.setHost(toolkitServices.get());
    tray = std::make_unique<x11::TrayHost>(*bar);
    if (!tray->acquire())
        return false;
    notifierTray = std::make_unique<x11::NotifierTray>(*bar);
    notifierTray->setOnBus([this](const auto& bus) {
        applicationService = std::make_unique<dbus::ApplicationService>(
            bus,
            dbus::ApplicationService::Handlers{[this] { application.reopen(); },
                                               [this](auto command) { application.perform(command); }},
            std::exchange(isStartedByBus, false));
        colorScheme = std::make_unique<dbus::ColorScheme>(
            bus, [this](auto prefersDark) { settings->setPrefersDark(prefersDark); });
        assistance = std::make_unique<dbus::Assistance>(loop, bus, [this] {
            if (!accessibleItems)
                accessibleItems = std::make_unique<x11::AccessibleItems>(*bar, *syntheticEvents);
        });
    });
    notifierTray->start();
    return true;
}

LinuxDesktop::LinuxDesktop() : services_(std::make_unique<Services>()) {}

LinuxDesktop::~LinuxDesktop() = default;

LinuxDesktop::Start LinuxDesktop::start(std::string& problem) {
    auto& services = *services_;
    services.connection = x11::Connection::open(services.loop, problem);
    if (!services.connection)
        return Start::failed;
    services.instance = std::make_unique<x11::SingleInstance>(*services.connection);
    using Place = x11::SingleInstance::Place;
    Place place = services.instance->acquire();
    // An instance that ends at this moment leaves its part to us.
    while (place == Place::taken && !services.instance->askToReopen())
        place = services.instance->acquire();
    if (place == Place::taken)
        return Start::alreadyRunning;
    if (place == Place::otherTray || !services.build()) {
        problem = "another program is the system tray of this display";
        return Start::failed;
    }
    return Start::ready;
}

Platform LinuxDesktop::platform() const {
    auto& services = *services_;
    return {services.application,
            services.loop,
            *services.userDefaults,
            services.processInfo,
            *services.bar,
            *services.screens,
            *services.events,
            *services.windowList,
            *services.hotKeys,
            *services.windowCapture,
            *services.syntheticEvents,
            *services.syntheticEvents,
            services.toolkit,
            services.workspace,
            services.dates,
            services.loginService,
            services.globalPreferences,
            services.session};
}

bool LinuxDesktop::isCutOff() const {
    return services_->isCutOff;
}

}  // namespace velmo
