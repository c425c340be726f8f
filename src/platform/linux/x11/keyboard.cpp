#include "keyboard.h"

#include "event.h"
#include "linux/x11/keyboard_extension.h"
#include "linux/x11/reply.h"
#include "linux/x11/virtual_keys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace velmo::x11 {

namespace {

/// What a key types: with no modifier in the first layout, then with others and in others.
struct KeyMeaning {
    xcb_keycode_t key = 0;
    std::vector<xcb_keysym_t> symbols;

    bool isPlainly(xcb_keysym_t symbol) const { return !symbols.empty() && symbols.front() == symbol; }
    bool isNothing() const {
        return std::all_of(symbols.begin(), symbols.end(),
                           [](xcb_keysym_t symbol) { return symbol == XCB_NO_SYMBOL; });
    }
};

/// Of all keys. None where the server does not tell.
std::vector<KeyMeaning> meaningsOfKeys(xcb_connection_t* connection) {
    const auto* setup = xcb_get_setup(connection);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto reply = owned(xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, count), nullptr));
    std::vector<KeyMeaning> keys;
    if (!reply)
        return keys;
    const auto* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    for (int index = 0; index < count; ++index) {
        const auto* end = symbols + reply->keysyms_per_keycode;
        keys.push_back({static_cast<xcb_keycode_t>(setup->min_keycode + index), {symbols, end}});
        symbols = end;
    }
    return keys;
}

std::string_view textOf(const xcb_xkb_key_name_t& name) {
    return {name.name, static_cast<std::size_t>(std::find(name.name, name.name + 4, '\0') - name.name)};
}

}  // namespace

Keyboard::Keyboard(Connection& connection)
    : connection_(connection),
      reading_(connection.loop(), [this] { read(); }),
      changes_(connection.onKeyboardChange([this](const auto&) { reading_.request(); })) {
    read();
}

void Keyboard::read() {
    xcb_connection_t* raw = connection_.raw();
    const auto cookie = xcb_xkb_get_names(raw, coreKeyboard, XCB_XKB_NAME_DETAIL_KEY_NAMES);
    const auto reply = owned(xcb_xkb_get_names_reply(raw, cookie, nullptr));
    if (!reply)
        return;
    xcb_xkb_get_names_value_list_t lists{};
    xcb_xkb_get_names_value_list_unpack(
        xcb_xkb_get_names_value_list(reply.get()), reply->nTypes, reply->indicators, reply->virtualMods,
        reply->groupNames, reply->nKeys, reply->nKeyAliases, reply->nRadioGroups, reply->which, &lists);
    std::unordered_map<std::uint32_t, xcb_keycode_t> keycodes;
    for (int index = 0; lists.keyNames && index < reply->nKeys; ++index) {
        if (const auto code = virtualKeyCodeOf(textOf(lists.keyNames[index])))
            keycodes.emplace(*code, static_cast<xcb_keycode_t>(reply->firstKey + index));
    }
    std::vector<xcb_keycode_t> escapeKeys;
    meaninglessKey_.reset();
    for (const auto& meaning : meaningsOfKeys(raw)) {
        if (meaning.isPlainly(XKB_KEY_Escape))
            escapeKeys.push_back(meaning.key);
        // The last one is the least likely to be found on a keyboard.
        if (meaning.isNothing())
            meaninglessKey_ = meaning.key;
    }
    const auto usual = keycodes.find(escapeKeyCode);
    if (escapeKeys.empty() && usual != keycodes.end())
        escapeKeys.push_back(usual->second);
    if (!escapeKeys.empty())
        keycodes[escapeKeyCode] = escapeKeys.front();
    const bool isSame = keycodes == keycodes_ && escapeKeys == escapeKeys_;
    keycodes_ = std::move(keycodes);
    escapeKeys_ = std::move(escapeKeys);
    if (!isSame)
        listeners_.notify();
}

bool Keyboard::isEscape(xcb_keycode_t key) const {
    return std::find(escapeKeys_.begin(), escapeKeys_.end(), key) != escapeKeys_.end();
}

std::optional<std::uint16_t> Keyboard::virtualKeyOf(xcb_keycode_t key) const {
    if (isEscape(key))
        return escapeKeyCode;
    const auto found = std::find_if(keycodes_.begin(), keycodes_.end(),
                                    [key](const auto& entry) { return entry.second == key; });
    return found == keycodes_.end() ? std::nullopt : std::optional(static_cast<std::uint16_t>(found->first));
}

std::optional<xcb_keycode_t> Keyboard::keycodeOf(std::uint32_t virtualKeyCode) const {
    const auto found = keycodes_.find(virtualKeyCode);
    return found == keycodes_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace velmo::x11
