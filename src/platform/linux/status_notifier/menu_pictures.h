#pragma once

#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/menu_layout.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>

namespace velmo::status_notifier {

/// Gives the entries of a menu their pictures, each of which is loaded once.
class MenuPictures {
public:
    /// `request` is what all of them have in common. `onChange` is called after one that was waited for has
    /// come.
    MenuPictures(IconLoader& loader, IconRequest request, MenuLayout& layout, std::function<void()> onChange);

    /// Puts another layout in the place of the present one. An entry that is in both keeps its picture until
    /// the next one has come.
    void replaceLayout(MenuLayout layout);
    /// The icon of this entry may have changed.
    void follow(std::int32_t id);
    bool areLoading() const;

private:
    struct Picture {
        /// Absent where there is none, or until it has come.
        std::optional<Image> image;
        bool isKnown = false;
        Registration loading;
        /// That show it.
        std::set<std::int32_t> entries;
    };
    using Pictures = std::map<MenuIcon, Picture>;

    void show(ExportedMenuEntry& entry, const MenuIcon& icon);
    /// Null where there is no room for one more.
    Pictures::value_type* pictureOf(const MenuIcon& icon);
    void load(Pictures::value_type& picture);

    IconLoader& loader_;
    IconRequest request_;
    MenuLayout& layout_;
    std::function<void()> onChange_;
    Pictures pictures_;
    /// By the entry's id.
    std::map<std::int32_t, Picture*> shown_;
};

}  // namespace velmo::status_notifier
