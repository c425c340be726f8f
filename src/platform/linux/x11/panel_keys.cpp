#include "panel_keys.h"

#include <algorithm>
#include <utility>

namespace velmo::x11 {

PanelKeys::PanelKeys(Connection& connection, Keyboard& keyboard, Modifiers& modifiers, const HotKeys& hotKeys,
                     LocalEvents& localEvents, const KeyEvents& keyEvents)
    : connection_(connection),
      keyboard_(keyboard),
      modifiers_(modifiers),
      hotKeys_(hotKeys),
      localEvents_(localEvents),
      keyEvents_(keyEvents) {
    const auto moved = [this] {
        letGo();
        update();
    };
    changes_ = localEvents.onChange([this] { update(); });
    keyboardChanges_ = keyboard.onChange(moved);
    modifierChanges_ = modifiers.onChange(moved);
    events_ = connection.onWindow(connection.root(), [this](const auto& event) { handle(event); });
}

PanelKeys::~PanelKeys() {
    letGo();
}

/// With no modifier, with each, and with any several of them, less those that hot keys have.
std::vector<KeyCombination> PanelKeys::combinations() const {
    std::vector<KeyCombination> wanted;
    for (const auto key : keyboard_.escapeKeys()) {
        for (const auto modifiers : modifiers_.combinations()) {
            if (!hotKeys_.holds({key, modifiers}))
                wanted.push_back({key, modifiers});
        }
    }
    return wanted;
}

void PanelKeys::update() {
    if (!localEvents_.showsPanel() || !localEvents_.isMonitored(EventType::keyDown)) {
        letGo();
        return;
    }
    if (held_)
        return;
    auto locks = modifiers_.lockCombinations();
    auto taken = grabKeys(connection_, combinations(), locks);
    held_ = Held{std::move(taken), std::move(locks)};
}

void PanelKeys::letGo() {
    const auto held = std::exchange(held_, std::nullopt);
    if (!held)
        return;
    for (const auto& combination : held->combinations) {
        // The server knows one grab for a combination, a hot key's as well.
        if (!hotKeys_.holds(combination))
            ungrabKey(connection_, combination, held->locks);
    }
}

void PanelKeys::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_KEY_PRESS || !held_)
        return;
    const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
    // The root window hears of hot keys, too, also of those that were registered since.
    const auto& ours = held_->combinations;
    const auto pressed = pressedCombination(press, modifiers_.lockMask());
    if (std::find(ours.begin(), ours.end(), pressed) == ours.end() || hotKeys_.holds(pressed))
        return;
    if (const auto key = keyEvents_.keyDown(press.detail, press.state))
        localEvents_.deliver(*key);
}

}  // namespace velmo::x11
