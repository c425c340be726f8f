#pragma once

#include "model/own_item.h"
#include "model/screen_arrangement.h"

#include <array>
#include <optional>

namespace velmo {

/// Where the program's items, the menu bars and the pointer are.
class ModelGeometry {
public:
    /// Of all widths on the bar, those of the dividers and of the clock alone vary.
    static constexpr double toggleWidth = 26;
    static constexpr double otherItemWidth = 24;

    struct Span {
        double minX = 0;
        double maxX = 0;
    };

    std::span<const ArrangedScreen> screens = screenArrangements.front();
    bool menuBarHidden = false;
    double thickness = 26;
    double pointerX = 0;
    double pointerY = 0;
    double hiddenDividerLength = 10000;
    double alwaysHiddenDividerLength = 10000;
    bool alwaysHiddenDividerVisible = false;
    /// Absent while the clock is off.
    std::optional<double> clockWidth;
    /// Where the always-hidden divider was when it became invisible, on its left.
    std::optional<double> alwaysHiddenDividerLeftBehind;

    bool isPointerInMenuBar() const;
    /// Where the item lies on the primary screen's bar. Absent while no part of it is on any screen.
    std::optional<Span> spanOf(OwnItem item) const;
    /// The place of the item that lies left of the hidden divider, and of the one that lies left of both.
    /// There is a screen.
    Span hiddenItem() const;
    Span alwaysHiddenItem() const;
    /// Absent where it was never on a screen.
    std::optional<double> alwaysHiddenDividerMinX() const;
    bool isOnPrimaryScreen(const Span& span) const;
    void setAlwaysHiddenDividerVisible(bool visible);
    void setScreens(std::span<const ArrangedScreen> arrangement);
    bool isReachable(OwnItem item) const { return spanOf(item).has_value(); }
    std::optional<OwnItem> itemUnderPointer() const;

private:
    bool isVisible(OwnItem item) const;
    bool isOnAnyScreen(const Span& span) const;
};

}  // namespace velmo
