#pragma once

#include "events.h"
#include "lifetime.h"
#include "linux/x11/menu_bar.h"

#include <list>
#include <memory>

namespace velmo::x11 {

/// Clicks and scrolls anywhere, as the server's raw events tell of them: other clients' grabs do not
/// hide those. Nothing is listened to while nobody asks.
class GlobalEvents : public Events {
public:
    explicit GlobalEvents(MenuBar& bar);

    std::unique_ptr<EventMonitor> addGlobalMonitor(EventMask mask,
                                                   std::function<void(const Event&)> handler) override;
    std::unique_ptr<EventMonitor> addLocalMonitor(
        EventMask mask, std::function<EventDisposition(const Event&)> handler) override;
    Point mouseLocation() const override;

private:
    class Monitor;
    struct Entry;

    void select(bool listen) const;
    void handle(const xcb_generic_event_t& event);
    void deliver(const Event& event);

    MenuBar& bar_;
    Connection& connection_;
    std::list<std::shared_ptr<Entry>> entries_;
    Registration events_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
