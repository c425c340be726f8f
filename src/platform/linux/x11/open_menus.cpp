#include "open_menus.h"

#include "linux/x11/client_process.h"
#include "linux/x11/property_question.h"
#include "linux/x11/reply.h"
#include "linux/x11/window_properties.h"

#include <algorithm>
#include <span>
#include <vector>

namespace velmo::x11 {

namespace {

/// More is not read, in bytes.
constexpr std::uint32_t typesLimit = 128;

struct Candidate {
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    PropertyQuestion types;
    xcb_get_geometry_cookie_t geometry;
};

std::optional<OpenMenu> menuFrom(const Connection& connection, const Candidate& candidate) {
    xcb_connection_t* raw = connection.raw();
    const auto attributes = owned(xcb_get_window_attributes_reply(raw, candidate.attributes, nullptr));
    const auto types = candidate.types.numbers();
    const auto geometry = owned(xcb_get_geometry_reply(raw, candidate.geometry, nullptr));
    if (!attributes || !geometry || !window_properties::looksLikeMenu(connection.atoms(), *attributes, types))
        return std::nullopt;
    return OpenMenu{candidate.window,
                    {geometry->x, geometry->y, geometry->width, geometry->height},
                    processOfClient(connection, candidate.window)};
}

}  // namespace

std::vector<OpenMenu> openMenus(const Connection& connection) {
    xcb_connection_t* raw = connection.raw();
    const auto tree = owned(xcb_query_tree_reply(raw, xcb_query_tree(raw, connection.root()), nullptr));
    if (!tree)
        return {};
    const std::span windows(xcb_query_tree_children(tree.get()),
                            static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    // All questions before the first answer, so that the server is waited for only once.
    std::vector<Candidate> candidates;
    candidates.reserve(windows.size());
    for (const auto window : windows) {
        candidates.push_back(
            {window,
             xcb_get_window_attributes(raw, window),
             {connection, window, connection.atoms().netWmWindowType, XCB_ATOM_ATOM, typesLimit},
             xcb_get_geometry(raw, window)});
    }
    std::vector<OpenMenu> menus;
    for (const auto& candidate : candidates) {
        if (auto menu = menuFrom(connection, candidate))
            menus.push_back(*menu);
    }
    // The server names the lowest window first.
    std::reverse(menus.begin(), menus.end());
    return menus;
}

}  // namespace velmo::x11
