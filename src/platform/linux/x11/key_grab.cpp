#include "key_grab.h"

#include "linux/x11/modifiers.h"
#include "linux/x11/reply.h"

namespace velmo::x11 {

KeyCombination pressedCombination(const xcb_key_press_event_t& press, std::uint16_t lockMask) {
    return {press.detail, static_cast<std::uint16_t>(press.state & everyModifier & ~lockMask)};
}

std::vector<KeyCombination> grabKeys(const Connection& connection,
                                     const std::vector<KeyCombination>& combinations,
                                     const std::vector<std::uint16_t>& locks) {
    xcb_connection_t* raw = connection.raw();
    // All requests before the first answer, so that the server is waited for only once.
    std::vector<xcb_void_cookie_t> cookies;
    cookies.reserve(combinations.size() * locks.size());
    for (const auto& combination : combinations) {
        for (const auto lock : locks) {
            const auto modifiers = static_cast<std::uint16_t>(combination.modifiers | lock);
            cookies.push_back(xcb_grab_key_checked(raw, 0, connection.root(), modifiers, combination.key,
                                                   XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    std::vector<KeyCombination> taken;
    auto cookie = cookies.begin();
    for (const auto& combination : combinations) {
        std::vector<std::uint16_t> grabbed;
        for (const auto lock : locks) {
            if (!owned(xcb_request_check(raw, *cookie++)))
                grabbed.push_back(lock);
        }
        if (grabbed.size() == locks.size())
            taken.push_back(combination);
        else
            // Half a key would work by chance only.
            ungrabKey(connection, combination, grabbed);
    }
    return taken;
}

void ungrabKey(const Connection& connection, const KeyCombination& combination,
               const std::vector<std::uint16_t>& locks) {
    for (const auto lock : locks)
        xcb_ungrab_key(connection.raw(), combination.key, connection.root(),
                       static_cast<std::uint16_t>(combination.modifiers | lock));
}

}  // namespace velmo::x11
