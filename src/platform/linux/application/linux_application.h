#pragma once

#include "application.h"
#include "linux/current_event.h"
#include "linux/event_loop/event_loop.h"
#include "linux/registration.h"

namespace velmo {

/// The process on a Linux desktop. Requests of the session to end it end the loop.
class LinuxApplication : public Application {
public:
    LinuxApplication(EventLoop& loop, CurrentEvent& currentEvent);
    ~LinuxApplication() override;
    LinuxApplication(const LinuxApplication&) = delete;
    LinuxApplication& operator=(const LinuxApplication&) = delete;

    void setDelegate(ApplicationDelegate* delegate) override { delegate_ = delegate; }
    /// Every policy shows the same here: a process without windows of its own appears nowhere.
    void setActivationPolicy(ActivationPolicy /*policy*/) override {}
    void run() override;
    /// Windows ask for it themselves as they are shown.
    void activateIgnoringOtherApps(bool /*ignoring*/) override {}
    void terminate() override { loop_.stop(); }
    std::optional<Event> currentEvent() const override { return currentEvent_.get(); }

    /// The user has started the program once more.
    void reopen();
    /// The user asks for it by another process.
    void perform(ApplicationCommand command);

private:
    EventLoop& loop_;
    CurrentEvent& currentEvent_;
    ApplicationDelegate* delegate_ = nullptr;
    int signals_ = -1;
    Registration signalSource_;
};

}  // namespace velmo
