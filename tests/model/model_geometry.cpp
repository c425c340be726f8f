#include "model/model_geometry.h"

#include <algorithm>

namespace velmo {

bool ModelGeometry::isPointerInMenuBar() const {
    constexpr double lowest = 24;
    const double barlessHeight = std::max(thickness, lowest);
    return std::any_of(screens.begin(), screens.end(), [&](const ArrangedScreen& screen) {
        const bool hasBar = !menuBarHidden && screen.menuBarHeight > 0;
        const double height = hasBar ? screen.menuBarHeight : barlessHeight;
        const double top = screen.y + screen.height;
        // The top edge and the left one belong to the menu bar.
        return pointerX >= screen.x && pointerX < screen.x + screen.width && pointerY <= top &&
               pointerY > top - height;
    });
}

std::optional<ModelGeometry::Span> ModelGeometry::spanOf(OwnItem item) const {
    if (screens.empty() || !isVisible(item))
        return std::nullopt;
    // One other item to the right of each own item.
    double right = screens.front().x + screens.front().width - otherItemWidth;
    double width = toggleWidth;
    if (item != OwnItem::toggle) {
        right -= toggleWidth + otherItemWidth;
        width = hiddenDividerLength;
    }
    if (item == OwnItem::alwaysHiddenDivider || item == OwnItem::clock) {
        right -= hiddenDividerLength + otherItemWidth;
        width = alwaysHiddenDividerLength;
    }
    if (item == OwnItem::clock) {
        right -= (alwaysHiddenDividerVisible ? alwaysHiddenDividerLength : 0) + otherItemWidth;
        width = *clockWidth;
    }
    const Span span{right - width, right};
    return isOnAnyScreen(span) ? std::optional(span) : std::nullopt;
}

bool ModelGeometry::isVisible(OwnItem item) const {
    if (item == OwnItem::clock)
        return clockWidth.has_value();
    return item != OwnItem::alwaysHiddenDivider || alwaysHiddenDividerVisible;
}

ModelGeometry::Span ModelGeometry::hiddenItem() const {
    // Right of it: an item at the right, the toggle, an item that is shown, and the divider.
    const double right =
        screens.front().x + screens.front().width - toggleWidth - 2 * otherItemWidth - hiddenDividerLength;
    return {right - otherItemWidth, right};
}

ModelGeometry::Span ModelGeometry::alwaysHiddenItem() const {
    const double right = hiddenItem().minX - (alwaysHiddenDividerVisible ? alwaysHiddenDividerLength : 0);
    return {right - otherItemWidth, right};
}

std::optional<double> ModelGeometry::alwaysHiddenDividerMinX() const {
    if (alwaysHiddenDividerVisible)
        return hiddenItem().minX - alwaysHiddenDividerLength;
    return alwaysHiddenDividerLeftBehind;
}

bool ModelGeometry::isOnPrimaryScreen(const Span& span) const {
    const ArrangedScreen& primary = screens.front();
    return span.minX < primary.x + primary.width && span.maxX > primary.x;
}

void ModelGeometry::setAlwaysHiddenDividerVisible(bool visible) {
    if (alwaysHiddenDividerVisible && !visible)
        alwaysHiddenDividerLeftBehind =
            screens.empty() ? std::nullopt : std::optional(*alwaysHiddenDividerMinX());
    alwaysHiddenDividerVisible = visible;
}

void ModelGeometry::setScreens(std::span<const ArrangedScreen> arrangement) {
    screens = arrangement;
    if (screens.empty())
        alwaysHiddenDividerLeftBehind.reset();
}

bool ModelGeometry::isOnAnyScreen(const Span& span) const {
    const double top = screens.front().y + screens.front().height;
    return std::any_of(screens.begin(), screens.end(), [&](const ArrangedScreen& screen) {
        return span.minX < screen.x + screen.width && span.maxX > screen.x && screen.y < top &&
               screen.y + screen.height > top - thickness;
    });
}

std::optional<OwnItem> ModelGeometry::itemUnderPointer() const {
    if (screens.empty())
        return std::nullopt;
    const double top = screens.front().y + screens.front().height;
    // The lower edge and the left one belong to an item.
    if (pointerY >= top || pointerY < top - thickness)
        return std::nullopt;
    for (const OwnItem item :
         {OwnItem::toggle, OwnItem::hiddenDivider, OwnItem::alwaysHiddenDivider, OwnItem::clock}) {
        const auto span = spanOf(item);
        if (span && pointerX >= span->minX && pointerX < span->maxX)
            return item;
    }
    return std::nullopt;
}

}  // namespace velmo
