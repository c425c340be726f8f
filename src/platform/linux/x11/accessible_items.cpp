#include "accessible_items.h"

#include <algorithm>

namespace velmo::x11 {

namespace {

/// Nobody can hear more at a time.
constexpr Seconds tellingPause = 0.2;

Rect rectFrom(const PixelRect& rect) {
    return {double(rect.x), double(rect.y), double(rect.width), double(rect.height)};
}

}  // namespace

AccessibleItems::AccessibleItems(MenuBar& bar, SyntheticEvents& events)
    : bar_(bar),
      events_(events),
      window_(bar.connection().newId()),
      telling_(bar.connection().loop(), tellingPause, [this] { listeners_.notify(); }),
      layouts_(bar.onChange([this] { telling_.request(); })) {
    const auto& connection = bar_.connection();
    xcb_create_window(connection.raw(), 0, window_, connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    connection.selectEvents(window_, XCB_EVENT_MASK_PROPERTY_CHANGE);
    times_ = bar_.connection().onWindow(window_, [this](const auto& event) { handle(event); });
    bar_.toolkit().setAccessibleBar(this);
}

AccessibleItems::~AccessibleItems() {
    bar_.toolkit().setAccessibleBar(nullptr);
    xcb_destroy_window(bar_.connection().raw(), window_);
}

Rect AccessibleItems::place() const {
    return rectFrom(bar_.area());
}

std::vector<AccessibleBarItem> AccessibleItems::items() const {
    std::vector<AccessibleBarItem> items;
    for (const auto* item : bar_.items()) {
        if (!isSeen(*item))
            continue;
        const auto& place = item->place();
        const auto label = item->label();
        items.push_back(
            {item->window(), label.name, label.description, rectFrom(bar_.onRoot(*place)), item->hasMenu()});
    }
    std::sort(items.begin(), items.end(),
              [](const auto& left, const auto& right) { return left.place.x < right.place.x; });
    return items;
}

/// What hides others is as bare as the bar.
bool AccessibleItems::isSeen(const BarItem& item) const {
    const auto& place = item.place();
    return place && place->x + place->width > 0 && !bar_.isLong(item);
}

/// The caller waits for an answer, and windows come to the front only for a click whose time is known.
void AccessibleItems::click(WindowNumber item, xcb_button_t button) {
    clicks_.push_back({item, button});
    const auto& connection = bar_.connection();
    xcb_change_property(connection.raw(), XCB_PROP_MODE_APPEND, window_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        0, nullptr);
    xcb_flush(connection.raw());
}

void AccessibleItems::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY || clicks_.empty())
        return;
    const auto time = reinterpret_cast<const xcb_property_notify_event_t&>(event).time;
    const Click click = clicks_.front();
    clicks_.pop_front();
    // A menu stays open for longer.
    bar_.connection().loop().post(lifetime_.guard([this, click, time] { clickNow(click, time); }));
}

void AccessibleItems::clickNow(const Click& click, xcb_timestamp_t time) {
    bar_.layOutIfNeeded();
    const auto& items = bar_.items();
    const auto found = std::find_if(items.begin(), items.end(),
                                    [&](const auto* item) { return item->window() == click.item; });
    // It may have been hidden since it was told of.
    if (found == items.end() || !isSeen(**found) || (*found)->click(click.button, time) ||
        click.button != XCB_BUTTON_INDEX_1)
        return;
    const Rect global = bar_.screens().toGlobal(bar_.onRoot(*(*found)->place()));
    const Point middle = {std::max(global.midX(), bar_.screens().toGlobal(bar_.area()).minX()),
                          global.midY()};
    for (const auto type : {EventType::mouseMoved, EventType::leftMouseDown, EventType::leftMouseUp})
        events_.postMouseEvent(type, middle);
}

}  // namespace velmo::x11
