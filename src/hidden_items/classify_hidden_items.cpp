#include "hidden_items/classify_hidden_items.h"

namespace velmo {

HiddenItems classifyHiddenItems(const std::vector<MenuBarItemInfo>& items, const Rect& divider,
                                const std::optional<Rect>& alwaysHiddenDivider) {
    HiddenItems sections;
    for (const MenuBarItemInfo& item : items) {
        const double middle = item.bounds.midX();
        if (!(middle < divider.minX()))
            continue;
        if (alwaysHiddenDivider && middle < alwaysHiddenDivider->minX())
            sections.alwaysHidden.push_back(item);
        else
            sections.hidden.push_back(item);
    }
    return sections;
}

}  // namespace velmo
