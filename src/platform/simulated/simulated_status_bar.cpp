#include "simulated/simulated_status_bar.h"

#include <algorithm>
#include <utility>

namespace velmo {

SimulatedStatusBar::SimulatedStatusBar(const SimulatedScreens& screens, SimulatedMenus& menus)
    : screens_(screens), menus_(menus) {}

SimulatedStatusBar::~SimulatedStatusBar() = default;

std::unique_ptr<StatusItem> SimulatedStatusBar::makeStatusItem(double length) {
    auto item = std::make_unique<SimulatedStatusItem>(*this, length, !refusesButtons_);
    auto slot = std::make_unique<StatusItemSlot>();
    slot->windowNumber = nextWindowNumber_++;
    slot->identity = "unnamed " + std::to_string(slot->windowNumber);
    slot->own = item.get();
    order_.addAtFarLeft(slot->identity);
    slots_.push_back(std::move(slot));
    reordered();
    if (hidesNewItems_)
        item->setVisible(false);
    return item;
}

bool SimulatedStatusBar::isOn(const Screen& screen) const {
    return std::find(awayFrom_.begin(), awayFrom_.end(), screen.frame) == awayFrom_.end();
}

void SimulatedStatusBar::setThickness(double thickness) {
    thickness_ = thickness;
    changed();
}

void SimulatedStatusBar::setSpacing(double spacing) {
    spacing_ = spacing;
    changed();
}

SimulatedStatusItem* SimulatedStatusBar::item(std::string_view autosaveName) {
    const auto* slot = find(autosaveName);
    return slot != nullptr ? slot->own : nullptr;
}

std::vector<SimulatedStatusItem*> SimulatedStatusBar::items() const {
    std::vector<SimulatedStatusItem*> items;
    for (const auto& slot : slots_) {
        if (slot->own != nullptr)
            items.push_back(slot->own);
    }
    return items;
}

SimulatedStatusItem* SimulatedStatusBar::itemAt(const Point& point) {
    for (const auto& slot : slots()) {
        if (slot->own != nullptr && slot->own->isVisible() && slot->frame && slot->frame->contains(point) &&
            isOnScreen(*slot))
            return slot->own;
    }
    return nullptr;
}

void SimulatedStatusBar::addOther(const OtherStatusItem& item) {
    if (find(item.identity) != nullptr)
        return;
    auto slot = std::make_unique<StatusItemSlot>();
    slot->identity = item.identity;
    slot->other = item;
    slot->windowNumber = nextWindowNumber_++;
    order_.addAtFarLeft(item.identity);
    slots_.push_back(std::move(slot));
    reordered();
}

void SimulatedStatusBar::removeOther(std::string_view identity) {
    std::erase_if(
        slots_, [identity](const auto& slot) { return slot->own == nullptr && slot->identity == identity; });
    reordered();
}

void SimulatedStatusBar::setOtherWidth(std::string_view identity, double width) {
    auto* slot = find(identity);
    if (slot == nullptr || slot->own != nullptr)
        return;
    slot->other.width = width;
    changed();
}

void SimulatedStatusBar::setOtherTitle(std::string_view identity, const std::optional<std::string>& title) {
    auto* slot = find(identity);
    if (slot == nullptr || slot->own != nullptr)
        return;
    slot->other.title = title;
    changed();
}

bool SimulatedStatusBar::moveRightOf(const std::string& neighbour, const std::string& identity) {
    if (!order_.contains(neighbour) || !order_.contains(identity))
        return false;
    order_.moveRightOf(neighbour, identity);
    reordered();
    return true;
}

bool SimulatedStatusBar::moveLeftOf(const std::string& neighbour, const std::string& identity) {
    if (!order_.contains(neighbour) || !order_.contains(identity))
        return false;
    order_.moveLeftOf(neighbour, identity);
    reordered();
    return true;
}

const std::vector<std::unique_ptr<StatusItemSlot>>& SimulatedStatusBar::slots() {
    layOut();
    return slots_;
}

const StatusItemSlot* SimulatedStatusBar::slot(std::string_view identity) {
    layOut();
    return find(identity);
}

bool SimulatedStatusBar::isOnScreen(const StatusItemSlot& slot) const {
    const bool visible = slot.own == nullptr || slot.own->isVisible();
    return visible && screenOf(slot).has_value();
}

std::optional<Screen> SimulatedStatusBar::screenOf(const StatusItemSlot& slot) const {
    if (!slot.frame)
        return std::nullopt;
    const auto& screens = screens_.list();
    const auto found = std::find_if(screens.begin(), screens.end(), [&slot](const Screen& screen) {
        return screen.frame.intersects(*slot.frame);
    });
    return found != screens.end() ? std::optional(*found) : std::nullopt;
}

StatusItemSlot* SimulatedStatusBar::find(std::string_view identity) {
    const auto found = std::find_if(slots_.begin(), slots_.end(),
                                    [identity](const auto& slot) { return slot->identity == identity; });
    return found != slots_.end() ? found->get() : nullptr;
}

StatusItemSlot& SimulatedStatusBar::slotOf(const SimulatedStatusItem& item) {
    return **std::find_if(slots_.begin(), slots_.end(),
                          [&item](const auto& slot) { return slot->own == &item; });
}

void SimulatedStatusBar::note(const SimulatedStatusItem& item, const std::string& request) {
    if (journal_)
        journal_->push_back(item.autosaveName() + ": " + request);
}

void SimulatedStatusBar::rename(SimulatedStatusItem& item, const std::string& name) {
    StatusItemSlot& slot = slotOf(item);
    if (slot.identity == name)
        return;
    order_.addRightOf(slot.identity, name);
    order_.remove(slot.identity);
    slot.identity = name;
    reordered();
}

void SimulatedStatusBar::remove(const SimulatedStatusItem& item) {
    StatusItemSlot& slot = slotOf(item);
    if (item.autosaveName().empty())
        order_.remove(slot.identity);
    std::erase_if(slots_, [&item](const auto& candidate) { return candidate->own == &item; });
    reordered();
}

void SimulatedStatusBar::changed() {
    ++generation_;
}

void SimulatedStatusBar::reordered() {
    isSorted_ = false;
    changed();
}

void SimulatedStatusBar::sort() {
    std::vector<std::pair<std::size_t, StatusItemSlot*>> ranked;
    ranked.reserve(slots_.size());
    for (const auto& slot : slots_) {
        if (slot->own == nullptr || slot->own->isVisible())
            ranked.emplace_back(order_.rank(slot->identity), slot.get());
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    sorted_.clear();
    for (const auto& [rank, slot] : ranked)
        sorted_.push_back(slot);
    isSorted_ = true;
}

void SimulatedStatusBar::layOut() {
    if (laidOut_ == generation())
        return;
    laidOut_ = generation();
    if (screens_.list().empty()) {
        for (const auto& slot : slots_)
            slot->frame.reset();
        return;
    }
    if (!isSorted_)
        sort();
    lengths_.clear();
    for (const StatusItemSlot* slot : sorted_)
        lengths_.push_back((slot->own != nullptr ? slot->own->width() : slot->other.width) + spacing_);
    const Rect& primary = screens_.list().front().frame;
    const auto leftEdges = layOutStatusItems(primary.maxX(), lengths_);
    for (std::size_t i = 0; i < sorted_.size(); ++i)
        sorted_[i]->frame =
            Rect{leftEdges[i] + spacing_, primary.maxY() - thickness_, lengths_[i] - spacing_, thickness_};
}

}  // namespace velmo
