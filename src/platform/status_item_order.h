#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace velmo {

/// The order of status items, by identity, from right to left. Items that are away keep their place,
/// so that they find it again when they return.
class StatusItemOrder {
public:
    StatusItemOrder() = default;
    /// Repeated and empty identities are dropped.
    explicit StatusItemOrder(const std::vector<std::string>& rightToLeft);

    const std::vector<std::string>& rightToLeft() const { return identities_; }
    bool contains(const std::string& identity) const;
    /// The place counted from the right, or the number of known identities where it is unknown.
    std::size_t rank(const std::string& identity) const;
    /// Another number after each change.
    std::size_t revision() const { return revision_; }

    /// Left of everything else; an identity that is known already stays where it is.
    void addAtFarLeft(const std::string& identity);
    /// Next to `neighbour` on its right, or at the far right where the neighbour is unknown; an identity
    /// that is known already stays where it is.
    void addRightOf(const std::string& neighbour, const std::string& identity);

    /// Does nothing unless both are known and differ.
    void moveRightOf(const std::string& neighbour, const std::string& identity);
    void moveLeftOf(const std::string& neighbour, const std::string& identity);
    void remove(const std::string& identity);

private:
    using Place = std::vector<std::string>::iterator;
    Place find(const std::string& identity);
    void insert(Place place, const std::string& identity);

    std::vector<std::string> identities_;
    /// Of all that are known; counted anew when somebody asks after the order has changed.
    mutable std::unordered_map<std::string, std::size_t> ranks_;
    mutable bool ranksAreCounted_ = true;
    std::size_t revision_ = 0;
};

/// Left edges of items that lie side by side from `rightEdge` leftwards. Lengths come from right to
/// left, in the unit of the edge.
std::vector<double> layOutStatusItems(double rightEdge, const std::vector<double>& lengths);

}  // namespace velmo
