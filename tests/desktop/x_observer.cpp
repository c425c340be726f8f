#include "x_observer.h"

#include <xcb/res.h>

#include <cstdlib>
#include <functional>
#include <span>
#include <stdexcept>

namespace velmo::desktop {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename Type>
std::unique_ptr<Type, Free> owned(Type* reply) {
    return std::unique_ptr<Type, Free>(reply);
}

std::vector<xcb_window_t> childrenIn(const xcb_query_tree_reply_t* tree) {
    if (!tree)
        return {};
    const auto* begin = xcb_query_tree_children(tree);
    return {begin, begin + xcb_query_tree_children_length(tree)};
}

std::string textIn(const xcb_get_property_reply_t* property) {
    if (!property)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(property)),
            static_cast<std::size_t>(xcb_get_property_value_length(property))};
}

xcb_get_property_cookie_t askForText(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t name) {
    return xcb_get_property(connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
}

/// A window and what lies in it, as it was.
struct Tree {
    xcb_window_t window = XCB_WINDOW_NONE;
    std::string text;
    std::vector<Tree> children;
};

/// The server is waited for once for all windows of a level.
void addLevelsBelow(xcb_connection_t* connection, std::vector<Tree*> level, xcb_atom_t property) {
    while (!level.empty()) {
        std::vector<std::pair<xcb_query_tree_cookie_t, xcb_get_property_cookie_t>> questions;
        questions.reserve(level.size());
        for (const auto* tree : level)
            questions.emplace_back(xcb_query_tree(connection, tree->window),
                                   askForText(connection, tree->window, property));
        std::vector<Tree*> next;
        for (std::size_t index = 0; index < level.size(); ++index) {
            const auto& [tree, text] = questions[index];
            level[index]->text = textIn(owned(xcb_get_property_reply(connection, text, nullptr)).get());
            for (const auto child : childrenIn(owned(xcb_query_tree_reply(connection, tree, nullptr)).get()))
                level[index]->children.push_back({child, {}, {}});
            for (auto& child : level[index]->children)
                next.push_back(&child);
        }
        level = std::move(next);
    }
}

std::optional<xcb_window_t> findBelow(const Tree& tree,
                                      const std::function<bool(const std::string&)>& matches) {
    for (const auto& child : tree.children) {
        if (matches(child.text))
            return child.window;
        if (const auto found = findBelow(child, matches))
            return found;
    }
    return std::nullopt;
}

/// 0xRRGGBB of a pixel as screens of that depth have it.
std::uint32_t colorOf(std::uint8_t depth, const std::uint8_t* bytes) {
    const auto value = [&](int index) { return static_cast<std::uint32_t>(bytes[index]); };
    const auto low = value(0) | value(1) << 8;
    if (depth == 16)
        return (low >> 8 & 0xf8) << 16 | (low >> 3 & 0xfc) << 8 | (low << 3 & 0xf8);
    const auto word = low | value(2) << 16 | value(3) << 24;
    if (depth == 30)
        return (word >> 22 & 0xff) << 16 | (word >> 12 & 0xff) << 8 | (word >> 2 & 0xff);
    return word & 0xffffff;
}

}  // namespace

XObserver::XObserver(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_))
        throw std::runtime_error("no display " + display);
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

XObserver::~XObserver() {
    xcb_disconnect(connection_);
}

xcb_window_t XObserver::parent(xcb_window_t window) const {
    const auto tree = owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<xcb_window_t> XObserver::children(xcb_window_t window) const {
    return childrenIn(
        owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr)).get());
}

