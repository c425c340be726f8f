#include "panel_keys.h"

#include <utility>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t escape = 53;

}  // namespace

PanelKeys::PanelKeys(Connection& connection, Keyboard& keyboard, Modifiers& modifiers,
                     LocalEvents& localEvents, const KeyEvents& keyEvents)
    : connection_(connection),
      keyboard_(keyboard),
      modifiers_(modifiers),
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

void PanelKeys::update() {
    const auto key = keyboard_.keycodeOf(escape);
    if (!key || !localEvents_.showsPanel() || !localEvents_.isMonitored(EventType::keyDown)) {
        letGo();
        return;
    }
    if (held_)
        return;
    Held wanted{{*key, 0}, modifiers_.lockCombinations()};
    if (grabKey(connection_, wanted.combination, wanted.locks))
        held_ = std::move(wanted);
}

void PanelKeys::letGo() {
    if (const auto held = std::exchange(held_, std::nullopt))
        ungrabKey(connection_, held->combination, held->locks);
}

void PanelKeys::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_KEY_PRESS || !held_)
        return;
    const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
    // The root window hears of hot keys, too.
    if (press.detail != held_->combination.key)
        return;
    if (const auto key = keyEvents_.keyDown(press.detail, press.state))
        localEvents_.deliver(*key);
}

}  // namespace velmo::x11
