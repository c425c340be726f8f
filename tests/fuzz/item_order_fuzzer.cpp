#include "bytes.h"
#include "linux/bar/item_placement.h"
#include "require.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

/// The order of items as the defaults file has it, and items that come, are dragged and leave: nobody has two
/// places, and of those that are away no more are kept than are wanted.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    constexpr item_placement::Memory memory = {12, 4};
    fuzz::Bytes bytes(data, size);
    const auto identity = [&]() -> std::string {
        static constexpr const char* names[] = {"Velmo.Divider", "Velmo.Toggle", "one", "one-2", "two"};
        const auto choice = bytes.below(2 * std::size(names));
        return choice < std::size(names) ? names[choice] : bytes.text(bytes.below(12));
    };
    std::vector<std::string> stored;
    for (auto count = bytes.below(64); count > 0; --count)
        stored.push_back(identity());
    StatusItemOrder order(stored);
    std::vector<std::string> present;
    while (!bytes.isEmpty()) {
        const auto name = identity();
        switch (bytes.below(4)) {
            case 0:
                if (!name.empty()) {
                    item_placement::placeApplication(order, name);
                    present.push_back(name);
                }
                break;
            case 1:
                order.moveLeftOf(identity(), name);
                break;
            case 2:
                order.moveRightOf(identity(), name);
                break;
            default:
                std::erase(present, name);
        }
    }
    const auto before = order.rightToLeft();
    item_placement::forgetAbsent(order, present, memory);
    const auto& after = order.rightToLeft();
    const std::set<std::string> once(after.begin(), after.end());
    fuzz::require(once.size() == after.size() && !once.contains(""));
    std::size_t away = 0;
    auto place = before.begin();
    for (const auto& kept : after) {
        place = std::find(place, before.end(), kept);
        fuzz::require(place != before.end());
        const bool isAway = std::find(present.begin(), present.end(), kept) == present.end();
        away += isAway && !item_placement::isOwnName(kept) ? 1 : 0;
    }
    fuzz::require(away <= memory.most);
    for (const auto& name : present)
        fuzz::require(order.contains(name));
    return 0;
}
