#include "settings/settings_view.h"

#include "views/builders.h"

#include <algorithm>

namespace velmo {

SettingsView::SettingsView(std::shared_ptr<Preferences> preferences, LoginItemManager& loginItem,
                           SettingsState& state, std::function<void()> onOpenPanel, bool offersSpacing,
                           const Platform& platform)
    : preferences_(std::move(preferences)),
      state_(state),
      runLoop_(platform.runLoop),
      general_(*preferences_, loginItem),
      hiding_(*preferences_, platform.events),
      clock_(*preferences_, platform),
      panel_(*preferences_, platform, std::move(onOpenPanel)),
      spacing_(platform),
      tabs_(allSettingsTabs.begin(), allSettingsTabs.end() - (offersSpacing ? 0 : 1)) {
    const auto observeAll = [this](const auto&... values) { (observe(values), ...); };
    observeAll(preferences_->autoRehide, preferences_->rehideDelay, preferences_->hideOnClickOutside,
               preferences_->showOnHover, preferences_->showOnScroll, preferences_->alwaysHiddenEnabled,
               preferences_->refreshPanelOnOpen, preferences_->clockEnabled, preferences_->clockFormat,
               preferences_->clickAction, preferences_->toggleIconStyle, preferences_->hotkey,
               preferences_->panelHotkey);
    observeAll(loginItem.isEnabled, loginItem.errorMessage, state_.selectedTab);
    observeAll(hiding_.hotkey.recorder.isRecording, hiding_.panelHotkey.recorder.isRecording, clock_.now,
               panel_.permissions.screenRecording, panel_.permissions.accessibility, spacing_.preset);
    cancellables_.push_back(state_.selectedTab.publisher().dropFirst().sink(
        lifetime_.guard([this](SettingsTab tab) { updateShownTab(tab); })));
}

template <typename T>
void SettingsView::observe(const T& value) {
    cancellables_.push_back(value.publisher().removeDuplicates().dropFirst().sink(
        lifetime_.guard([this](const auto&) { changed(); })));
}

// What is observed says so before it changes, and often several things change at once.
void SettingsView::changed() {
    if (std::exchange(isChangePending_, true))
        return;
    runLoop_.post(lifetime_.guard([this] {
        isChangePending_ = false;
        if (onChange)
            onChange();
    }));
}

void SettingsView::setShown(bool isShown) {
    isShown_ = isShown;
    updateShownTab(state_.selectedTab.value());
}

void SettingsView::updateShownTab(SettingsTab selectedTab) {
    const auto shown = isShown_ ? std::optional(selectedTab) : std::nullopt;
    if (shown == std::exchange(shownTab_, shown))
        return;
    if (shown == SettingsTab::clock)
        clock_.appear();
    else
        clock_.disappear();
    if (shown == SettingsTab::panel)
        panel_.appear();
}

View SettingsView::body() {
    constexpr double width = 540;
    constexpr double height = 500;
    TabView tabs;
    Views contents;
    for (const SettingsTab tab : tabs_) {
        tabs.tabs.push_back({std::string(rawValue(tab)), std::string(displayName(tab)),
                             Image{.content = Symbol{std::string(symbolName(tab))}}});
        contents.push_back(contentOf(tab));
    }
    // Whoever asks for a tab that is not offered sees the first one.
    const auto selected = std::find(tabs_.begin(), tabs_.end(), state_.selectedTab.value());
    tabs.selection = rawValue(selected != tabs_.end() ? *selected : tabs_.front());
    tabs.onSelect = lifetime_.guard([this](const std::string& tag) {
        if (const auto tab = settingsTabFromRawValue(tag))
            state_.selectedTab.set(*tab);
    });
    return tabView(std::move(tabs), std::move(contents)).with(Frame{width, height});
}

View SettingsView::contentOf(SettingsTab tab) {
    switch (tab) {
        case SettingsTab::general:
            return general_.body();
        case SettingsTab::hiding:
            return hiding_.body();
        case SettingsTab::clock:
            return clock_.body();
        case SettingsTab::panel:
            return panel_.body();
        case SettingsTab::spacing:
            return spacing_.body();
    }
    return {EmptyView{}};
}

}  // namespace velmo
