#pragma once

#include "events.h"

namespace velmo::macos {

class MacosEvents : public Events {
public:
    std::unique_ptr<EventMonitor> addGlobalMonitor(EventMask mask,
                                                   std::function<void(const Event&)> handler) override;
    std::unique_ptr<EventMonitor> addLocalMonitor(
        EventMask mask, std::function<EventDisposition(const Event&)> handler) override;
    Point mouseLocation() const override;
};

}  // namespace velmo::macos
