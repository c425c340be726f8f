// Settings that the user changes: they are written down, take effect, and are there after a kill.

#include "soak_session.h"

#include <algorithm>
#include <fstream>

namespace velmo::desktop {

namespace {

/// Stops of the keyboard from the tab.
constexpr int toggleIconStop = 1;
constexpr int clickActionStop = 2;
constexpr int hideAgainStop = 1;
constexpr int delayStop = 2;
constexpr int clickOutsideStop = 3;
constexpr int hoverStop = 4;
constexpr int scrollingStop = 5;
constexpr int alwaysHiddenStop = 6;
constexpr int shortcutStop = 7;
constexpr int panelShortcutStop = 8;
constexpr int clockStop = 1;
constexpr int patternStop = 3;
constexpr int spacingStop = 1;
constexpr int refreshingStop = 2;
/// Of the slider: at its beginning, where `SetUp` has it, and one step further.
constexpr std::chrono::seconds soonHiding(1);
constexpr std::chrono::seconds lateHiding(2);
/// For which a delay that is over is waited for.
constexpr milliseconds delayPatience(4000);
/// All tell the zone, and each is of a width of its own.
constexpr const char* patterns[] = {"VV HH:mm", "VV 'at' HH:mm", "VV 'it is' HH:mm"};
constexpr const char* shortcut = "ctrl+alt+k";
constexpr const char* panelShortcut = "ctrl+alt+p";
/// For which nothing opens that nobody has asked for.
constexpr milliseconds nothingOpens(500);
constexpr const char* spacingKey = "NSStatusItemSpacing";

}  // namespace

nlohmann::json SoakSession::written(const std::string& key) const {
    if (key != spacingKey)
        return readDefaults().value(key, nlohmann::json());
    // Of this host, beside what is Velmo's own.
    for (const auto& file : std::filesystem::directory_iterator(defaultsFile().parent_path())) {
        if (!file.path().filename().string().starts_with("global-"))
            continue;
        std::ifstream stream(file.path());
        const auto values = nlohmann::json::parse(stream, nullptr, false);
        return values.is_object() ? values.value(key, nlohmann::json()) : nlohmann::json();
    }
    return {};
}

void SoakSession::expectChosen(const std::string& key, const nlohmann::json& value) {
    chosen_[key] = value;
    EXPECT_TRUE(eventually([&] { return written(key) == value; }))
        << key << " is " << written(key) << " and not " << value << windows();
}

void SoakSession::expectAllChosen() const {
    for (const auto& [key, value] : chosen_)
        EXPECT_EQ(written(key), value) << key;
}

void SoakSession::pressStops(int count) {
    for (; count > 0; --count)
        xdotool({"key", "Tab"});
}

void SoakSession::switchBox(int stop, const std::string& key, bool isOn) {
    pressStops(stop);
    xdotool({"key", "space"});
    expectChosen(key, isOn);
}

void SoakSession::chooseInSettings(int tab, int stop, const std::string& press, const std::string& key,
                                   const nlohmann::json& value) {
    openSettings();
    chooseTab(tab);
    pressStops(stop);
    xdotool({"key", press});
    expectChosen(key, value);
    closeSettings();
}

void SoakSession::switchInSettings(int tab, int stop, const std::string& key, bool isOn) {
    chooseInSettings(tab, stop, "space", key, isOn);
}

bool SoakSession::switchAlwaysHidden() {
    hasAlwaysHidden_ = !hasAlwaysHidden_;
    const auto placeOf = [&](const char* name) { return std::find(order_.begin(), order_.end(), name); };
    // It comes back left of the other, which may have passed it meanwhile.
    if (hasAlwaysHidden_ && placeOf("Velmo.AlwaysHiddenDivider") < placeOf("Velmo.Divider")) {
        order_.erase(placeOf("Velmo.AlwaysHiddenDivider"));
        order_.insert(placeOf("Velmo.Divider") + 1, "Velmo.AlwaysHiddenDivider");
    }
    switchInSettings(hidingTab, alwaysHiddenStop, "alwaysHiddenEnabled", hasAlwaysHidden_);
    if (!hasAlwaysHidden_ && level_ == Level::all)
        level_ = Level::hidden;
    return true;
}

/// One icon further, and from the last one back.
bool SoakSession::changeToggleIcon() {
    openSettings();
    chooseTab(generalTab);
    const auto icon = [&] { return readDefaults().value("toggleIconStyle", std::string("chevron")); };
    const auto before = icon();
    pressStops(toggleIconStop);
    xdotool({"key", before == "fridge" ? "Up" : "Down"});
    EXPECT_TRUE(eventually([&] { return icon() != before; })) << "another icon than " << before;
    chosen_["toggleIconStyle"] = icon();
    closeSettings();
    return true;
}

bool SoakSession::changeClickAction() {
    clicksOpenPanel_ = !clicksOpenPanel_;
    chooseInSettings(generalTab, clickActionStop, clicksOpenPanel_ ? "Down" : "Up", "clickAction",
                     clicksOpenPanel_ ? "showPanel" : "revealInMenuBar");
    return true;
}

/// One that comes is shown with everything else for a while, which the user ends here.
bool SoakSession::switchClock() {
    hasClock_ = !hasClock_;
    isClockBlank_ = hasClock_;
    switchInSettings(clockTab, clockStop, "clockEnabled", hasClock_);
    if (!hasClock_)
        return true;
    clockSpacing_ = spacing_;
    level_ = hasAlwaysHidden_ ? Level::all : Level::hidden;
    expectAll();
    toggleHidden();
    return true;
}

bool SoakSession::changePattern() {
    const std::string next = patterns[below(3)];
    if (!hasClock_ || isClockBlank_ || next == pattern_)
        return false;
    const auto before = clockWidth();
    writePattern(next);
    EXPECT_TRUE(eventually([&] { return clockWidth() != before; })) << "the clock shows " << next;
    return true;
}

void SoakSession::writePattern(const std::string& pattern) {
    openSettings();
    chooseTab(clockTab);
    pressStops(patternStop);
    xdotool({"key", "ctrl+a", "BackSpace"});
    expectChosen("clockFormat", "");
    xdotool({"type", pattern});
    pattern_ = pattern;
    expectChosen("clockFormat", pattern);
    closeSettings();
}

/// For icons that come from now on: others stay as wide as they are.
bool SoakSession::changeSpacing() {
    openSettings();
    chooseTab(spacingTab);
    pressStops(spacingStop);
    isSpacingTightened_ = spacing_ == 0 || (spacing_ == compactSpacing && isSpacingTightened_);
    xdotool({"key", isSpacingTightened_ ? "Down" : "Up"});
    if (spacing_ == compactSpacing)
        spacing_ = isSpacingTightened_ ? tightSpacing : 0;
    else
        spacing_ = compactSpacing;
    expectChosen(spacingKey, spacing_ == 0 ? nlohmann::json() : nlohmann::json(spacing_));
    closeSettings();
    return true;
}

bool SoakSession::letItemsHideAgain() {
    if (level_ == Level::none)
        toggleHidden();
    expectAll();
    openSettings();
    chooseTab(hidingTab);
    const auto start = std::chrono::steady_clock::now();
    switchBox(hideAgainStop, "autoRehide", true);
    level_ = Level::none;
    const auto delay = hidesLate_ ? lateHiding : soonHiding;
    EXPECT_TRUE(eventually([&] { return isAsExpected(); }, delay + delayPatience)) << differences();
    EXPECT_GE(std::chrono::steady_clock::now() - start, delay) << "they hide too soon";
    switchBox(0, "autoRehide", false);
    closeSettings();
    return true;
}

bool SoakSession::changeDelay() {
    hidesLate_ = !hidesLate_;
    chooseInSettings(hidingTab, delayStop, hidesLate_ ? "Right" : "Home", "rehideDelay",
                     (hidesLate_ ? lateHiding : soonHiding).count());
    return true;
}

/// Only for a moment: the user clicks elsewhere all the time.
bool SoakSession::hideByClickOutside() {
    if (level_ == Level::none)
        toggleHidden();
    switchInSettings(hidingTab, clickOutsideStop, "hideOnClickOutside", true);
    expectAll();
    clickOutside();
    level_ = Level::none;
    expectAll();
    switchInSettings(hidingTab, clickOutsideStop, "hideOnClickOutside", false);
    return true;
}

bool SoakSession::switchScrolling() {
    hasScrolling_ = !hasScrolling_;
    switchInSettings(hidingTab, scrollingStop, "showOnScroll", hasScrolling_);
    return true;
}

bool SoakSession::switchRefreshing() {
    isPanelRefreshed_ = !isPanelRefreshed_;
    switchInSettings(panelTab, refreshingStop, "refreshPanelOnOpen", isPanelRefreshed_);
    return true;
}

/// Only for a moment: each click on the toggle would be a hover as well.
bool SoakSession::showByHovering() {
    if (clicksOpenPanel_)
        return false;
    if (level_ != Level::none)
        toggleHidden();
    movePointer(farLeft, 400);
    expectAll();
    openSettings();
    chooseTab(hidingTab);
    switchBox(hoverStop, "showOnHover", true);
    // The file is written before the pointer is followed.
    EXPECT_TRUE(comesToRest(milliseconds(100)));
    const auto place = x().area(toggle()).value_or(Area{});
    movePointer(place.midX(), place.midY());
    level_ = Level::hidden;
    EXPECT_TRUE(eventually([&] { return isAsExpected(); })) << "under the pointer " << differences();
    movePointer(farLeft, 400);
    chooseTab(hidingTab);
    switchBox(hoverStop, "showOnHover", false);
    closeSettings();
    return true;
}

bool SoakSession::recordShortcut() {
    hasShortcut_ = !hasShortcut_;
    recordOrRemove(shortcutStop, "hotkey", shortcut, hasShortcut_);
    return true;
}

void SoakSession::recordOrRemove(int stop, const std::string& key, const char* keys, bool isThere) {
    openSettings();
    chooseTab(hidingTab);
    pressStops(isThere ? stop : stop + 1);
    xdotool({"key", "space"});
    if (isThere)
        xdotool({"key", keys});
    EXPECT_TRUE(eventually([&] { return written(key).is_null() != isThere; })) << written(key) << windows();
    chosen_[key] = written(key);
    closeSettings();
}

/// One that has been removed is none.
bool SoakSession::pressShortcut() {
    xdotool({"key", shortcut});
    if (hasShortcut_)
        level_ = level_ == Level::none ? Level::hidden : Level::none;
    return true;
}

/// The field lies behind the other one, which has another stop while it has a shortcut.
bool SoakSession::recordPanelShortcut() {
    hasPanelShortcut_ = !hasPanelShortcut_;
    recordOrRemove(panelShortcutStop + (hasShortcut_ ? 1 : 0), "panelHotkey", panelShortcut,
                   hasPanelShortcut_);
    return true;
}

bool SoakSession::pressPanelShortcut() {
    const auto isOpen = [&] { return panel().has_value(); };
    xdotool({"key", panelShortcut});
    if (hasPanelShortcut_)
        leave("the panel", isOpen);
    else
        EXPECT_TRUE(stays([&] { return !isOpen(); }, nothingOpens)) << "it has no shortcut";
    return true;
}

}  // namespace velmo::desktop
