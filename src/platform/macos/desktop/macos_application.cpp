#include "macos_application.h"

#include "event_from.h"
#include "main_menu.h"

namespace velmo::macos {

MacosApplication::MacosApplication() {
    application_.setDelegate(instance_.object());
}

MacosApplication::~MacosApplication() {
    application_.setDelegate(Object());
    application_.setMainMenu(NSMenu());
}

void MacosApplication::setActivationPolicy(ActivationPolicy policy) {
    application_.setActivationPolicy(static_cast<NSApplicationActivationPolicy>(policy));
}

void MacosApplication::run() {
    application_.run();
}

void MacosApplication::activateIgnoringOtherApps(bool ignoring) {
    application_.activateIgnoringOtherApps(ignoring);
}

void MacosApplication::terminate() {
    application_.terminate();
}

std::optional<Event> MacosApplication::currentEvent() const {
    const NSEvent event = application_.currentEvent();
    return event ? std::optional(eventFrom(event)) : std::nullopt;
}

void MacosApplication::didFinishLaunching(const NSNotification& /*notification*/) {
    application_.setMainMenu(makeMainMenu(undo_));
    if (delegate_ != nullptr)
        delegate_->applicationDidFinishLaunching();
}

bool MacosApplication::shouldHandleReopen(const NSApplication& /*application*/, bool hasVisibleWindows) {
    return delegate_ == nullptr || delegate_->applicationShouldHandleReopen(hasVisibleWindows);
}

}  // namespace velmo::macos
