#pragma once

#include "event.h"

#include <optional>

namespace velmo {

enum class ActivationPolicy { regular = 0, accessory = 1, prohibited = 2 };

/// What the user can ask of the running application from outside of it.
enum class ApplicationCommand { toggle = 1, toggleAll = 2, panel = 3, settings = 4, quit = 5 };

class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    virtual void applicationDidFinishLaunching() = 0;
    /// The user has started the running application once more. False: the application has done what
    /// it wants, the system adds nothing of its own.
    virtual bool applicationShouldHandleReopen(bool hasVisibleWindows) = 0;
    virtual void applicationPerform(ApplicationCommand command) = 0;
};

/// The process as the desktop sees it.
class Application {
public:
    virtual ~Application() = default;

    /// Not owned; stays valid until `run` has returned.
    virtual void setDelegate(ApplicationDelegate* delegate) = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Tells the delegate that launching has finished, then dispatches events until the application
    /// is terminated.
    virtual void run() = 0;
    /// Makes this the application that the user works with.
    virtual void activateIgnoringOtherApps(bool ignoring) = 0;
    /// Makes `run` return once the work at hand is done.
    virtual void terminate() = 0;
    /// The event being handled. Absent outside of event handling.
    virtual std::optional<Event> currentEvent() const = 0;
};

}  // namespace velmo
