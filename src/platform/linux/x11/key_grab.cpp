#include "key_grab.h"

#include "linux/x11/reply.h"

#include <cstddef>

namespace velmo::x11 {

namespace {

constexpr std::uint16_t everyModifier = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_CONTROL |
                                        XCB_MOD_MASK_1 | XCB_MOD_MASK_2 | XCB_MOD_MASK_3 | XCB_MOD_MASK_4 |
                                        XCB_MOD_MASK_5;

}  // namespace

KeyCombination pressedCombination(const xcb_key_press_event_t& press, std::uint16_t lockMask) {
    return {press.detail, static_cast<std::uint16_t>(press.state & everyModifier & ~lockMask)};
}

bool grabKey(const Connection& connection, const KeyCombination& combination,
             const std::vector<std::uint16_t>& locks) {
    xcb_connection_t* raw = connection.raw();
    std::vector<xcb_void_cookie_t> cookies;
    cookies.reserve(locks.size());
    for (const auto lock : locks) {
        cookies.push_back(xcb_grab_key_checked(raw, 0, connection.root(),
                                               static_cast<std::uint16_t>(combination.modifiers | lock),
                                               combination.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    std::vector<std::uint16_t> grabbed;
    for (std::size_t index = 0; index < locks.size(); ++index) {
        if (!owned(xcb_request_check(raw, cookies[index])))
            grabbed.push_back(locks[index]);
    }
    if (grabbed.size() == locks.size())
        return true;
    // Half a key would work by chance only.
    ungrabKey(connection, combination, grabbed);
    return false;
}

void ungrabKey(const Connection& connection, const KeyCombination& combination,
               const std::vector<std::uint16_t>& locks) {
    for (const auto lock : locks)
        xcb_ungrab_key(connection.raw(), combination.key, connection.root(),
                       static_cast<std::uint16_t>(combination.modifiers | lock));
}

}  // namespace velmo::x11
