#include "macos_events.h"

#include "event_from.h"

#include <utility>

namespace velmo::macos {
namespace {

class MacosEventMonitor : public EventMonitor {
public:
    explicit MacosEventMonitor(Object token) : token_(std::move(token)) {}
    ~MacosEventMonitor() override { NSEvent::removeMonitor(token_); }
    MacosEventMonitor(const MacosEventMonitor&) = delete;
    MacosEventMonitor& operator=(const MacosEventMonitor&) = delete;

private:
    Object token_;
};

std::unique_ptr<EventMonitor> monitorFor(const Object& token) {
    return token ? std::make_unique<MacosEventMonitor>(token) : nullptr;
}

}  // namespace

std::unique_ptr<EventMonitor> MacosEvents::addGlobalMonitor(EventMask mask,
                                                            std::function<void(const Event&)> handler) {
    return monitorFor(NSEvent::addGlobalMonitor(
        NSEventMask{mask}, Block<void(NSEvent)>([handler = std::move(handler)](const NSEvent& event) {
            handler(eventFrom(event));
        })));
}

std::unique_ptr<EventMonitor> MacosEvents::addLocalMonitor(
    EventMask mask, std::function<EventDisposition(const Event&)> handler) {
    return monitorFor(NSEvent::addLocalMonitor(
        NSEventMask{mask}, Block<NSEvent(NSEvent)>([handler = std::move(handler)](const NSEvent& event) {
            return handler(eventFrom(event)) == EventDisposition::swallow ? NSEvent() : event;
        })));
}

Point MacosEvents::mouseLocation() const {
    const CGPoint location = NSEvent::mouseLocation();
    return {location.x, location.y};
}

}  // namespace velmo::macos
