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
      telling_(bar.connection().loop(), tellingPause, [this] { listeners_.notify(); }),
      layouts_(bar.onChange([this] { telling_.request(); })) {
    bar_.toolkit().setAccessibleBar(this);
}

AccessibleItems::~AccessibleItems() {
    bar_.toolkit().setAccessibleBar(nullptr);
}

Rect AccessibleItems::place() const {
    return rectFrom(bar_.area());
}

std::vector<AccessibleBarItem> AccessibleItems::items() const {
    std::vector<AccessibleBarItem> items;
    for (const auto* item : bar_.items()) {
        const auto& place = item->place();
        // What hides others is as bare as the bar.
        if (!place || place->x + place->width <= 0 || bar_.isLong(*item))
            continue;
        const auto label = item->label();
        items.push_back(
            {item->window(), label.name, label.description, rectFrom(bar_.onRoot(*place)), item->hasMenu()});
    }
    std::sort(items.begin(), items.end(),
              [](const auto& left, const auto& right) { return left.place.x < right.place.x; });
    return items;
}

/// The caller waits for an answer, and a menu stays open for longer.
void AccessibleItems::click(WindowNumber item, xcb_button_t button) {
    bar_.connection().loop().post(lifetime_.guard([this, item, button] { clickNow(item, button); }));
}

void AccessibleItems::clickNow(WindowNumber item, xcb_button_t button) {
    const auto& items = bar_.items();
    const auto found = std::find_if(items.begin(), items.end(),
                                    [item](const auto* other) { return other->window() == item; });
    if (found == items.end() || !(*found)->place() || (*found)->click(button) || button != XCB_BUTTON_INDEX_1)
        return;
    const Rect global = bar_.screens().toGlobal(bar_.onRoot(*(*found)->place()));
    const Point middle = {global.midX(), global.midY()};
    for (const auto type : {EventType::mouseMoved, EventType::leftMouseDown, EventType::leftMouseUp})
        events_.postMouseEvent(type, middle);
}

}  // namespace velmo::x11
