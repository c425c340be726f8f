#include "held_modifiers.h"

#include "linux/x11/fake_input.h"
#include "linux/x11/reply.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

namespace velmo::x11 {

namespace {

constexpr std::string_view syntheticName = "XTEST keyboard";

bool contains(std::span<const std::uint8_t> keys, xcb_keycode_t key) {
    return (keys[key / 8U] & (1U << (key % 8U))) != 0;
}

}  // namespace

void HeldModifiers::release() {
    for (const auto key : keysDown()) {
        if (released_.empty())
            before_ = keyboards();
        released_.push_back(key);
        fakeKey(connection_, XCB_KEY_RELEASE, key);
    }
}

void HeldModifiers::restore() {
    if (released_.empty())
        return;
    const auto now = keyboards();
    for (const auto key : std::exchange(released_, {})) {
        if (isStillHeld(key, now))
            fakeKey(connection_, XCB_KEY_PRESS, key);
    }
}

/// The modifier keys that are down, without the locks.
std::vector<xcb_keycode_t> HeldModifiers::keysDown() const {
    xcb_connection_t* raw = connection_.raw();
    const auto keymapCookie = xcb_query_keymap(raw);
    const auto mappingCookie = xcb_get_modifier_mapping(raw);
    const auto keymap = owned(xcb_query_keymap_reply(raw, keymapCookie, nullptr));
    const auto mapping = owned(xcb_get_modifier_mapping_reply(raw, mappingCookie, nullptr));
    std::vector<xcb_keycode_t> down;
    if (!keymap || !mapping || mapping->keycodes_per_modifier == 0)
        return down;
    const std::span keys(xcb_get_modifier_mapping_keycodes(mapping.get()),
                         static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(mapping.get())));
    for (std::size_t index = 0; index < keys.size(); ++index) {
        const bool isLock = (modifiers_.lockMask() & (1U << (index / mapping->keycodes_per_modifier))) != 0;
        const bool isKnown = std::find(down.begin(), down.end(), keys[index]) != down.end();
        if (keys[index] != 0 && !isLock && !isKnown && contains(keymap->keys, keys[index]))
            down.push_back(keys[index]);
    }
    return down;
}

HeldModifiers::Keyboards HeldModifiers::keyboards() const {
    xcb_connection_t* raw = connection_.raw();
    const auto devices = owned(
        xcb_input_xi_query_device_reply(raw, xcb_input_xi_query_device(raw, XCB_INPUT_DEVICE_ALL), nullptr));
    Keyboards keyboards;
    if (!devices)
        return keyboards;
    auto infos = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (; infos.rem; xcb_input_xi_device_info_next(&infos)) {
        if (infos.data->type != XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD)
            continue;
        const auto device = static_cast<std::uint8_t>(infos.data->deviceid);
        // Only an open device tells its state.
        owned(xcb_input_open_device_reply(raw, xcb_input_open_device(raw, device), nullptr));
        const auto state = owned(
            xcb_input_query_device_state_reply(raw, xcb_input_query_device_state(raw, device), nullptr));
        xcb_input_close_device(raw, device);
        if (!state)
            continue;
        const std::string_view name(
            xcb_input_xi_device_info_name(infos.data),
            static_cast<std::size_t>(xcb_input_xi_device_info_name_length(infos.data)));
        auto& keyboard = keyboards[infos.data->deviceid];
        keyboard.isSynthetic = name.ends_with(syntheticName);
        auto classes = xcb_input_query_device_state_classes_iterator(state.get());
        for (; classes.rem; xcb_input_input_state_next(&classes)) {
            if (classes.data->class_id != XCB_INPUT_INPUT_CLASS_KEY)
                continue;
            const auto* keys = reinterpret_cast<const xcb_input_key_state_t*>(classes.data)->keys;
            std::copy_n(keys, keyboard.keys.size(), keyboard.keys.begin());
        }
    }
    return keyboards;
}

bool HeldModifiers::isStillHeld(xcb_keycode_t key, const Keyboards& now) const {
    return std::any_of(before_.begin(), before_.end(), [&](const auto& entry) {
        const auto& [device, keyboard] = entry;
        if (!contains(keyboard.keys, key))
            return false;
        const auto found = now.find(device);
        return keyboard.isSynthetic || (found != now.end() && contains(found->second.keys, key));
    });
}

}  // namespace velmo::x11
