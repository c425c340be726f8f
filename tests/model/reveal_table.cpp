#include "model/reveal_table.h"

#include <stdexcept>

namespace velmo {

namespace {

using enum Cause;
using enum Effect;

constexpr auto none = RevealLevel::none;
constexpr auto hidden = RevealLevel::hidden;
constexpr auto all = RevealLevel::all;

constexpr std::array<Row, rowCount> table{{
    {toggleClick, none, hidden, applies},
    {toggleClick, hidden, none, applies},
    {toggleClick, all, none, applies},
    {toggleOptionClick, none, all, applies},
    {toggleOptionClick, hidden, all, applies},
    {toggleOptionClick, all, none, applies},
    {toggleRightClick, none, none, stopsTimer},
    {toggleRightClick, hidden, hidden, stopsTimer},
    {toggleRightClick, all, all, stopsTimer},
    {togglePanelClick, none, none, nothing},
    {togglePanelClick, hidden, hidden, nothing},
    {togglePanelClick, all, all, nothing},
    {dividerClick, hidden, none, applies},
    {dividerClick, all, none, applies},
    {dividerRightClick, hidden, hidden, stopsTimer},
    {dividerRightClick, all, all, stopsTimer},
    {scroll, none, hidden, applies},
    {scroll, hidden, none, applies},
    {scroll, all, none, applies},
    {scrollTooWeak, none, none, nothing},
    {scrollTooWeak, hidden, hidden, nothing},
    {scrollTooWeak, all, all, nothing},
    {scrollTooSoon, none, none, nothing},
    {scrollTooSoon, hidden, hidden, nothing},
    {scrollTooSoon, all, all, nothing},
    {hover, none, hidden, applies},
    {hover, hidden, hidden, restartsTimer},
    {hover, all, hidden, applies},
    {panelHover, none, none, nothing},
    {panelHover, hidden, hidden, nothing},
    {panelHover, all, all, nothing},
    {rehide, none, none, nothing},
    {rehide, hidden, none, applies},
    {rehide, all, none, applies},
    {rehidePutOffByPointer, none, none, retries},
    {rehidePutOffByPointer, hidden, hidden, retries},
    {rehidePutOffByPointer, all, all, retries},
    {rehidePutOffByMenu, none, none, retries},
    {rehidePutOffByMenu, hidden, hidden, retries},
    {rehidePutOffByMenu, all, all, retries},
    {clickOutside, none, none, nothing},
    {clickOutside, hidden, none, applies},
    {clickOutside, all, none, applies},
    {clickOutsidePutOff, hidden, hidden, nothing},
    {clickOutsidePutOff, all, all, nothing},
    {placementWithAlwaysHidden, none, all, applies},
    {placementWithAlwaysHidden, hidden, all, applies},
    {placementWithAlwaysHidden, all, all, applies},
    {placementWithoutAlwaysHidden, none, hidden, applies},
    {placementWithoutAlwaysHidden, hidden, hidden, applies},
    {placementWithoutAlwaysHidden, all, hidden, applies},
    {alwaysHiddenOn, none, none, applies},
    {alwaysHiddenOn, hidden, hidden, applies},
    {alwaysHiddenOn, all, all, applies},
    {alwaysHiddenOff, none, none, applies},
    {alwaysHiddenOff, hidden, hidden, applies},
    {alwaysHiddenOff, all, hidden, applies},
    {styleChange, none, none, applies},
    {styleChange, hidden, hidden, applies},
    {styleChange, all, all, applies},
    {delayChange, none, none, restartsTimer},
    {delayChange, hidden, hidden, restartsTimer},
    {delayChange, all, all, restartsTimer},
    {applyAgain, none, none, applies},
    {applyAgain, hidden, hidden, applies},
    {applyAgain, all, all, applies},
    {restartAgain, none, none, restartsTimer},
    {restartAgain, hidden, hidden, restartsTimer},
    {restartAgain, all, all, restartsTimer},
    {menuToggleHidden, none, hidden, applies},
    {menuToggleHidden, hidden, none, applies},
    {menuToggleHidden, all, none, applies},
    {menuToggleAlwaysHidden, none, all, applies},
    {menuToggleAlwaysHidden, hidden, all, applies},
    {menuToggleAlwaysHidden, all, none, applies},
    {menuClosed, none, none, restartsTimer},
    {menuClosed, hidden, hidden, restartsTimer},
    {menuClosed, all, all, restartsTimer},
    {shortcutToggleHidden, none, hidden, applies},
    {shortcutToggleHidden, hidden, none, applies},
    {shortcutToggleHidden, all, none, applies},
    {shortcutsChange, none, none, nothing},
    {shortcutsChange, hidden, hidden, nothing},
    {shortcutsChange, all, all, nothing},
    {panelWithAccess, none, none, nothing},
    {panelWithAccess, hidden, hidden, nothing},
    {panelWithAccess, all, all, nothing},
    {panelWithoutAccess, none, none, nothing},
    {panelWithoutAccess, hidden, hidden, nothing},
    {panelWithoutAccess, all, all, nothing},
    {panelClosed, none, none, nothing},
    {panelClosed, hidden, hidden, nothing},
    {panelClosed, all, all, nothing},
    {rehidePutOffByPanel, none, none, retries},
    {rehidePutOffByPanel, hidden, hidden, retries},
    {rehidePutOffByPanel, all, all, retries},
    {refreshWithAlwaysHidden, none, all, applies},
    {refreshWithoutAlwaysHidden, none, hidden, applies},
    {refreshOver, none, none, applies},
    {refreshOver, hidden, none, applies},
    {refreshOver, all, none, applies},
    {activationOfHidden, none, hidden, applies},
    {activationOfHidden, hidden, hidden, nothing},
    {activationOfHidden, all, all, nothing},
    {activationOfAlwaysHidden, none, all, applies},
    {activationOfAlwaysHidden, hidden, all, applies},
    {activationOfAlwaysHidden, all, all, nothing},
    {activationOver, none, none, restartsTimer},
    {activationOver, hidden, hidden, restartsTimer},
    {activationOver, all, all, restartsTimer},
}};

constexpr std::array<Appearance, 3> appearances{{
    {10000, 10000, false},
    {12, 10000, true},
    {12, 12, true},
}};

constexpr std::array<std::string_view, 39> causeNames{"toggleClick",
                                                      "toggleOptionClick",
                                                      "toggleRightClick",
                                                      "togglePanelClick",
                                                      "dividerClick",
                                                      "dividerRightClick",
                                                      "scroll",
                                                      "scrollTooWeak",
                                                      "scrollTooSoon",
                                                      "hover",
                                                      "panelHover",
                                                      "rehide",
                                                      "rehidePutOffByPointer",
                                                      "rehidePutOffByMenu",
                                                      "clickOutside",
                                                      "clickOutsidePutOff",
                                                      "placementWithAlwaysHidden",
                                                      "placementWithoutAlwaysHidden",
                                                      "alwaysHiddenOn",
                                                      "alwaysHiddenOff",
                                                      "styleChange",
                                                      "delayChange",
                                                      "applyAgain",
                                                      "restartAgain",
                                                      "menuToggleHidden",
                                                      "menuToggleAlwaysHidden",
                                                      "menuClosed",
                                                      "shortcutToggleHidden",
                                                      "shortcutsChange",
                                                      "panelWithAccess",
                                                      "panelWithoutAccess",
                                                      "panelClosed",
                                                      "rehidePutOffByPanel",
                                                      "refreshWithAlwaysHidden",
                                                      "refreshWithoutAlwaysHidden",
                                                      "refreshOver",
                                                      "activationOfHidden",
                                                      "activationOfAlwaysHidden",
                                                      "activationOver"};

constexpr std::array<std::string_view, 3> levelNames{"none", "hidden", "all"};

}  // namespace

const std::array<Row, rowCount>& revealTable() {
    return table;
}

std::size_t rowOf(Cause cause, RevealLevel from) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (table[i].cause == cause && table[i].from == from)
            return i;
    }
    throw std::logic_error(std::string(nameOf(cause)) + " cannot happen at " + std::string(nameOf(from)));
}

const Appearance& appearanceOf(RevealLevel level) {
    return appearances[static_cast<std::size_t>(level)];
}

std::string_view nameOf(Cause cause) {
    return causeNames[static_cast<std::size_t>(cause)];
}

std::string_view nameOf(RevealLevel level) {
    return levelNames[static_cast<std::size_t>(level)];
}

std::string describe(const Row& row) {
    std::string text(nameOf(row.cause));
    return text.append(": ").append(nameOf(row.from)).append(" -> ").append(nameOf(row.to));
}

}  // namespace velmo
