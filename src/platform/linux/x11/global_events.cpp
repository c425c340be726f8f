#include "global_events.h"

#include "linux/x11/own_windows.h"
#include "linux/x11/reply.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace velmo::x11 {

namespace {

/// What one notch of a wheel scrolls, in points. Finer devices report a notch's worth at a time, too.
constexpr double pointsOfNotch = 10;

std::optional<Event> eventOfPress(std::uint32_t button) {
    switch (button) {
        case XCB_BUTTON_INDEX_1:
            return Event{EventType::leftMouseDown};
        case XCB_BUTTON_INDEX_2:
            return Event{EventType::otherMouseDown};
        case XCB_BUTTON_INDEX_3:
            return Event{EventType::rightMouseDown};
        case XCB_BUTTON_INDEX_4:
            return Event{EventType::scrollWheel, 0, 0, pointsOfNotch};
        case XCB_BUTTON_INDEX_5:
            return Event{EventType::scrollWheel, 0, 0, -pointsOfNotch};
        case 6:
            return Event{EventType::scrollWheel, 0, pointsOfNotch, 0};
        case 7:
            return Event{EventType::scrollWheel, 0, -pointsOfNotch, 0};
        default:
            return std::nullopt;
    }
}

}  // namespace

struct GlobalEvents::Entry {
    EventMask mask = 0;
    std::function<void(const Event&)> handler;
    bool ended = false;
};

class GlobalEvents::Monitor : public EventMonitor {
public:
    Monitor(GlobalEvents& events, std::shared_ptr<Entry> entry) : events_(events), entry_(std::move(entry)) {
        events_.entries_.push_back(entry_);
        events_.select(true);
    }
    ~Monitor() override {
        entry_->ended = true;
        events_.entries_.remove(entry_);
        events_.select(!events_.entries_.empty());
    }
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

private:
    GlobalEvents& events_;
    std::shared_ptr<Entry> entry_;
};

GlobalEvents::GlobalEvents(MenuBar& bar)
    : bar_(bar),
      connection_(bar.connection()),
      events_(connection_.onExtension(xcb_input_id, [this](const auto& event) { handle(event); })) {}

std::unique_ptr<EventMonitor> GlobalEvents::addGlobalMonitor(EventMask mask,
                                                             std::function<void(const Event&)> handler) {
    return std::make_unique<Monitor>(*this, std::make_shared<Entry>(Entry{mask, std::move(handler)}));
}

std::unique_ptr<EventMonitor> GlobalEvents::addLocalMonitor(
    EventMask mask, std::function<EventDisposition(const Event&)> handler) {
    return bar_.localEvents().addMonitor(mask, std::move(handler));
}

Point GlobalEvents::mouseLocation() const {
    const Point pixel = bar_.screens().pointer();
    return bar_.screens().toScreen(static_cast<int>(pixel.x), static_cast<int>(pixel.y));
}

void GlobalEvents::select(bool listen) const {
    const struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection = {{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                   listen ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS} : 0U};
    xcb_input_xi_select_events(connection_.raw(), connection_.root(), 1, &selection.head);
}

void GlobalEvents::handle(const xcb_generic_event_t& event) {
    if (reinterpret_cast<const xcb_ge_generic_event_t&>(event).event_type != XCB_INPUT_RAW_BUTTON_PRESS)
        return;
    const auto& press = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    auto report = eventOfPress(press.detail);
    const auto wanted = [&](const auto& entry) { return (entry->mask & maskOf(report->type)) != 0; };
    if (!report || std::none_of(entries_.begin(), entries_.end(), wanted))
        return;
    // Raw events know no modifiers.
    const auto pointer = owned(xcb_query_pointer_reply(
        connection_.raw(), xcb_query_pointer(connection_.raw(), connection_.root()), nullptr));
    if (!pointer || bar_.toolkit().isMenuOpen() || isToolkitWindow(connection_, pointer->child))
        return;
    report->modifierFlags = bar_.modifiers().flags(pointer->mask);
    // The press on one of our items, if that is what it was, has arrived with the answer at the latest. Where
    // the pointer is by now does not tell, it may have gone on.
    connection_.afterArrivedEvents(lifetime_.guard([this, report = *report, time = press.time] {
        if (bar_.localEvents().wasPressedAt(time))
            return;
        bar_.localEvents().notePressElsewhere(time);
        deliver(report);
    }));
}

void GlobalEvents::deliver(const Event& event) {
    // A copy, because monitors come and go while they are called.
    const std::vector<std::shared_ptr<Entry>> called(entries_.begin(), entries_.end());
    for (const auto& entry : called) {
        if (!entry->ended && (entry->mask & maskOf(event.type)))
            bar_.currentEvent().during(event, [&] { entry->handler(event); });
    }
}

}  // namespace velmo::x11
