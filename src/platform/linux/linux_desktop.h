#pragma once

#include "platform.h"

#include <memory>
#include <string>

namespace velmo {

/// A Linux desktop under X11, with everything that the core asks of a system.
class LinuxDesktop {
public:
    /// How an attempt to take a desktop over has ended.
    enum class Start { ready, alreadyRunning, failed };

    LinuxDesktop();
    ~LinuxDesktop();
    LinuxDesktop(const LinuxDesktop&) = delete;
    LinuxDesktop& operator=(const LinuxDesktop&) = delete;

    /// Connects and becomes the display's menu bar. Where Velmo runs already, it is told that it was
    /// started once more. Where that fails, `problem` says why in one line.
    Start start(std::string& problem);
    /// Valid after a successful start.
    Platform platform() const;
    /// True once the display has gone, or the bar from it.
    bool isCutOff() const;

private:
    struct Services;
    std::unique_ptr<Services> services_;
};

}  // namespace velmo
