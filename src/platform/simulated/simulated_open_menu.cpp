#include "simulated/simulated_open_menu.h"

#include <algorithm>

namespace velmo {

std::vector<std::string> SimulatedOpenMenu::titles() const {
    std::vector<std::string> titles;
    for (const auto& item : menu_.items)
        titles.push_back(item ? item->title() : "-");
    return titles;
}

bool SimulatedOpenMenu::choose(std::string_view title) {
    const auto found = std::find_if(menu_.items.begin(), menu_.items.end(),
                                    [title](const auto& item) { return item && item->title() == title; });
    if (found != menu_.items.end())
        chosen_ = *found;
    return found != menu_.items.end();
}

}  // namespace velmo
