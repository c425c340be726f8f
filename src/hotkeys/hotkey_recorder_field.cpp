#include "hotkeys/hotkey_recorder_field.h"

#include "views/builders.h"

namespace velmo {

View HotkeyRecorderField::body() {
    Views row{text(title_), recordButton()};
    if (binding_.value() && !recorder.isRecording.value())
        row.push_back(removeButton());
    return hstack(std::nullopt, std::move(row));
}

View HotkeyRecorderField::recordButton() {
    constexpr double minWidth = 130;
    const bool isRecording = recorder.isRecording.value();
    const auto& binding = binding_.value();
    const std::string words = isRecording ? "Press keys… (Esc cancels)"
                              : binding   ? binding->display
                                          : "Record Shortcut";
    View label = text(words);
    if (binding && !isRecording)
        label = std::move(label).with(Font{.isMonospaced = true});
    label = std::move(label).with(Frame{.minWidth = minWidth});
    // There are several such fields, and a button that says no more than a shortcut.
    return View{Button{ButtonStyle::automatic, lifetime_.guard([this] { pressed(); })}, {std::move(label)}}
        .with(AccessibilityLabel{title_ + ", " + words});
}

View HotkeyRecorderField::removeButton() {
    return View{Button{ButtonStyle::borderless, lifetime_.guard([this] { binding_.set(std::nullopt); })},
                {symbol("xmark.circle.fill").with(foreground(ColorRole::secondary))}}
        .with(Help{"Remove shortcut"})
        .with(AccessibilityLabel{title_ + ", Remove shortcut"});
}

void HotkeyRecorderField::pressed() {
    if (recorder.isRecording.value())
        recorder.stop();
    else
        recorder.start(lifetime_.guard(
            [this](std::uint16_t keyCode, ModifierFlags modifiers, const std::string& display) {
                binding_.set(HotkeyBinding{keyCode, modifiers, display});
            }));
}

}  // namespace velmo
