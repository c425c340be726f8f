#include "window_tree.h"

#include "linux/x11/property_question.h"
#include "linux/x11/reply.h"
#include "linux/x11/window_properties.h"

#include <cstdint>

namespace velmo::x11 {

namespace {

/// More are not read.
constexpr std::uint32_t longestList = 4096;
/// No window manager puts a window into more frames.
constexpr int deepest = 8;

}  // namespace

std::vector<xcb_window_t> childrenOf(const Connection& connection, xcb_window_t window) {
    return childrenFrom(connection, xcb_query_tree(connection.raw(), window));
}

std::vector<xcb_window_t> childrenFrom(const Connection& connection, xcb_query_tree_cookie_t cookie) {
    const auto tree = owned(xcb_query_tree_reply(connection.raw(), cookie, nullptr));
    if (!tree)
        return {};
    const auto* begin = xcb_query_tree_children(tree.get());
    return {begin, begin + xcb_query_tree_children_length(tree.get())};
}

xcb_window_t topLevelOf(const Connection& connection, xcb_window_t window) {
    for (int depth = 0; depth < deepest; ++depth) {
        const auto tree =
            owned(xcb_query_tree_reply(connection.raw(), xcb_query_tree(connection.raw(), window), nullptr));
        if (!tree || tree->parent == tree->root || tree->parent == XCB_WINDOW_NONE)
            return window;
        window = tree->parent;
    }
    return window;
}

std::optional<PixelRect> areaFrom(const Connection& connection, xcb_get_geometry_cookie_t cookie) {
    const auto reply = owned(xcb_get_geometry_reply(connection.raw(), cookie, nullptr));
    if (!reply)
        return std::nullopt;
    return PixelRect{reply->x, reply->y, reply->width + 2 * reply->border_width,
                     reply->height + 2 * reply->border_width};
}

PixelRect rootArea(const Connection& connection) {
    const auto& screen = connection.screen();
    return areaFrom(connection, xcb_get_geometry(connection.raw(), connection.root()))
        .value_or(PixelRect{0, 0, screen.width_in_pixels, screen.height_in_pixels});
}

std::vector<xcb_window_t> managedWindowsOfOthers(const Connection& connection, xcb_window_t first) {
    const PropertyQuestion list(connection, connection.root(), connection.atoms().netClientList,
                                XCB_ATOM_WINDOW, longestList * sizeof(xcb_window_t));
    return window_properties::managedAmong(list.numbers(), first, [&](xcb_window_t window) {
        return !connection.isOurs(window) && window != connection.root();
    });
}

}  // namespace velmo::x11
