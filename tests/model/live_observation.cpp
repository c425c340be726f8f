#include "model/live_menu_bar.h"

#include <cmath>
#include <utility>

namespace velmo {

namespace {

std::string nameOfSymbol(const Image& image, const Symbol& symbol) {
    constexpr double pointSize = 12;
    const bool proper = symbol.pointSize == pointSize && symbol.weight == FontWeight::semibold &&
                        !image.isTemplate && image.accessibilityDescription == "Velmo";
    return proper ? symbol.name : symbol.name + " in a wrong form";
}

std::string nameOfFridge(const Image& image, const Drawing& drawing) {
    constexpr std::size_t bodyAndOpening = 2;
    constexpr std::size_t dots = 3;
    const std::size_t elements = drawing.fills.empty() ? 0 : drawing.fills.front().path.size();
    if (!image.isTemplate || image.accessibilityDescription != "velmo" || drawing.size != Size{18, 18})
        return "a fridge in a wrong form";
    if (elements == bodyAndOpening)
        return "fridge";
    return elements == bodyAndOpening + dots ? "fridge with dots" : "a fridge of " + std::to_string(elements);
}

std::string nameOfToggleImage(const std::optional<Image>& image) {
    if (!image)
        return "";
    if (const auto* symbol = std::get_if<Symbol>(&image->content))
        return nameOfSymbol(*image, *symbol);
    return nameOfFridge(*image, std::get<Drawing>(image->content));
}

std::string nameOfDividerImage(const std::optional<Image>& image) {
    return image ? image->accessibilityDescription : "";
}

std::string namesOf(const std::vector<MenuBarItemInfo>& items) {
    std::string names;
    for (const MenuBarItemInfo& item : items)
        names += item.ownerName + ' ';
    return names;
}

std::string fourCharacters(std::uint32_t code) {
    std::string text;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        text += static_cast<char>((code >> shift) & 0xFFU);
    return text;
}

}  // namespace

SimulatedStatusItem& LiveMenuBar::item(OwnItem item) {
    return *desktop_.statusBar().item(nameOf(item));
}

bool LiveMenuBar::isHoverTracked() {
    constexpr TrackingAreaOptions options = 641;
    const auto areas = desktop_.statusBar().trackingAreas();
    return areas.size() == 1 && areas.front().first == options &&
           areas.front().second == &item(OwnItem::toggle);
}

std::string LiveMenuBar::stateOfClock() {
    if (desktop_.statusBar().item(nameOf(OwnItem::clock)) == nullptr)
        return "off";
    const auto& popovers = desktop_.windows().popovers();
    return popovers.empty() || !popovers.front()->isShown() ? "on" : "on, with its calendar";
}

std::string LiveMenuBar::describeSnapshot() {
    const auto& snapshot = manager_->snapshot();
    std::string text = namesOf(snapshot.hidden) + "| " + namesOf(snapshot.alwaysHidden) + "| ";
    // In alphabetical order.
    for (const auto& [item, name] : {std::pair("always hidden", "A "), std::pair("hidden", "H ")}) {
        if (snapshot.images.contains(windowOf(item)))
            text += name;
    }
    return text;
}

Observation LiveMenuBar::observe() {
    auto& toggle = item(OwnItem::toggle);
    auto& hidden = item(OwnItem::hiddenDivider);
    auto& alwaysHidden = item(OwnItem::alwaysHiddenDivider);
    Observation seen;
    seen.level = manager_->revealLevel();
    seen.toggleLength = toggle.length();
    seen.hiddenDividerLength = hidden.length();
    seen.alwaysHiddenDividerLength = alwaysHidden.length();
    seen.hiddenDividerEnabled = hidden.button()->isEnabled();
    seen.alwaysHiddenDividerEnabled = alwaysHidden.button()->isEnabled();
    seen.alwaysHiddenDividerVisible = alwaysHidden.isVisible();
    seen.toggleImage = nameOfToggleImage(toggle.button()->image());
    seen.hiddenDividerImage = nameOfDividerImage(hidden.button()->image());
    seen.alwaysHiddenDividerImage = nameOfDividerImage(alwaysHidden.button()->image());
    seen.clock = stateOfClock();
    seen.hoverTracked = isHoverTracked();
    seen.pointerInMenuBar = manager_->isPointerInMenuBar();
    seen.posted = desktop_.runLoop().postedCount();
    seen.timers = desktop_.runLoop().timerCount();
    constexpr double perSecond = 1e9;
    if (const auto next = desktop_.runLoop().nextTimer())
        seen.nanosecondsToNextTimer = std::llround(*next * perSecond);
    // Items that are hidden keep the place that they have at the end of a step.
    desktop_.statusBar().slots();
    if (const auto* panel = desktop_.windows().visiblePanel())
        seen.panel = Point{panel->frame().x, panel->frame().y};
    seen.snapshot = describeSnapshot();
    const auto& posted = desktop_.eventPoster().posted();
    for (; postedEventsSeen_ < posted.size(); ++postedEventsSeen_)
        seen.clicks += describeClick(posted[postedEventsSeen_].type, posted[postedEventsSeen_].location);
    seen.prompts = desktop_.accessibility().promptCount();
    for (const auto& key : desktop_.hotKeys().held())
        seen.heldKeys += describeHeldKey(fourCharacters(key.id.signature), key.id.id, key.keyCode,
                                         key.modifiers, key.options);
    const auto& calls = desktop_.application().calls();
    for (; applicationCallsSeen_ < calls.size(); ++applicationCallsSeen_) {
        if (calls[applicationCallsSeen_] == SimulatedApplication::Call::terminate)
            account_.quit();
    }
    seen.account = account_.take();
    return seen;
}

}  // namespace velmo
