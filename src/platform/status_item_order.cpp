#include "status_item_order.h"

#include <algorithm>

namespace velmo {

StatusItemOrder::StatusItemOrder(const std::vector<std::string>& rightToLeft) {
    for (const auto& identity : rightToLeft) {
        if (!identity.empty())
            addAtFarLeft(identity);
    }
}

bool StatusItemOrder::contains(const std::string& identity) const {
    return rank(identity) < identities_.size();
}

std::size_t StatusItemOrder::rank(const std::string& identity) const {
    return static_cast<std::size_t>(std::find(identities_.begin(), identities_.end(), identity) -
                                    identities_.begin());
}

void StatusItemOrder::addAtFarLeft(const std::string& identity) {
    if (!contains(identity))
        identities_.push_back(identity);
}

void StatusItemOrder::addRightOf(const std::string& neighbour, const std::string& identity) {
    if (contains(identity))
        return;
    const auto place = contains(neighbour) ? rank(neighbour) : 0;
    identities_.insert(identities_.begin() + static_cast<std::ptrdiff_t>(place), identity);
}

void StatusItemOrder::moveRightOf(const std::string& neighbour, const std::string& identity) {
    if (identity == neighbour || !contains(neighbour) || !contains(identity))
        return;
    remove(identity);
    addRightOf(neighbour, identity);
}

void StatusItemOrder::moveLeftOf(const std::string& neighbour, const std::string& identity) {
    if (identity == neighbour || !contains(neighbour) || !contains(identity))
        return;
    remove(identity);
    identities_.insert(identities_.begin() + static_cast<std::ptrdiff_t>(rank(neighbour) + 1), identity);
}

void StatusItemOrder::remove(const std::string& identity) {
    identities_.erase(std::remove(identities_.begin(), identities_.end(), identity), identities_.end());
}

std::vector<double> layOutStatusItems(double rightEdge, const std::vector<double>& lengths) {
    std::vector<double> leftEdges;
    leftEdges.reserve(lengths.size());
    for (const double length : lengths) {
        rightEdge -= length;
        leftEdges.push_back(rightEdge);
    }
    return leftEdges;
}

}  // namespace velmo
