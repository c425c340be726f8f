#include "meaningless_key.h"

#include "linux/x11/reply.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstddef>
#include <span>

namespace velmo::x11 {

namespace {

/// 0 where there is none.
xcb_keycode_t meaninglessKey(xcb_connection_t* connection) {
    const auto* setup = xcb_get_setup(connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const auto mapping = owned(xcb_get_keyboard_mapping_reply(
        connection,
        xcb_get_keyboard_mapping(connection, setup->min_keycode, static_cast<std::uint8_t>(count)), nullptr));
    if (!mapping)
        return 0;
    const std::span symbols(xcb_get_keyboard_mapping_keysyms(mapping.get()),
                            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(mapping.get())));
    const std::size_t perKey = mapping->keysyms_per_keycode;
    for (int index = count - 1; index >= 0 && perKey > 0; --index) {
        const auto ofKey = symbols.subspan(static_cast<std::size_t>(index) * perKey, perKey);
        if (std::all_of(ofKey.begin(), ofKey.end(),
                        [](xcb_keysym_t symbol) { return symbol == XCB_NO_SYMBOL; }))
            return static_cast<xcb_keycode_t>(setup->min_keycode + index);
    }
    return 0;
}

}  // namespace

void pressMeaninglessKey(const Connection& connection) {
    xcb_connection_t* raw = connection.raw();
    const auto* extension = xcb_get_extension_data(raw, &xcb_test_id);
    if (!extension || !extension->present)
        return;
    const auto key = meaninglessKey(raw);
    if (key == 0)
        return;
    for (const std::uint8_t type : {XCB_KEY_PRESS, XCB_KEY_RELEASE})
        xcb_test_fake_input(raw, type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
}

}  // namespace velmo::x11
