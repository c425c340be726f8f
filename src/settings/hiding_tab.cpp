#include "settings/hiding_tab.h"

#include "settings/setting_rows.h"
#include "views/builders.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

/// Seconds.
constexpr double shortestDelay = 1;
constexpr double longestDelay = 30;

/// A delay that was stored by hand may be anything, even no number at all.
int wholeSeconds(double delay) {
    constexpr double limit = 1e9;
    return std::isnan(delay) ? 0 : static_cast<int>(std::clamp(delay, -limit, limit));
}

}  // namespace

View HidingTab::body() {
    return form({hideAgain(), show(), alwaysHidden(),
                 section("Keyboard shortcuts", {hotkey.body(), panelHotkey.body()})});
}

View HidingTab::hideAgain() const {
    return section(
        "Hide again",
        {settingToggle("Hide items again automatically", preferences_.autoRehide), delayRow(),
         settingToggle("Hide when clicking outside the menu bar", preferences_.hideOnClickOutside)});
}

View HidingTab::delayRow() const {
    constexpr double textWidth = 32;
    // Fonts of up to twice the usual size.
    constexpr double leastTextScale = 0.5;
    auto& delay = preferences_.rehideDelay;
    return hstack(std::nullopt,
                  {text("After"),
                   slider({delay.value(), shortestDelay, longestDelay, 1,
                           [&delay](double seconds) { delay.set(seconds); }})
                       .with(AccessibilityLabel{"After"}),
                   text(std::to_string(wholeSeconds(delay.value())) + " s")
                       .with(Font{.hasMonospacedDigits = true})
                       .with(SingleLine{leastTextScale})
                       .with(Frame{.width = textWidth, .alignment = HorizontalAlignment::trailing})});
}

View HidingTab::show() const {
    return section(
        "Show", {settingToggle("Show hidden items when hovering over the toggle", preferences_.showOnHover),
                 settingToggle("Show or hide by scrolling on the menu bar", preferences_.showOnScroll)});
}

View HidingTab::alwaysHidden() const {
    return section("Always hidden",
                   {settingToggle("Enable an always-hidden section", preferences_.alwaysHiddenEnabled)},
                   "Adds a second divider  ‖  further left. Icons left of it stay hidden even when you show "
                   "the hidden section. Reveal them with ⌥-click on the toggle.");
}

}  // namespace velmo
