#include "keyboard_extension.h"

#include "linux/x11/reply.h"

namespace velmo::x11 {

namespace {

constexpr std::uint16_t everyMapPart = 0xff;
constexpr std::uint16_t everyStatePart = 0x3fff;
constexpr std::uint16_t keyStateParts = XCB_XKB_STATE_PART_MODIFIER_STATE | XCB_XKB_STATE_PART_MODIFIER_BASE |
                                        XCB_XKB_STATE_PART_MODIFIER_LATCH | XCB_XKB_STATE_PART_MODIFIER_LOCK |
                                        XCB_XKB_STATE_PART_GROUP_STATE | XCB_XKB_STATE_PART_GROUP_BASE |
                                        XCB_XKB_STATE_PART_GROUP_LATCH | XCB_XKB_STATE_PART_GROUP_LOCK;
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

void selectKeyStates(xcb_connection_t* connection) {
    xcb_xkb_select_events_details_t details{};
    details.affectState = everyStatePart;
    details.stateDetails = keyStateParts;
    xcb_xkb_select_events_aux(connection, coreKeyboard, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0,
                              &details);
    xcb_flush(connection);
}

}  // namespace velmo::x11
