#pragma once

#include "events.h"

#include <cstddef>
#include <vector>

namespace velmo {

class SimulatedApplication;

class SimulatedEvents : public Events {
public:
    explicit SimulatedEvents(SimulatedApplication& application) : application_(application) {}

    std::unique_ptr<EventMonitor> addGlobalMonitor(EventMask mask,
                                                   std::function<void(const Event&)> handler) override;
    std::unique_ptr<EventMonitor> addLocalMonitor(
        EventMask mask, std::function<EventDisposition(const Event&)> handler) override;
    Point mouseLocation() const override { return mouseLocation_; }

    /// Monitors that ask for any of these events are refused from now on.
    void setRefusedMonitors(EventMask mask) { refused_ = mask; }
    void setMouseLocation(const Point& location) { mouseLocation_ = location; }
    /// Hands an event of other applications to the monitors that want it, in the order of their making.
    void deliver(const Event& event);
    /// Shows an event of the program's own windows to the local monitors that want it, in the order of their
    /// making. False where one of them swallowed it.
    bool deliverLocally(const Event& event);
    /// Masks of the living global monitors, in the order of their making.
    std::vector<EventMask> monitoredMasks() const;
    /// The same of the local ones.
    std::vector<EventMask> locallyMonitoredMasks() const;

private:
    struct Monitor;
    struct LocalMonitor;
    template <typename Kind>
    class Token;

    SimulatedApplication& application_;
    Point mouseLocation_;
    EventMask refused_ = 0;
    std::vector<std::weak_ptr<Monitor>> monitors_;
    std::vector<std::weak_ptr<LocalMonitor>> localMonitors_;
};

}  // namespace velmo