xcb_atom_t XObserver::atom(const std::string& name) const {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const auto reply = owned(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::string XObserver::property(xcb_window_t window, const std::string& name) const {
    const auto cookie = askForText(connection_, window, atom(name));
    return textIn(owned(xcb_get_property_reply(connection_, cookie, nullptr)).get());
}

std::vector<std::uint32_t> XObserver::cardinals(xcb_window_t window, const std::string& name) const {
    const auto cookie =
        xcb_get_property(connection_, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 65536);
    const auto reply = owned(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* begin = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {begin, begin + reply->value_len};
}

std::optional<xcb_window_t> XObserver::windowTitled(const std::string& title) const {
    Tree tree{root_, {}, {}};
    addLevelsBelow(connection_, {&tree}, XCB_ATOM_WM_NAME);
    return findBelow(tree, [&](const std::string& text) { return text == title; });
}

std::optional<xcb_window_t> XObserver::windowOfClass(xcb_window_t ancestor, const std::string& name) const {
    const std::string suffix = name + std::string(1, '\0');
    Tree tree{ancestor, {}, {}};
    addLevelsBelow(connection_, {&tree}, XCB_ATOM_WM_CLASS);
    return findBelow(tree, [&](const std::string& text) { return text.ends_with(suffix); });
}

std::optional<Area> XObserver::area(xcb_window_t window) const {
    const auto geometry =
        owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    const auto cookie = xcb_translate_coordinates(connection_, window, root_, 0, 0);
    const auto place = owned(xcb_translate_coordinates_reply(connection_, cookie, nullptr));
    if (!geometry || !place)
        return std::nullopt;
    return Area{place->dst_x, place->dst_y, geometry->width, geometry->height};
}

xcb_window_t XObserver::childAt(xcb_window_t window, int x, int y) const {
    const auto cookie = xcb_translate_coordinates(connection_, window, window, static_cast<std::int16_t>(x),
                                                  static_cast<std::int16_t>(y));
    const auto reply = owned(xcb_translate_coordinates_reply(connection_, cookie, nullptr));
    return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t XObserver::topAt(int x, int y) const {
    xcb_window_t top = XCB_WINDOW_NONE;
    for (const auto window : children(root_)) {
        const auto place = area(window);
        if (place && isViewable(window) && x >= place->x && x < place->x + place->width && y >= place->y &&
            y < place->y + place->height)
            top = window;
    }
    return top;
}

bool XObserver::isViewable(xcb_window_t window) const {
    const auto cookie = xcb_get_window_attributes(connection_, window);
    const auto attributes = owned(xcb_get_window_attributes_reply(connection_, cookie, nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool XObserver::exists(xcb_window_t window) const {
    return area(window).has_value();
}

std::uint32_t XObserver::pixel(int x, int y) const {
    return pixels({x, y, 1, 1}).front();
}

std::vector<std::uint32_t> XObserver::pixels(const Area& area) const {
    std::vector<std::uint32_t> result(static_cast<std::size_t>(area.width) *
                                      static_cast<std::size_t>(area.height));
    const auto cookie =
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, static_cast<std::int16_t>(area.x),
                      static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                      static_cast<std::uint16_t>(area.height), ~0U);
    const auto reply = owned(xcb_get_image_reply(connection_, cookie, nullptr));
    if (!reply)
        return result;
    const auto* bytes = xcb_get_image_data(reply.get());
    const int pixelBytes = reply->depth > 16 ? 4 : 2;
    // Rows are of whole words.
    const int padding = area.width * pixelBytes % 4;
    for (std::size_t index = 0; index < result.size(); ++index) {
        result[index] = colorOf(reply->depth, bytes);
        bytes += pixelBytes;
        if ((index + 1) % static_cast<std::size_t>(area.width) == 0)
            bytes += padding;
    }
    return result;
}

std::optional<xcb_query_pointer_reply_t> XObserver::queryPointer() const {
    const auto reply =
        owned(xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root_), nullptr));
    return reply ? std::optional(*reply) : std::nullopt;
}

std::uint16_t XObserver::modifierState() const {
    constexpr std::uint16_t modifiers = 0xff;
    const auto reply = queryPointer();
    return reply ? static_cast<std::uint16_t>(reply->mask & modifiers) : std::uint16_t{0};
}

std::uint16_t XObserver::buttonState() const {
    constexpr std::uint16_t buttons = 0x1f00;
    const auto reply = queryPointer();
    return reply ? static_cast<std::uint16_t>(reply->mask & buttons) : std::uint16_t{0};
}

std::pair<int, int> XObserver::pointer() const {
    const auto reply = queryPointer();
    return reply ? std::pair<int, int>(reply->root_x, reply->root_y) : std::pair(-1, -1);
}

xcb_window_t XObserver::windowUnderPointer() const {
    const auto reply = queryPointer();
    return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t XObserver::inputFocus() const {
    const auto reply =
        owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t XObserver::keyboardOwner() const {
    const auto reply =
        owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<std::uint32_t> XObserver::clientsOf(pid_t process) const {
    const xcb_res_client_id_spec_t all = {XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto cookie = xcb_res_query_client_ids(connection_, 1, &all);
    const auto reply = owned(xcb_res_query_client_ids_reply(connection_, cookie, nullptr));
    std::vector<std::uint32_t> clients;
    if (!reply)
        return clients;
    auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; ids.rem > 0; xcb_res_client_id_value_next(&ids)) {
        if (xcb_res_client_id_value_value_length(ids.data) > 0 &&
            static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data)) == process)
            clients.push_back(ids.data->spec.client);
    }
    return clients;
}

std::map<std::string, std::uint32_t> XObserver::resources(pid_t process) const {
    std::map<std::string, std::uint32_t> counts;
    for (const auto client : clientsOf(process)) {
        const auto cookie = xcb_res_query_client_resources(connection_, client);
        const auto reply = owned(xcb_res_query_client_resources_reply(connection_, cookie, nullptr));
        if (!reply)
            continue;
        const std::span types(xcb_res_query_client_resources_types(reply.get()), reply->num_types);
        for (const auto& type : types) {
            const auto nameCookie = xcb_get_atom_name(connection_, type.resource_type);
            const auto name = owned(xcb_get_atom_name_reply(connection_, nameCookie, nullptr));
            if (name)
                counts[{xcb_get_atom_name_name(name.get()), name->name_len}] += type.count;
        }
    }
    return counts;
}

xcb_window_t XObserver::selectionOwner(const std::string& name) const {
    const auto cookie = xcb_get_selection_owner(connection_, atom(name));
    const auto reply = owned(xcb_get_selection_owner_reply(connection_, cookie, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace velmo::desktop
