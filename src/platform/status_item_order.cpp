#include "status_item_order.h"

#include <algorithm>
#include <utility>

namespace velmo {

StatusItemOrder::StatusItemOrder(const std::vector<std::string>& rightToLeft) {
    for (const auto& identity : rightToLeft) {
        if (!identity.empty())
            addAtFarLeft(identity);
    }
}

bool StatusItemOrder::contains(const std::string& identity) const {
    return ranks_.contains(identity);
}

std::size_t StatusItemOrder::rank(const std::string& identity) const {
    if (!std::exchange(ranksAreCounted_, true)) {
        for (std::size_t rank = 0; rank < identities_.size(); ++rank)
            ranks_[identities_[rank]] = rank;
    }
    const auto found = ranks_.find(identity);
    return found == ranks_.end() ? identities_.size() : found->second;
}

void StatusItemOrder::addAtFarLeft(const std::string& identity) {
    if (!ranks_.try_emplace(identity, identities_.size()).second)
        return;
    identities_.push_back(identity);
    ++revision_;
}

void StatusItemOrder::addRightOf(const std::string& neighbour, const std::string& identity) {
    if (!contains(identity))
        insert(contains(neighbour) ? find(neighbour) : identities_.begin(), identity);
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
    insert(find(neighbour) + 1, identity);
}

void StatusItemOrder::remove(const std::string& identity) {
    if (!contains(identity))
        return;
    const auto place = find(identity);
    ranks_.erase(identity);
    identities_.erase(place);
    ranksAreCounted_ = false;
    ++revision_;
}

StatusItemOrder::Place StatusItemOrder::find(const std::string& identity) {
    return std::find(identities_.begin(), identities_.end(), identity);
}

void StatusItemOrder::insert(Place place, const std::string& identity) {
    ranks_.emplace(identity, 0);
    identities_.insert(place, identity);
    ranksAreCounted_ = false;
    ++revision_;
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
