#pragma once

namespace velmo {

class Application;
class Events;
class HotKeyService;
class ProcessInfo;
class RunLoop;
class ScreenCapture;
class Screens;
class StatusBar;
class UserDefaults;
class WindowServer;

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
};

}  // namespace velmo
