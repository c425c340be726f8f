#include "own_windows.h"

#include "linux/x11/reply.h"

#include <unistd.h>
#include <xcb/res.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmo::x11 {

namespace {

/// A frame has the window in it, or one more window between.
constexpr int frameDepth = 2;

/// The resource numbers of this process's other connections.
std::vector<std::uint32_t> otherConnections(const Connection& connection) {
    xcb_connection_t* raw = connection.raw();
    const xcb_res_client_id_spec_t everybody = {XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply =
        owned(xcb_res_query_client_ids_reply(raw, xcb_res_query_client_ids(raw, 1, &everybody), nullptr));
    std::vector<std::uint32_t> bases;
    if (!reply)
        return bases;
    const auto own = static_cast<std::uint32_t>(getpid());
    auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; ids.rem; xcb_res_client_id_value_next(&ids)) {
        if (xcb_res_client_id_value_value_length(ids.data) > 0 &&
            *xcb_res_client_id_value_value(ids.data) == own && !connection.isOurs(ids.data->spec.client))
            bases.push_back(ids.data->spec.client);
    }
    return bases;
}

/// The children of all these windows.
std::vector<xcb_window_t> childrenOf(xcb_connection_t* connection, const std::vector<xcb_window_t>& windows) {
    std::vector<xcb_query_tree_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const auto window : windows)
        cookies.push_back(xcb_query_tree(connection, window));
    std::vector<xcb_window_t> children;
    for (const auto cookie : cookies) {
        const auto tree = owned(xcb_query_tree_reply(connection, cookie, nullptr));
        if (!tree)
            continue;
        const auto* begin = xcb_query_tree_children(tree.get());
        children.insert(children.end(), begin, begin + xcb_query_tree_children_length(tree.get()));
    }
    return children;
}

}  // namespace

bool isToolkitWindow(const Connection& connection, xcb_window_t child) {
    if (child == XCB_WINDOW_NONE || connection.isOurs(child))
        return false;
    const auto bases = otherConnections(connection);
    if (bases.empty())
        return false;
    const auto mask = xcb_get_setup(connection.raw())->resource_id_mask;
    const auto isOurs = [&](xcb_window_t window) {
        return std::any_of(bases.begin(), bases.end(),
                           [&](std::uint32_t base) { return (window & ~mask) == (base & ~mask); });
    };
    std::vector<xcb_window_t> windows = {child};
    for (int depth = 0; depth <= frameDepth; ++depth) {
        if (std::any_of(windows.begin(), windows.end(), isOurs))
            return true;
        if (depth < frameDepth)
            windows = childrenOf(connection.raw(), windows);
    }
    return false;
}

}  // namespace velmo::x11
