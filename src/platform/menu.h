#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmo {

/// One entry of a menu.
class MenuItem {
public:
    /// `keyEquivalent` is the character that chooses the item while Command is held, as the menu shows it;
    /// empty for none.
    MenuItem(std::string title, std::string keyEquivalent)
        : title_(std::move(title)), keyEquivalent_(std::move(keyEquivalent)) {}
    virtual ~MenuItem() = default;
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;

    const std::string& title() const { return title_; }
    const std::string& keyEquivalent() const { return keyEquivalent_; }
    /// The user has chosen the item.
    virtual void performAction() = 0;

private:
    std::string title_;
    std::string keyEquivalent_;
};

struct Menu {
    /// From top to bottom. Null stands for a separator.
    std::vector<std::shared_ptr<MenuItem>> items;
};

}  // namespace velmo
