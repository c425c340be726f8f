#include "linux_application.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace velmo {

LinuxApplication::LinuxApplication(EventLoop& loop, CurrentEvent& currentEvent)
    : loop_(loop), currentEvent_(currentEvent) {
    // Through the loop, so that everything is given back in order: other programs' icons above all.
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&ending, signal);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    signals_ = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
    if (signals_ >= 0)
        signalSource_ = loop_.addSource(signals_, [this] { loop_.stop(); });
}

LinuxApplication::~LinuxApplication() {
    if (signals_ >= 0)
        close(signals_);
}

void LinuxApplication::run() {
    if (delegate_)
        delegate_->applicationDidFinishLaunching();
    loop_.run();
}

void LinuxApplication::reopen() {
    if (delegate_)
        delegate_->applicationShouldHandleReopen(false);
}

void LinuxApplication::perform(ApplicationCommand command) {
    if (delegate_)
        delegate_->applicationPerform(command);
}

}  // namespace velmo
