#include "fake_input.h"

#include <xcb/xtest.h>

namespace velmo::x11 {

bool canFakeInput(const Connection& connection) {
    const auto* extension = xcb_get_extension_data(connection.raw(), &xcb_test_id);
    return extension && extension->present;
}

void fakeKey(const Connection& connection, std::uint8_t type, xcb_keycode_t key) {
    xcb_test_fake_input(connection.raw(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
}

}  // namespace velmo::x11
