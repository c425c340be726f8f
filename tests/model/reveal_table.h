#pragma once

#include "menubar/reveal_level.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace velmo {

/// What has been found to happen once every condition on it was weighed.
enum class Cause {
    toggleClick,
    toggleOptionClick,
    toggleRightClick,
    togglePanelClick,
    dividerClick,
    dividerRightClick,
    scroll,
    scrollTooWeak,
    scrollTooSoon,
    hover,
    panelHover,
    rehide,
    rehidePutOffByPointer,
    rehidePutOffByMenu,
    clickOutside,
    clickOutsidePutOff,
    placementWithAlwaysHidden,
    placementWithoutAlwaysHidden,
    alwaysHiddenOn,
    alwaysHiddenOff,
    styleChange,
    delayChange,
    applyAgain,
    restartAgain,
    menuToggleHidden,
    menuToggleAlwaysHidden,
    menuClosed,
    shortcutToggleHidden,
    shortcutsChange,
    panelWithAccess,
    panelWithoutAccess,
    panelClosed,
    rehidePutOffByPanel,
    refreshWithAlwaysHidden,
    refreshWithoutAlwaysHidden,
    refreshOver,
    activationOfHidden,
    activationOfAlwaysHidden,
    activationOver,
};

/// What follows a transition.
enum class Effect { nothing, applies, restartsTimer, stopsTimer, retries };

struct Row {
    Cause cause;
    RevealLevel from;
    RevealLevel to;
    Effect effect;
};

/// How a level shows.
struct Appearance {
    double hiddenDividerLength;
    double alwaysHiddenDividerLength;
    bool toggleRevealed;
};

inline constexpr std::size_t rowCount = 110;

/// Every transition there is. A cause that is missing for a level cannot happen at it.
const std::array<Row, rowCount>& revealTable();
/// The row's place in the table. Stops the test where there is none.
std::size_t rowOf(Cause cause, RevealLevel from);
const Appearance& appearanceOf(RevealLevel level);

std::string_view nameOf(Cause cause);
std::string_view nameOf(RevealLevel level);
std::string describe(const Row& row);

}  // namespace velmo
