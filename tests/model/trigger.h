#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace velmo {

/// What a step of the walk does.
enum class Trigger {
    advance,
    runPosted,
    movePointer,
    clickItem,
    pressItem,
    releaseItem,
    otherButtonOnItem,
    clickAtPointer,
    pressAtPointer,
    releaseAtPointer,
    otherButtonElsewhere,
    handToggleEvent,
    scroll,
    openMenu,
    closeMenu,
    setWindowServer,
    setAutoRehide,
    setRehideDelay,
    setHideOnClickOutside,
    setShowOnHover,
    setShowOnScroll,
    setAlwaysHiddenEnabled,
    setClockEnabled,
    setClickAction,
    setToggleIconStyle,
    revealForClockPlacement,
    applyRevealLevel,
    restartRehideTimer,
    scheduleRehideTimer,
    setMenuBarHidden,
    setScreens,
    setThickness,
    setTimeOfDay,
    fireTimer,
    setHotkey,
    setPanelHotkey,
    setRefusal,
    pressShortcut,
    reportPress,
    setScreenCapture,
    pressEscape,
    setRefreshPanelOnOpen,
    activateEntry,
    setTrusted,
    setCaptureTime,
};

struct TriggerInfo {
    Trigger trigger;
    std::string_view name;
    /// How often it is chosen, relative to the others.
    unsigned weight;
};

/// In the order of the enumeration.
inline constexpr std::array<TriggerInfo, 45> triggers{{
    {Trigger::advance, "advance", 260},
    {Trigger::runPosted, "runPosted", 120},
    {Trigger::movePointer, "movePointer", 160},
    {Trigger::clickItem, "clickItem", 90},
    {Trigger::pressItem, "pressItem", 12},
    {Trigger::releaseItem, "releaseItem", 14},
    {Trigger::otherButtonOnItem, "otherButtonOnItem", 6},
    {Trigger::clickAtPointer, "clickAtPointer", 70},
    {Trigger::pressAtPointer, "pressAtPointer", 10},
    {Trigger::releaseAtPointer, "releaseAtPointer", 10},
    {Trigger::otherButtonElsewhere, "otherButtonElsewhere", 6},
    {Trigger::handToggleEvent, "handToggleEvent", 10},
    {Trigger::scroll, "scroll", 80},
    {Trigger::openMenu, "openMenu", 25},
    {Trigger::closeMenu, "closeMenu", 35},
    {Trigger::setWindowServer, "setWindowServer", 3},
    {Trigger::setAutoRehide, "setAutoRehide", 12},
    {Trigger::setRehideDelay, "setRehideDelay", 12},
    {Trigger::setHideOnClickOutside, "setHideOnClickOutside", 10},
    {Trigger::setShowOnHover, "setShowOnHover", 14},
    {Trigger::setShowOnScroll, "setShowOnScroll", 10},
    {Trigger::setAlwaysHiddenEnabled, "setAlwaysHiddenEnabled", 16},
    {Trigger::setClockEnabled, "setClockEnabled", 24},
    {Trigger::setClickAction, "setClickAction", 12},
    {Trigger::setToggleIconStyle, "setToggleIconStyle", 10},
    {Trigger::revealForClockPlacement, "revealForClockPlacement", 14},
    {Trigger::applyRevealLevel, "applyRevealLevel", 4},
    {Trigger::restartRehideTimer, "restartRehideTimer", 4},
    {Trigger::scheduleRehideTimer, "scheduleRehideTimer", 2},
    {Trigger::setMenuBarHidden, "setMenuBarHidden", 5},
    {Trigger::setScreens, "setScreens", 6},
    {Trigger::setThickness, "setThickness", 4},
    {Trigger::setTimeOfDay, "setTimeOfDay", 2},
    {Trigger::fireTimer, "fireTimer", 10},
    {Trigger::setHotkey, "setHotkey", 24},
    {Trigger::setPanelHotkey, "setPanelHotkey", 24},
    {Trigger::setRefusal, "setRefusal", 12},
    {Trigger::pressShortcut, "pressShortcut", 60},
    {Trigger::reportPress, "reportPress", 12},
    {Trigger::setScreenCapture, "setScreenCapture", 8},
    {Trigger::pressEscape, "pressEscape", 6},
    {Trigger::setRefreshPanelOnOpen, "setRefreshPanelOnOpen", 6},
    {Trigger::activateEntry, "activateEntry", 12},
    {Trigger::setTrusted, "setTrusted", 4},
    {Trigger::setCaptureTime, "setCaptureTime", 12},
}};

std::string_view nameOf(Trigger trigger);

}  // namespace velmo
