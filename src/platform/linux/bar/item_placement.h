#pragma once

#include "status_item_order.h"

#include <cstddef>
#include <string>
#include <vector>

/// Where items go that the user did not place: next to whom, and where they may not be dropped.
namespace velmo::item_placement {

/// Puts an application that the bar has never seen right of the hidden divider: visible, so that
/// nothing vanishes unasked.
void placeApplication(StatusItemOrder& order, const std::string& identity);

/// Puts a new item of our own at the far left, but right of those that have to lie left of it; one that is
/// known and lies right of what it may not pass is put left of that.
void placeOwnItem(StatusItemOrder& order, const std::string& identity);

/// True for the name of the item that reveals and hides others.
bool isToggle(const std::string& identity);

/// True for the name of the divider left of which the others lie that are hidden and revealed.
bool isHiddenDivider(const std::string& identity);

/// True for the names of our own items.
bool isOwnName(const std::string& identity);

/// How many identities are kept of items that are away.
struct Memory {
    std::size_t most = 0;
    std::size_t mostOfOneProgram = 0;
};

/// Forgets items that are away until no more of them are left than are kept: first the visible ones from the
/// left, where new items come, so that whoever has one name after the other wears out none but those; then
/// the hidden ones, which the user has put there.
void forgetAbsent(StatusItemOrder& order, const std::vector<std::string>& present, Memory memory);

/// An item that lies in the bar, in pixels of the bar.
struct PlacedItem {
    std::string identity;
    /// Of the left edge.
    int x = 0;
    int width = 0;
};

/// The place among `others` (from right to left, without the dragged item) at which the dragged item
/// comes to lie where it hovers now: right of the item with the returned index, or left of all of them.
/// `rightEdge` is that of the rightmost place. An item at least `longItem` wide hides what lies left of
/// it; dropping on it means to hide the dragged item, too. The toggle stays right of the dividers, and
/// the always-hidden divider left of the other: else the section they stand for could not be reached.
std::size_t dropIndex(const std::vector<PlacedItem>& others, const PlacedItem& dragged, int rightEdge,
                      int longItem);

/// Moves the dragged item in the order to the place that `dropIndex` has named.
void drop(StatusItemOrder& order, const std::vector<PlacedItem>& others, const std::string& dragged,
          std::size_t index);

}  // namespace velmo::item_placement
