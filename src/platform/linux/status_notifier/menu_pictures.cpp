#include "menu_pictures.h"

#include <algorithm>
#include <utility>

namespace velmo::status_notifier {

namespace {

constexpr std::size_t mostPictures = 200;

}  // namespace

MenuPictures::MenuPictures(IconLoader& loader, IconRequest request, MenuLayout& layout,
                           std::function<void()> onChange)
    : loader_(loader), request_(std::move(request)), layout_(layout), onChange_(std::move(onChange)) {}

void MenuPictures::replaceLayout(MenuLayout layout) {
    for (const auto& [id, icon] : layout.icons()) {
        if (auto* former = layout_.find(id))
            layout.find(id)->icon = std::move(former->icon);
    }
    layout_ = std::move(layout);
    shown_.clear();
    for (auto& [icon, picture] : pictures_)
        picture.entries.clear();
    for (const auto& [id, icon] : layout_.icons())
        show(*layout_.find(id), icon);
}

void MenuPictures::follow(std::int32_t id) {
    auto* entry = layout_.find(id);
    if (!entry)
        return;
    const auto former = shown_.find(id);
    if (former != shown_.end()) {
        former->second->entries.erase(id);
        shown_.erase(former);
    }
    const auto icon = layout_.icons().find(id);
    if (icon == layout_.icons().end())
        entry->icon = std::nullopt;
    else
        show(*entry, icon->second);
}

void MenuPictures::show(ExportedMenuEntry& entry, const MenuIcon& icon) {
    auto* found = pictureOf(icon);
    if (!found) {
        entry.icon = std::nullopt;
        return;
    }
    auto& picture = found->second;
    picture.entries.insert(entry.id);
    shown_[entry.id] = &picture;
    if (picture.isKnown)
        entry.icon = picture.image;
}

MenuPictures::Pictures::value_type* MenuPictures::pictureOf(const MenuIcon& icon) {
    const auto known = pictures_.find(icon);
    if (known != pictures_.end())
        return &*known;
    if (pictures_.size() >= mostPictures)
        std::erase_if(pictures_, [](const auto& picture) { return picture.second.entries.empty(); });
    if (pictures_.size() >= mostPictures)
        return nullptr;
    auto& added = *pictures_.try_emplace(icon).first;
    load(added);
    return &added;
}

void MenuPictures::load(Pictures::value_type& picture) {
    IconRequest request = request_;
    request.name = picture.first.name;
    request.data = picture.first.data;
    picture.second.loading = loader_.load(request, [this, &loaded = picture.second](const auto& image) {
        loaded.isKnown = true;
        loaded.image = image;
        for (const auto id : loaded.entries)
            layout_.find(id)->icon = image;
        onChange_();
    });
}

bool MenuPictures::areLoading() const {
    return std::any_of(pictures_.begin(), pictures_.end(), [](const auto& picture) {
        return !picture.second.isKnown && !picture.second.entries.empty();
    });
}

}  // namespace velmo::status_notifier
