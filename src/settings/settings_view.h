#pragma once

#include "settings/clock_tab.h"
#include "settings/general_tab.h"
#include "settings/hiding_tab.h"
#include "settings/panel_tab.h"
#include "settings/settings_state.h"
#include "settings/spacing_tab.h"

#include <vector>

namespace velmo {

/// What the settings window shows.
class SettingsView {
public:
    /// The state and the login item outlive the view. `offersSpacing`: the program can change what other
    /// applications share with it.
    SettingsView(std::shared_ptr<Preferences> preferences, LoginItemManager& loginItem, SettingsState& state,
                 std::function<void()> onOpenPanel, bool offersSpacing, const Platform& platform);
    SettingsView(const SettingsView&) = delete;
    SettingsView& operator=(const SettingsView&) = delete;

    /// Called in a later turn of the run loop than a change of what `body` tells, once for all changes of a
    /// turn.
    std::function<void()> onChange;

    /// Whether anybody sees the view.
    void setShown(bool isShown);

    View body();

private:
    template <typename T>
    void observe(const T& value);
    void changed();
    void updateShownTab(SettingsTab selectedTab);
    View contentOf(SettingsTab tab);

    std::shared_ptr<Preferences> preferences_;
    SettingsState& state_;
    RunLoop& runLoop_;
    GeneralTab general_;
    HidingTab hiding_;
    ClockTab clock_;
    PanelTab panel_;
    SpacingTab spacing_;
    std::vector<SettingsTab> tabs_;
    bool isShown_ = false;
    std::optional<SettingsTab> shownTab_;
    bool isChangePending_ = false;
    std::vector<Subscription> cancellables_;
    Lifetime lifetime_;
};

}  // namespace velmo
