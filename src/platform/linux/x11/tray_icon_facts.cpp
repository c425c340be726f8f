#include "tray_icon_facts.h"

#include "linux/process/linux_process_info.h"
#include "linux/x11/reply.h"
#include "linux/x11/tray_protocol.h"

namespace velmo::x11 {

namespace {

/// Bytes that are read of what makes the icon's name.
constexpr std::uint32_t nameLimit = 512;

/// Listening begins before the first question: who dies after its answer is heard of.
xcb_get_window_attributes_cookie_t listenAndAsk(const Connection& connection, xcb_window_t client) {
    connection.selectEvents(client, trayClientEvents);
    return xcb_get_window_attributes(connection.raw(), client);
}

}  // namespace

TrayIconQuestions::TrayIconQuestions(const Connection& connection, xcb_window_t client)
    : connection_(connection),
      client_(client),
      attributes_(listenAndAsk(connection, client)),
      geometry_(xcb_get_geometry(connection.raw(), client)),
      tree_(xcb_query_tree(connection.raw(), client)),
      process_(connection, client),
      classes_(connection, client, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, nameLimit),
      formerIdentity_(connection, client, connection.atoms().velmoItem, connection.atoms().utf8String,
                      nameLimit),
      title_(connection, client),
      embedding_(connection, client) {}

std::optional<TrayIconFacts> TrayIconQuestions::answer() const {
    const auto attributes = owned(xcb_get_window_attributes_reply(connection_.raw(), attributes_, nullptr));
    const auto geometry = owned(xcb_get_geometry_reply(connection_.raw(), geometry_, nullptr));
    const auto tree = owned(xcb_query_tree_reply(connection_.raw(), tree_, nullptr));
    // All answers are taken: what is left lying stays in memory.
    TrayIconFacts facts;
    facts.client = client_;
    facts.processIdentifier = process_.answer();
    facts.application = tray_protocol::applicationFrom(classes_.text());
    facts.formerIdentity = formerIdentity_.text();
    facts.title = title_.answer();
    facts.wantsToBeShown = embedding_.answer();
    if (!attributes || !geometry || !tree || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT ||
        geometry->root != connection_.root()) {
        connection_.selectEvents(client_, XCB_EVENT_MASK_NO_EVENT);
        return std::nullopt;
    }
    facts.depth = geometry->depth;
    facts.visual = attributes->visual;
    facts.parent = tree->parent;
    if (facts.processIdentifier)
        facts.ownerName = processName(*facts.processIdentifier);
    if (facts.application.empty())
        facts.application = facts.ownerName.value_or("unknown");
    return facts;
}

}  // namespace velmo::x11
