#include "bytes.h"
#include "linux/bar/item_placement.h"
#include "require.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace velmo;

const std::string ownNames[] = {"Velmo.Toggle", "Velmo.Divider", "Velmo.AlwaysHiddenDivider"};

/// Those of ours that are known.
bool areInFixedOrder(const StatusItemOrder& order) {
    std::vector<std::size_t> ranks;
    for (const auto& name : ownNames) {
        if (order.contains(name))
            ranks.push_back(order.rank(name));
    }
    return std::is_sorted(ranks.begin(), ranks.end());
}

/// As the user drags one: the others lie side by side from the right, and a long one hides those left of it.
void drag(StatusItemOrder& order, const std::string& name, int x, const std::string& longOne) {
    constexpr int width = 30;
    constexpr int rightEdge = 1000;
    std::vector<item_placement::PlacedItem> others;
    int left = rightEdge;
    for (const auto& other : order.rightToLeft()) {
        if (other == name)
            continue;
        const int taken = other == longOne ? rightEdge : width;
        left -= taken;
        others.push_back({other, left, taken});
    }
    if (!order.contains(name) || others.empty())
        return;
    const auto known = order.rightToLeft().size();
    const bool wereInOrder = areInFixedOrder(order);
    item_placement::drop(order, others, name,
                         item_placement::dropIndex(others, {name, x, width}, rightEdge, rightEdge));
    fuzz::require(order.rightToLeft().size() == known);
    fuzz::require(!wereInOrder || areInFixedOrder(order));
}

void requireFixedOrder(StatusItemOrder& order) {
    for (const auto& name : ownNames) {
        item_placement::placeOwnItem(order, name);
        fuzz::require(order.contains(name));
    }
    fuzz::require(areInFixedOrder(order));
}

}  // namespace

/// The order of items as the defaults file has it, and items that come, are dragged and leave: nobody has two
/// places, ours keep their order, and of those that are away no more are kept than are wanted.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr item_placement::Memory memory = {12, 4};
    fuzz::Bytes bytes(data, size);
    const auto identity = [&]() -> std::string {
        static constexpr const char* names[] = {"one", "one.2", "one.3", "two", "two.2"};
        const auto choice = bytes.below(4 * std::size(names));
        if (choice < std::size(ownNames))
            return ownNames[choice];
        return choice < 2 * std::size(names) ? names[choice % std::size(names)] : bytes.text(bytes.below(12));
    };
    std::vector<std::string> stored;
    for (auto count = bytes.below(64); count > 0; --count)
        stored.push_back(identity());
    StatusItemOrder order(stored);
    std::vector<std::string> present;
    while (!bytes.isEmpty()) {
        const auto name = identity();
        const auto action = bytes.below(4);
        if (action == 0 && item_placement::isOwnName(name)) {
            item_placement::placeOwnItem(order, name);
        } else if (action == 0 && !name.empty()) {
            item_placement::placeApplication(order, name);
            present.push_back(name);
        } else if (action == 1) {
            std::erase(present, name);
        } else {
            const int x = 4 * static_cast<int>(bytes.below(256));
            drag(order, name, x, ownNames[bytes.below(std::size(ownNames))]);
        }
    }
    requireFixedOrder(order);
    const auto before = order.rightToLeft();
    item_placement::forgetAbsent(order, present, memory);
    const auto& after = order.rightToLeft();
    const std::set<std::string> once(after.begin(), after.end());
    fuzz::require(once.size() == after.size() && !once.contains(""));
    std::map<std::string, std::size_t> away;
    std::size_t allAway = 0;
    auto place = before.begin();
    for (const auto& kept : after) {
        place = std::find(place, before.end(), kept);
        fuzz::require(place != before.end());
        if (item_placement::isOwnName(kept) ||
            std::find(present.begin(), present.end(), kept) != present.end())
            continue;
        fuzz::require(++away[kept.substr(0, kept.find('.'))] <= memory.mostOfOneProgram);
        fuzz::require(++allAway <= memory.most);
    }
    for (const auto& name : present)
        fuzz::require(order.contains(name));
    return 0;
}
