#include "keyboard_extension.h"

#include "linux/x11/reply.h"

namespace velmo::x11 {

namespace {

constexpr std::uint16_t everyMapPart = 0xff;
constexpr std::uint16_t keyboardEvents =
    XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;

}  // namespace

bool useKeyboardExtension(xcb_connection_t* connection) {
    const auto use =
        owned(xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
    if (!use || !use->supported)
        return false;
    xcb_xkb_select_events(connection, coreKeyboard, keyboardEvents, 0, keyboardEvents, everyMapPart,
                          everyMapPart, nullptr);
    constexpr auto flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie = xcb_xkb_per_client_flags(connection, coreKeyboard, flag, flag, 0, 0, 0);
    return owned(xcb_xkb_per_client_flags_reply(connection, cookie, nullptr)) != nullptr;
}

}  // namespace velmo::x11
