#include "tray_client.h"

#include <poll.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr std::uint32_t halfOpaque = 0x80;
constexpr std::uint32_t iconEvents =
    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;

const xcb_screen_t& screenOf(const XObserver& observer) {
    return *xcb_setup_roots_iterator(xcb_get_setup(observer.raw())).data;
}

}  // namespace

void sendToTray(const XObserver& program, std::uint32_t opcode, xcb_window_t window) {
    const auto owner = program.selectionOwner("_NET_SYSTEM_TRAY_S0");
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = owner;
    message.type = program.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[1] = opcode;
    message.data.data32[2] = window;
    xcb_send_event(program.raw(), 0, owner, 0, reinterpret_cast<const char*>(&message));
    xcb_flush(program.raw());
}

TrayClient::TrayClient(const std::string& display) : x_(display), manager_(x_.atom("MANAGER")) {
    const auto cookie = xcb_xfixes_query_version(x_.raw(), 5, 0);
    std::free(xcb_xfixes_query_version_reply(x_.raw(), cookie, nullptr));
}

xcb_window_t TrayClient::makeIcon(const std::string& name, Look look, std::uint32_t color) {
    const std::lock_guard lock(mutex_);
    const xcb_window_t window = makeWindow(look);
    const std::string wmClass = name + std::string("\0Icon", 6);
    xcb_change_property(x_.raw(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(wmClass.size()), wmClass.data());
    setEmbeddingFlags(window, 1);
    if (look == Look::shaped)
        setShape(window);
    const xcb_gcontext_t context = xcb_generate_id(x_.raw());
    xcb_create_gc(x_.raw(), context, window, 0, nullptr);
    icons_[window] = {look, color, context};
    xcb_flush(x_.raw());
    return window;
}

xcb_window_t TrayClient::makeWindow(Look look) {
    xcb_connection_t* raw = x_.raw();
    const xcb_window_t window = xcb_generate_id(raw);
    const bool hasAlpha = look == Look::translucent;
    const bool isRelative = look == Look::parentRelative;
    xcb_colormap_t colormap = XCB_COPY_FROM_PARENT;
    if (hasAlpha) {
        colormap = xcb_generate_id(raw);
        xcb_create_colormap(raw, XCB_COLORMAP_ALLOC_NONE, colormap, x_.root(), alphaVisual());
    }
    // The root window's depth may not be that of the parent's background.
    const std::uint32_t mask = (isRelative ? XCB_CW_BACK_PIXMAP : XCB_CW_BACK_PIXEL) | XCB_CW_BORDER_PIXEL |
                               XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    const std::uint32_t background = hasAlpha ? 0 : screenOf(x_).white_pixel;
    const std::uint32_t values[] = {isRelative ? std::uint32_t{XCB_BACK_PIXMAP_PARENT_RELATIVE} : background,
                                    0, iconEvents, colormap};
    xcb_create_window(raw, hasAlpha ? 32 : XCB_COPY_FROM_PARENT, window, x_.root(), 0, 0, side, side, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, hasAlpha ? alphaVisual() : XCB_COPY_FROM_PARENT, mask,
                      values);
    return window;
}

xcb_visualid_t TrayClient::alphaVisual() const {
    for (auto depths = xcb_screen_allowed_depths_iterator(&screenOf(x_)); depths.rem;
         xcb_depth_next(&depths)) {
        if (depths.data->depth == 32)
            return xcb_depth_visuals_iterator(depths.data).data->visual_id;
    }
    return XCB_COPY_FROM_PARENT;
}

void TrayClient::setShape(xcb_window_t window) const {
    const xcb_xfixes_region_t region = xcb_generate_id(x_.raw());
    const xcb_rectangle_t square = {margin, margin, side - 2 * margin, side - 2 * margin};
    xcb_xfixes_create_region(x_.raw(), region, 1, &square);
    xcb_xfixes_set_window_shape_region(x_.raw(), window, XCB_SHAPE_SK_BOUNDING, 0, 0, region);
    xcb_xfixes_destroy_region(x_.raw(), region);
}

std::uint32_t TrayClient::pixelOf(const Icon& icon) const {
    const auto part = [&](int shift) { return icon.color >> shift & 0xff; };
    if (icon.look == Look::translucent) {
        const auto half = [&](int shift) { return (part(shift) * halfOpaque / 255) << shift; };
        return halfOpaque << 24 | half(16) | half(8) | half(0);
    }
    const auto cookie = xcb_alloc_color(
        x_.raw(), screenOf(x_).default_colormap, static_cast<std::uint16_t>(part(16) * 0x101),
        static_cast<std::uint16_t>(part(8) * 0x101), static_cast<std::uint16_t>(part(0) * 0x101));
    const std::unique_ptr<xcb_alloc_color_reply_t, decltype(&std::free)> color(
        xcb_alloc_color_reply(x_.raw(), cookie, nullptr), &std::free);
    return color ? color->pixel : 0;
}

void TrayClient::draw(xcb_window_t window, const Icon& icon) const {
    const std::uint32_t pixel = pixelOf(icon);
    xcb_change_gc(x_.raw(), icon.context, XCB_GC_FOREGROUND, &pixel);
    const auto inset = static_cast<std::int16_t>(icon.look == Look::parentRelative ? margin : 0);
    // Else to the edges, wherever they are.
    const auto length = static_cast<std::uint16_t>(inset > 0 ? side - 2 * inset : 1000);
    const xcb_rectangle_t square = {inset, inset, length, length};
    xcb_poly_fill_rectangle(x_.raw(), window, icon.context, 1, &square);
    xcb_flush(x_.raw());
}

void TrayClient::setColor(xcb_window_t icon, std::uint32_t color) {
    const std::lock_guard lock(mutex_);
    icons_[icon].color = color;
    draw(icon, icons_[icon]);
}

void TrayClient::setEmbeddingFlags(xcb_window_t icon, std::uint32_t flags) const {
    const std::uint32_t info[] = {0, flags};
    const auto atom = x_.atom("_XEMBED_INFO");
    xcb_change_property(x_.raw(), XCB_PROP_MODE_REPLACE, icon, atom, atom, 32, 2, info);
    xcb_flush(x_.raw());
}

void TrayClient::takePresses(xcb_window_t icon) const {
    const std::uint32_t mask = iconEvents | XCB_EVENT_MASK_BUTTON_PRESS;
    xcb_change_window_attributes(x_.raw(), icon, XCB_CW_EVENT_MASK, &mask);
}

void TrayClient::destroy(xcb_window_t icon) {
    const std::lock_guard lock(mutex_);
    xcb_free_gc(x_.raw(), icons_[icon].context);
    icons_.erase(icon);
    xcb_destroy_window(x_.raw(), icon);
    xcb_flush(x_.raw());
}

void TrayClient::dockWithEachTray(unsigned seed) {
    const std::lock_guard lock(mutex_);
    random_.seed(seed);
    docksAnew_ = true;
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(x_.raw(), x_.root(), XCB_CW_EVENT_MASK, &mask);
    dockAll();
}

void TrayClient::dockAll() {
    std::vector<xcb_window_t> windows;
    std::transform(icons_.begin(), icons_.end(), std::back_inserter(windows),
                   [](const auto& entry) { return entry.first; });
    std::shuffle(windows.begin(), windows.end(), random_);
    for (const auto window : windows)
        dock(window);
}

void TrayClient::answer() {
    // Others wait for replies on this connection, too, and leave events in memory.
    pollfd readable = {xcb_get_file_descriptor(x_.raw()), POLLIN, 0};
    poll(&readable, 1, 5);
    while (auto* event = xcb_poll_for_event(x_.raw())) {
        handle(*event);
        std::free(event);
    }
}

void TrayClient::handle(const xcb_generic_event_t& event) {
    const std::lock_guard lock(mutex_);
    const auto type = event.response_type & 0x7f;
    if (type == XCB_EXPOSE) {
        const auto window = reinterpret_cast<const xcb_expose_event_t&>(event).window;
        ++exposures_;
        if (const auto icon = icons_.find(window); icon != icons_.end())
            draw(window, icon->second);
    } else if (type == XCB_BUTTON_PRESS) {
        ++presses_;
    } else if (type == XCB_CLIENT_MESSAGE && docksAnew_ &&
               reinterpret_cast<const xcb_client_message_event_t&>(event).type == manager_) {
        dockAll();
    }
}

}  // namespace velmo::desktop
