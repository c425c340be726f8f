// The least that a program can do to show hidden windows on a click: it moves them, and nothing else.
// bare_mover COUNT: so many windows beyond the left edge of a bar across the top of the screen; a release of
// a button on the square at its right end brings them back or takes them away.

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int width = 30;
constexpr int height = 26;
constexpr int farAway = -20000;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

xcb_window_t makeWindow(xcb_connection_t* connection, xcb_window_t parent, int x, int windowWidth,
                        std::uint32_t events) {
    const xcb_window_t window = xcb_generate_id(connection);
    const std::uint32_t values[] = {0xffffff, 1, events};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, parent, static_cast<std::int16_t>(x), 0,
                      static_cast<std::uint16_t>(windowWidth), height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values);
    xcb_map_window(connection, window);
    return window;
}

void setTitle(xcb_connection_t* connection, xcb_window_t window, const std::string& title) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(title.size()), title.data());
}

}  // namespace

int main(int count, char** arguments) {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (count != 2 || xcb_connection_has_error(connection))
        return 1;
    const int icons = std::atoi(arguments[1]);
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const auto bar = makeWindow(connection, screen->root, 0, screen->width_in_pixels, 0);
    std::vector<xcb_window_t> windows;
    for (int number = 0; number < icons; ++number)
        windows.push_back(makeWindow(connection, bar, farAway, width, 0));
    const auto toggle = makeWindow(connection, bar, screen->width_in_pixels - width, width,
                                   XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE);
    setTitle(connection, toggle, "toggle");
    xcb_flush(connection);

    bool hidden = true;
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_wait_for_event(connection)}) {
        if ((event->response_type & 0x7f) != XCB_BUTTON_RELEASE)
            continue;
        hidden = !hidden;
        for (int number = 0; number < icons; ++number) {
            const auto x = static_cast<std::uint32_t>(hidden ? farAway : number * width);
            xcb_configure_window(connection, windows[static_cast<std::size_t>(number)], XCB_CONFIG_WINDOW_X,
                                 &x);
        }
        xcb_flush(connection);
    }
    xcb_disconnect(connection);
    return 0;
}
