#include "split_list.h"

#include <algorithm>

namespace velmo {

std::vector<std::string> splitList(std::string_view list, char separator) {
    std::vector<std::string> parts;
    while (!list.empty()) {
        const auto end = std::min(list.find(separator), list.size());
        if (end > 0)
            parts.emplace_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return parts;
}

}  // namespace velmo
