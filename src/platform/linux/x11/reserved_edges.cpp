#include "reserved_edges.h"

#include "linux/x11/property_question.h"
#include "linux/x11/window_tree.h"

#include <cstdint>

namespace velmo::x11 {

namespace {

/// Somebody may write the list of windows anew without end.
constexpr int readingsAtOnce = 10;
constexpr Seconds readingPause = 0.05;

/// What is read of either form.
constexpr std::uint32_t strutLimit = 12 * sizeof(std::uint32_t);

struct Question {
    PropertyQuestion partial;
    PropertyQuestion whole;
};

}  // namespace

ReservedEdges::ReservedEdges(Connection& connection)
    : connection_(connection),
      reading_(
          connection.loop(), readingPause, [this] { read(); }, readingsAtOnce) {
    changes_ = connection.onWindow(connection.root(), [this](const auto& event) { handle(event); });
    read();
}

void ReservedEdges::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto name = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
        // The second one tells of docks that have changed their minds.
        if (name == connection_.atoms().netClientList || name == connection_.atoms().netWorkarea)
            reading_.request();
    } else if (type == XCB_CONFIGURE_NOTIFY &&
               reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == connection_.root()) {
        reading_.request();
    }
}

void ReservedEdges::read() {
    const auto& atoms = connection_.atoms();
    const auto windows = managedWindowsOfOthers(connection_);
    const auto ask = [&](xcb_window_t window, xcb_atom_t name) {
        return PropertyQuestion(connection_, window, name, XCB_ATOM_CARDINAL, strutLimit);
    };
    // All questions before the first answer, so that the server is waited for only once.
    std::vector<Question> questions;
    questions.reserve(windows.size());
    for (const auto window : windows)
        questions.push_back({ask(window, atoms.netWmStrutPartial), ask(window, atoms.netWmStrut)});
    root_ = rootArea(connection_);
    docks_.clear();
    for (const auto& [partial, whole] : questions) {
        if (const auto dock = DockStrut::from(partial.numbers(), whole.numbers()))
            docks_.push_back(*dock);
    }
}

}  // namespace velmo::x11
