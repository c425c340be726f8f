#pragma once

#include "event.h"
#include "geometry.h"

#include <functional>
#include <memory>

namespace velmo {

/// An installed monitor; destroying it removes it.
class EventMonitor {
public:
    virtual ~EventMonitor() = default;
};

/// What a local monitor wants done with an event.
enum class EventDisposition { pass, swallow };

/// What happens in other applications and in this one, and where the pointer is.
class Events {
public:
    virtual ~Events() = default;

    /// Reports the events of the mask that go to other applications. Events in this application's
    /// own windows and status items are never among them. Null where the system refuses.
    virtual std::unique_ptr<EventMonitor> addGlobalMonitor(EventMask mask,
                                                           std::function<void(const Event&)> handler) = 0;
    /// Sees the events of the mask that go to this application's own windows and status items, before they
    /// do, and keys while one of them has the keyboard or floats as a panel. A swallowed event goes no
    /// further, not even to later monitors. Null where the system refuses.
    virtual std::unique_ptr<EventMonitor> addLocalMonitor(
        EventMask mask, std::function<EventDisposition(const Event&)> handler) = 0;

    /// Points, origin at the bottom left of the primary screen.
    virtual Point mouseLocation() const = 0;
};

}  // namespace velmo
