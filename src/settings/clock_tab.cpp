#include "settings/clock_tab.h"

#include "clock/clock_format.h"
#include "settings/setting_rows.h"
#include "system/system_settings.h"
#include "views/builders.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr const char* customTag = "custom";

}  // namespace

ClockTab::ClockTab(Preferences& preferences, const Platform& platform)
    : now(platform.runLoop.now()), preferences_(preferences), platform_(platform) {}

void ClockTab::appear() {
    constexpr Seconds interval = 1.0;
    const auto tick = [this] { now.set(platform_.runLoop.now()); };
    tick();
    ticker_ = platform_.runLoop.scheduleRepeating(interval, 0, lifetime_.guard(tick));
    timeZoneObserver_ = platform_.dates.observeTimeZone(lifetime_.guard(tick));
}

void ClockTab::disappear() {
    ticker_.end();
    timeZoneObserver_.reset();
}

View ClockTab::body() {
    return form({clock(), format(), systemClock()});
}

View ClockTab::clock() const {
    return section("velmo clock",
                   {settingToggle("Show a clock and calendar in the menu bar", preferences_.clockEnabled)},
                   "A replacement for Tickwell: a date and time in your own format, with a month calendar "
                   "when clicked. New menu bar items appear at the far left, so velmo reveals its sections "
                   "for a moment. ⌘-drag the clock to where you want it, for example next to the system "
                   "clock.");
}

View ClockTab::format() {
    auto& pattern = preferences_.clockFormat;
    return section(
        "Format",
        {presetPicker(),
         textField("Pattern", pattern.value(), [&pattern](const std::string& text) { pattern.set(text); })
             .with(Font{.isMonospaced = true}),
         helpText("Patterns use the standard date field symbols: EEE weekday, d day, MMM month, HH:mm "
                  "24-hour time, h:mm a 12-hour time, ss seconds, w week number. Text in single quotes is "
                  "shown as is."),
         labeledContent("Preview",
                        text(ClockFormat::preview(pattern.value(), now.value(), platform_.dates)))});
}

View ClockTab::presetPicker() {
    const auto& presets = ClockFormat::presets();
    std::vector<PickerOption> options;
    options.reserve(presets.size() + 1);
    for (const ClockFormat& preset : presets)
        options.push_back({preset.id(), preset.name, {}});
    options.push_back({customTag, "Custom", {}});
    const auto& pattern = preferences_.clockFormat.value();
    const bool isPreset = std::any_of(presets.begin(), presets.end(), [&pattern](const ClockFormat& preset) {
        return preset.pattern == pattern;
    });
    return picker({"Preset", std::move(options), isPreset ? pattern : customTag, PickerStyle::menu,
                   lifetime_.guard([this](const std::string& tag) { choosePreset(tag); })});
}

void ClockTab::choosePreset(const std::string& tag) {
    if (tag == customTag)
        return;
    preferences_.clockFormat.set(tag);
    // Once more, so that a chosen preset is in the store whatever becomes of the setting.
    preferences_.defaults.setObject(tag, preferences_.clockFormat.key());
}

View ClockTab::systemClock() const {
    return section(
        "",
        {button("System Clock Options…",
                [&workspace = platform_.workspace] { openSystemSettings(workspace, systemClockPane); })},
        "macOS does not allow removing its own clock, but under Control Center → Clock Options "
        "you can hide its date and switch it to a small analog style to save space.");
}

}  // namespace velmo
