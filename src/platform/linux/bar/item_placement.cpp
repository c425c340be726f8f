#include "item_placement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace velmo::item_placement {

namespace {

/// Our own items whose order among themselves is kept, from right to left.
const std::array<std::string, 3> fixedOrder = {"Velmo.Toggle", "Velmo.Divider", "Velmo.AlwaysHiddenDivider"};

const std::string& hiddenDivider = fixedOrder[1];

/// Rank in the fixed order, or -1.
std::ptrdiff_t fixedRank(const std::string& identity) {
    const auto* const found = std::find(fixedOrder.begin(), fixedOrder.end(), identity);
    return found == fixedOrder.end() ? -1 : found - fixedOrder.begin();
}

/// The first and the last index at which the dragged item may be put.
std::pair<std::size_t, std::size_t> allowedSlots(const std::vector<PlacedItem>& others,
                                                 const std::string& dragged) {
    const auto rank = fixedRank(dragged);
    std::size_t first = 0;
    std::size_t last = others.size();
    for (std::size_t index = 0; rank >= 0 && index < others.size(); ++index) {
        const auto otherRank = fixedRank(others[index].identity);
        if (otherRank >= 0 && otherRank < rank)
            first = index + 1;
        else if (otherRank > rank)
            last = std::min(last, index);
    }
    return {first, std::max(first, last)};
}

/// What the identities of one program begin with.
std::string_view programOf(std::string_view identity) {
    return identity.substr(0, identity.find('.'));
}

}  // namespace

bool isToggle(const std::string& identity) {
    return fixedRank(identity) == 0;
}

bool isHiddenDivider(const std::string& identity) {
    return identity == hiddenDivider;
}

bool isOwnName(const std::string& identity) {
    return identity.starts_with("Velmo.");
}

void forgetAbsent(StatusItemOrder& order, const std::vector<std::string>& present, Memory memory) {
    const std::unordered_set<std::string_view> isPresent(present.begin(), present.end());
    const auto& known = order.rightToLeft();
    std::vector<std::string> absent;
    std::map<std::string, std::size_t, std::less<>> counts;
    const auto addFromLeft = [&](auto right, auto left) {
        for (auto place = left; place != right;) {
            --place;
            if (isOwnName(*place) || isPresent.contains(*place))
                continue;
            absent.push_back(*place);
            ++counts[std::string(programOf(*place))];
        }
    };
    const auto divider = std::find(known.begin(), known.end(), hiddenDivider);
    addFromLeft(known.begin(), divider);
    addFromLeft(divider, known.end());
    std::erase_if(absent, [&](const auto& identity) {
        auto& count = counts.find(programOf(identity))->second;
        if (count <= memory.mostOfOneProgram)
            return false;
        --count;
        order.remove(identity);
        return true;
    });
    for (std::size_t index = 0; index + memory.most < absent.size(); ++index)
        order.remove(absent[index]);
}

void placeApplication(StatusItemOrder& order, const std::string& identity) {
    order.addRightOf(hiddenDivider, identity);
}

void placeOwnItem(StatusItemOrder& order, const std::string& identity) {
    const bool isNew = !order.contains(identity);
    order.addAtFarLeft(identity);
    const auto rank = fixedRank(identity);
    for (std::ptrdiff_t other = std::ssize(fixedOrder) - 1; rank >= 0 && other >= 0; --other) {
        const auto& name = fixedOrder[static_cast<std::size_t>(other)];
        if (!order.contains(name))
            continue;
        // What comes back may have been passed meanwhile, and goes to its side of the other. The other stays:
        // with it would go who is hidden.
        if (other < rank && order.rank(identity) < order.rank(name))
            order.moveLeftOf(name, identity);
        else if (isNew && other > rank && order.rank(identity) > order.rank(name))
            order.moveRightOf(name, identity);
    }
}

std::size_t dropIndex(const std::vector<PlacedItem>& others, const PlacedItem& dragged, int rightEdge,
                      int longItem) {
    const auto [first, last] = allowedSlots(others, dragged.identity);
    const double middle = dragged.x + dragged.width / 2.0;
    std::size_t best = first;
    double bestDistance = std::numeric_limits<double>::infinity();
    // The others close the dragged item's gap meanwhile, so that the slots do not move with it.
    double edge = rightEdge;
    for (std::size_t index = 0; index <= last; ++index) {
        const double distance = std::abs(edge - dragged.width / 2.0 - middle);
        if (index >= first && distance < bestDistance) {
            best = index;
            bestDistance = distance;
        }
        if (index == last || (index > 0 && others[index - 1].width >= longItem))
            break;
        edge -= others[index].width >= longItem ? dragged.width : others[index].width;
    }
    return best;
}

void drop(StatusItemOrder& order, const std::vector<PlacedItem>& others, const std::string& dragged,
          std::size_t index) {
    if (others.empty())
        return;
    if (index == 0)
        order.moveRightOf(others.front().identity, dragged);
    else
        order.moveLeftOf(others[std::min(index, others.size()) - 1].identity, dragged);
}

}  // namespace velmo::item_placement
