#include "simulated/simulated_events.h"

#include "simulated/simulated_application.h"

#include <utility>

namespace velmo {

struct SimulatedEvents::Monitor {
    EventMask mask = 0;
    std::function<void(const Event&)> handler;
};

struct SimulatedEvents::LocalMonitor {
    EventMask mask = 0;
    std::function<EventDisposition(const Event&)> handler;
};

/// Owns its monitor; the list holds it weakly and so forgets it.
template <typename Kind>
class SimulatedEvents::Token : public EventMonitor {
public:
    explicit Token(std::shared_ptr<Kind> monitor) : monitor_(std::move(monitor)) {}

private:
    std::shared_ptr<Kind> monitor_;
};

namespace {

template <typename Monitors>
std::vector<EventMask> masksOf(const Monitors& monitors) {
    std::vector<EventMask> masks;
    for (const auto& weak : monitors) {
        if (const auto monitor = weak.lock())
            masks.push_back(monitor->mask);
    }
    return masks;
}

}  // namespace

std::unique_ptr<EventMonitor> SimulatedEvents::addGlobalMonitor(EventMask mask,
                                                                std::function<void(const Event&)> handler) {
    if ((mask & refused_) != 0)
        return nullptr;
    std::erase_if(monitors_, [](const auto& monitor) { return monitor.expired(); });
    auto monitor = std::make_shared<Monitor>(Monitor{mask, std::move(handler)});
    monitors_.push_back(monitor);
    return std::make_unique<Token<Monitor>>(std::move(monitor));
}

std::unique_ptr<EventMonitor> SimulatedEvents::addLocalMonitor(
    EventMask mask, std::function<EventDisposition(const Event&)> handler) {
    if ((mask & refused_) != 0)
        return nullptr;
    std::erase_if(localMonitors_, [](const auto& monitor) { return monitor.expired(); });
    auto monitor = std::make_shared<LocalMonitor>(LocalMonitor{mask, std::move(handler)});
    localMonitors_.push_back(monitor);
    return std::make_unique<Token<LocalMonitor>>(std::move(monitor));
}

bool SimulatedEvents::deliverLocally(const Event& event) {
    const auto monitors = localMonitors_;
    for (const auto& weak : monitors) {
        const auto monitor = weak.lock();
        if (!monitor || (monitor->mask & maskOf(event.type)) == 0)
            continue;
        auto disposition = EventDisposition::pass;
        application_.handle(event, [&] { disposition = monitor->handler(event); });
        if (disposition == EventDisposition::swallow)
            return false;
    }
    return true;
}

void SimulatedEvents::deliver(const Event& event) {
    // A handler may add monitors, which do not see this event, or remove some.
    const auto count = monitors_.size();
    for (std::size_t i = 0; i < count && i < monitors_.size(); ++i) {
        const auto monitor = monitors_[i].lock();
        if (monitor && (monitor->mask & maskOf(event.type)) != 0)
            application_.handle(event, [&] { monitor->handler(event); });
    }
}

std::vector<EventMask> SimulatedEvents::monitoredMasks() const {
    return masksOf(monitors_);
}

std::vector<EventMask> SimulatedEvents::locallyMonitoredMasks() const {
    return masksOf(localMonitors_);
}

}  // namespace velmo
