#include "linux/process/linux_process_info.h"
#include "linux/x11/client_process.h"
#include "linux/x11/reply.h"
#include "linux/x11/tray_icon.h"

#include <algorithm>

namespace velmo::x11 {

namespace {

/// The two texts of WM_CLASS, which stay the same from start to start: at most so many characters of them.
constexpr std::size_t longestName = 128;

std::string applicationName(const Connection& connection, xcb_window_t client) {
    auto text = connection.textProperty(client, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    while (!text.empty() && text.back() == '\0')
        text.pop_back();
    text.resize(std::min(text.size(), longestName));
    for (char& character : text) {
        if (character == '\0')
            character = '.';
        else if (character < ' ' || character > '~')
            character = '?';
    }
    return text;
}

}  // namespace

std::optional<TrayIcon::Facts> TrayIcon::examine(const Connection& connection, xcb_window_t client) {
    if (client == XCB_WINDOW_NONE || client == connection.root() || connection.isOurs(client))
        return std::nullopt;
    xcb_connection_t* raw = connection.raw();
    const auto selectEvents = [&](std::uint32_t mask) {
        xcb_change_window_attributes(raw, client, XCB_CW_EVENT_MASK, &mask);
    };
    // Listening begins before the first question: who dies after its answer is heard of.
    selectEvents(clientEvents);
    const auto attributesCookie = xcb_get_window_attributes(raw, client);
    const auto geometryCookie = xcb_get_geometry(raw, client);
    const auto attributes = owned(xcb_get_window_attributes_reply(raw, attributesCookie, nullptr));
    const auto geometry = owned(xcb_get_geometry_reply(raw, geometryCookie, nullptr));
    if (!attributes || !geometry || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT ||
        geometry->root != connection.root()) {
        selectEvents(XCB_EVENT_MASK_NO_EVENT);
        return std::nullopt;
    }

    Facts facts;
    facts.client = client;
    facts.depth = geometry->depth;
    facts.visual = attributes->visual;
    facts.processIdentifier = processOfClient(connection, client);
    if (facts.processIdentifier)
        facts.ownerName = processName(*facts.processIdentifier);
    facts.application = applicationName(connection, client);
    if (facts.application.empty())
        facts.application = facts.ownerName.value_or("unknown");
    const auto& atoms = connection.atoms();
    facts.formerIdentity = connection.textProperty(client, atoms.velmoItem, atoms.utf8String);
    return facts;
}

}  // namespace velmo::x11
