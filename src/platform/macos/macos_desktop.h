#pragma once

#include "platform.h"

#include <memory>

namespace velmo {

/// The system's own desktop, with everything that the core asks of a system. Main thread only.
class MacosDesktop {
public:
    MacosDesktop();
    ~MacosDesktop();
    MacosDesktop(const MacosDesktop&) = delete;
    MacosDesktop& operator=(const MacosDesktop&) = delete;

    Platform platform() const;

private:
    struct Services;
    std::unique_ptr<Services> services_;
};

}  // namespace velmo
