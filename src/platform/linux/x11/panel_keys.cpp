#include "panel_keys.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t escape = 53;

}  // namespace

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

/// With no modifier, with each, and with any several of them.
std::vector<KeyCombination> PanelKeys::combinations(xcb_keycode_t key) const {
    std::vector<KeyCombination> all = {{key, 0}};
    for (const std::uint16_t mask : {std::uint16_t{XCB_MOD_MASK_SHIFT}, std::uint16_t{XCB_MOD_MASK_CONTROL},
                                     modifiers_.altMask(), modifiers_.superMask()}) {
        for (std::size_t index = 0, count = all.size(); mask != 0 && index < count; ++index)
            all.push_back({key, static_cast<std::uint16_t>(all[index].modifiers | mask)});
    }
    return all;
}

void PanelKeys::update() {
    const auto key = keyboard_.keycodeOf(escape);
    if (!key || !localEvents_.showsPanel() || !localEvents_.isMonitored(EventType::keyDown)) {
        letGo();
        return;
    }
    if (held_)
        return;
    auto wanted = combinations(*key);
    std::erase_if(wanted, [this](const auto& combination) { return hotKeys_.holds(combination); });
    auto locks = modifiers_.lockCombinations();
    auto taken = grabKeys(connection_, wanted, locks);
    held_ = Held{std::move(taken), std::move(locks)};
}

void PanelKeys::letGo() {
    const auto held = std::exchange(held_, std::nullopt);
    for (const auto& combination : held ? held->combinations : std::vector<KeyCombination>()) {
        // The server knows one grab for a combination, a hot key's as well.
        if (!hotKeys_.holds(combination))
            ungrabKey(connection_, combination, held->locks);
    }
}

void PanelKeys::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_KEY_PRESS || !held_)
        return;
    const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
    // The root window hears of hot keys, too.
    const auto& ours = held_->combinations;
    if (std::find(ours.begin(), ours.end(), pressedCombination(press, modifiers_.lockMask())) == ours.end())
        return;
    if (const auto key = keyEvents_.keyDown(press.detail, press.state))
        localEvents_.deliver(*key);
}

}  // namespace velmo::x11
