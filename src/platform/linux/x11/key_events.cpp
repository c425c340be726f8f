#include "key_events.h"

#include "linux/x11/keyboard_extension.h"
#include "linux/x11/reply.h"

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstddef>
#include <limits>

namespace velmo::x11 {

namespace {

/// Where the state of an X event has the layout.
constexpr std::uint32_t groupShift = 13;
constexpr std::uint32_t groupMask = 3;
constexpr std::uint8_t groupCountMask = 0x0f;
constexpr xcb_keysym_t firstDeadKey = 0xfe50;
constexpr xcb_keysym_t lastDeadKey = 0xfe93;

/// Absent where the key types nothing.
std::optional<std::string> textOf(xcb_keysym_t symbol) {
    // A dead key types nothing by itself, but it does type.
    if (symbol >= firstDeadKey && symbol <= lastDeadKey)
        return std::string();
    std::array<char, 8> text{};
    if (xkb_keysym_to_utf8(symbol, text.data(), text.size()) <= 0)
        return std::nullopt;
    return std::string(text.data());
}

/// The keyboard's entry for one key.
Owned<xcb_xkb_get_map_reply_t> mapOf(xcb_connection_t* connection, xcb_keycode_t key) {
    const auto cookie = xcb_xkb_get_map(connection, coreKeyboard, 0, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, key, 1,
                                        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    return owned(xcb_xkb_get_map_reply(connection, cookie, nullptr));
}

}  // namespace

std::optional<Event> KeyEvents::keyDown(std::uint32_t keycode, std::uint32_t state) const {
    if (keycode > std::numeric_limits<xcb_keycode_t>::max())
        return std::nullopt;
    const auto key = static_cast<xcb_keycode_t>(keycode);
    const auto code = keyboard_.virtualKeyOf(key);
    if (!code)
        return std::nullopt;
    Event event{EventType::keyDown, modifiers_.flags(static_cast<std::uint16_t>(state))};
    event.keyCode = *code;
    event.charactersIgnoringModifiers = characters(key, state);
    return event;
}

std::optional<std::string> KeyEvents::characters(xcb_keycode_t key, std::uint32_t state) const {
    const auto reply = mapOf(connection_.raw(), key);
    if (!reply || !(reply->present & XCB_XKB_MAP_PART_KEY_SYMS) || reply->nKeySyms == 0)
        return std::nullopt;
    xcb_xkb_get_map_map_t map{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), reply->nTypes, reply->nKeySyms,
                               reply->nKeyActions, reply->totalActions, reply->totalKeyBehaviors,
                               reply->virtualMods, reply->totalKeyExplicit, reply->totalModMapKeys,
                               reply->totalVModMapKeys, reply->present, &map);
    const auto* entry = xcb_xkb_get_map_map_syms_rtrn_iterator(reply.get(), &map).data;
    const std::uint32_t groups = entry->groupInfo & groupCountMask;
    if (groups == 0 || entry->width == 0)
        return std::nullopt;
    const auto* symbols = xcb_xkb_key_sym_map_syms(entry);
    const auto first = static_cast<std::size_t>((state >> groupShift & groupMask) % groups) * entry->width;
    const std::size_t shifted = entry->width > 1 ? 1 : 0;
    const std::size_t level = (state & XCB_MOD_MASK_SHIFT) ? shifted : 0;
    // Keys of the keypad have their digits on the other level.
    for (const std::size_t candidate : {level, shifted - level}) {
        const auto index = first + candidate;
        if (candidate <= shifted && index < entry->nSyms) {
            if (auto text = textOf(symbols[index]))
                return text;
        }
    }
    return std::nullopt;
}

}  // namespace velmo::x11
