#include "hidden_items/menu_bar_item_info.h"

namespace velmo {

std::optional<std::string> MenuBarItemInfo::displayName() const {
    if (title && !title->empty())
        return title;
    // One application owns many of the system's items: its name would not tell them apart.
    if (ownerName == "Control Center")
        return std::nullopt;
    return ownerName;
}

}  // namespace velmo

std::size_t std::hash<velmo::MenuBarItemInfo>::operator()(const velmo::MenuBarItemInfo& item) const noexcept {
    std::size_t result = 0;
    const auto feed = [&result](const auto& field) {
        const auto hashed = std::hash<std::decay_t<decltype(field)>>()(field);
        result ^= hashed + 0x9e3779b97f4a7c15U + (result << 6U) + (result >> 2U);
    };
    const velmo::Rect bounds = item.bounds.standardized();
    feed(item.windowID);
    feed(item.ownerPID);
    feed(item.ownerName);
    feed(item.title);
    feed(bounds.x);
    feed(bounds.y);
    feed(bounds.width);
    feed(bounds.height);
    feed(item.isOnScreen);
    return result;
}
