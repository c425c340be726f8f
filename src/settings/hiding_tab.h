#pragma once

#include "hotkeys/hotkey_recorder_field.h"
#include "preferences/preferences.h"

namespace velmo {

class HidingTab {
public:
    /// The preferences outlive the tab.
    HidingTab(Preferences& preferences, Events& events)
        : hotkey("Show or hide items", preferences.hotkey, events),
          panelHotkey("Open the hidden items panel", preferences.panelHotkey, events),
          preferences_(preferences) {}

    HotkeyRecorderField hotkey;
    HotkeyRecorderField panelHotkey;

    View body();

private:
    View hideAgain() const;
    View delayRow() const;
    View show() const;
    View alwaysHidden() const;

    Preferences& preferences_;
};

}  // namespace velmo
