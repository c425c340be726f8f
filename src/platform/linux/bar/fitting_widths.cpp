#include "fitting_widths.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace velmo {

std::vector<int> fittingWidths(const std::vector<ItemWidth>& items, const BarRoom& room) {
    const auto narrowed = [](const ItemWidth& item, int narrowing) {
        return std::max(item.preferred - narrowing, item.least);
    };
    const auto hidden = std::find_if(items.begin(), items.end(),
                                     [&](const auto& item) { return item.preferred >= room.longItem; });
    const auto needed = [&](int narrowing) {
        return std::accumulate(items.begin(), hidden, 0,
                               [&](int sum, const auto& item) { return sum + narrowed(item, narrowing); });
    };
    int most = 0;
    for (auto item = items.begin(); item != hidden; ++item)
        most = std::max(most, item->preferred - item->least);
    int narrowing = 0;
    while (narrowing < most && needed(narrowing) > room.width)
        narrowing = std::min(narrowing + room.step, most);
    std::vector<int> widths;
    widths.reserve(items.size());
    std::transform(items.begin(), items.end(), std::back_inserter(widths),
                   [&](const auto& item) { return narrowed(item, narrowing); });
    return widths;
}

}  // namespace velmo
