#include "fitting_widths.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <numeric>

namespace velmo {

std::vector<int> fittingWidths(const std::vector<ItemWidth>& items, const BarRoom& room) {
    const auto hidden = std::find_if(items.begin(), items.end(),
                                     [&](const auto& item) { return item.preferred >= room.longItem; });
    /// Of those that yield first, and of the others.
    std::array<int, 2> narrowings = {0, 0};
    const auto partOf = [](const ItemWidth& item) { return item.yieldsFirst ? 0U : 1U; };
    const auto narrowed = [&](const ItemWidth& item) {
        return std::max(item.preferred - narrowings.at(partOf(item)), item.least);
    };
    const auto needed = [&] {
        return std::accumulate(items.begin(), hidden, 0,
                               [&](int sum, const auto& item) { return sum + narrowed(item); });
    };
    for (std::size_t part = 0; part < narrowings.size(); ++part) {
        int most = 0;
        for (auto item = items.begin(); item != hidden; ++item)
            most = partOf(*item) == part ? std::max(most, item->preferred - item->least) : most;
        int& narrowing = narrowings.at(part);
        while (narrowing < most && needed() > room.width)
            narrowing = std::min(narrowing + room.step, most);
    }
    std::vector<int> widths;
    widths.reserve(items.size());
    std::transform(items.begin(), items.end(), std::back_inserter(widths), narrowed);
    return widths;
}

}  // namespace velmo
