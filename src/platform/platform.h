#pragma once

namespace velmo {

class Accessibility;
class Application;
class Dates;
class EventPoster;
class Events;
class GlobalPreferences;
class HotKeyService;
class LoginService;
class ProcessInfo;
class RunLoop;
class ScreenCapture;
class Screens;
class Session;
class StatusBar;
class UserDefaults;
class WindowFactory;
class WindowServer;
class Workspace;

/// Everything that the core asks of a system. The referents outlive the core.
struct Platform {
    Application& application;
    RunLoop& runLoop;
    UserDefaults& userDefaults;
    ProcessInfo& processInfo;
    StatusBar& statusBar;
    Screens& screens;
    Events& events;
    WindowServer& windowServer;
    HotKeyService& hotKeys;
    ScreenCapture& screenCapture;
    Accessibility& accessibility;
    EventPoster& eventPoster;
    WindowFactory& windows;
    Workspace& workspace;
    Dates& dates;
    LoginService& loginService;
    GlobalPreferences& globalPreferences;
    Session& session;
};

}  // namespace velmo
