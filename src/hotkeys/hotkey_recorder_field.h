#pragma once

#include "hotkeys/hotkey_recorder.h"
#include "platform/view.h"
#include "preferences/setting.h"

namespace velmo {

/// A row that shows a shortcut, records another one and removes it.
class HotkeyRecorderField {
public:
    /// The binding outlives the field.
    HotkeyRecorderField(std::string title, Setting<std::optional<HotkeyBinding>>& binding, Events& events)
        : recorder(events), title_(std::move(title)), binding_(binding) {}

    HotkeyRecorder recorder;

    View body();

private:
    View recordButton();
    View removeButton();
    void pressed();

    std::string title_;
    Setting<std::optional<HotkeyBinding>>& binding_;
    Lifetime lifetime_;
};

}  // namespace velmo
