#include "reserved_edges.h"

#include "linux/x11/property_question.h"
#include "linux/x11/window_tree.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace velmo::x11 {

namespace {

/// Somebody may write the list of windows anew without end.
constexpr int readingsAtOnce = 10;
constexpr Seconds readingPause = 0.05;

/// Depths from the left, right, upper and lower edge, then begin and end along each of them. The older form
/// has only depths.
constexpr std::size_t depthCount = 4;
constexpr std::size_t partialCount = 12;
using Numbers = std::array<std::uint32_t, partialCount>;

struct Question {
    PropertyQuestion partial;
    PropertyQuestion whole;
};

bool readNumbers(const PropertyQuestion& question, std::size_t count, Numbers& numbers) {
    const auto values = question.numbers();
    if (values.size() < count)
        return false;
    std::copy_n(values.begin(), count, numbers.begin());
    return true;
}

bool isInside(std::int64_t place, int begin, int length) {
    return place > begin && place < std::int64_t{begin} + length;
}

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
        return PropertyQuestion(connection_, window, name, XCB_ATOM_CARDINAL,
                                partialCount * sizeof(std::uint32_t));
    };
    // All questions before the first answer, so that the server is waited for only once.
    std::vector<Question> questions;
    questions.reserve(windows.size());
    for (const auto window : windows)
        questions.push_back({ask(window, atoms.netWmStrutPartial), ask(window, atoms.netWmStrut)});
    root_ = rootArea(connection_);
    docks_.clear();
    for (const auto& [partial, whole] : questions) {
        constexpr auto farthest = std::numeric_limits<std::uint32_t>::max();
        Numbers numbers = {0, 0, 0, 0, 0, farthest, 0, farthest, 0, farthest, 0, farthest};
        const bool hasWhole = readNumbers(whole, depthCount, numbers);
        const bool hasPartial = readNumbers(partial, partialCount, numbers);
        const auto& [left, right, top, bottom, leftBegin, leftEnd, rightBegin, rightEnd, topBegin, topEnd,
                     bottomBegin, bottomEnd] = numbers;
        if (hasWhole || hasPartial)
            docks_.push_back({{left, leftBegin, leftEnd},
                              {right, rightBegin, rightEnd},
                              {bottom, bottomBegin, bottomEnd}});
    }
}

/// What ends on another monitor is reserved there, and merely reaches across this one.
PixelRect ReservedEdges::within(const PixelRect& monitor) const {
    const auto& [x, y, width, height] = monitor;
    std::int64_t leftEnd = x;
    std::int64_t rightEnd = std::int64_t{x} + width;
    std::int64_t bottomEnd = std::int64_t{y} + height;
    for (const auto& [left, right, bottom] : docks_) {
        if (left.meets(y, height) && isInside(left.depth, x, width))
            leftEnd = std::max(leftEnd, left.depth);
        if (right.meets(y, height) && isInside(root_.width - right.depth, x, width))
            rightEnd = std::min(rightEnd, root_.width - right.depth);
        if (bottom.meets(x, width) && isInside(root_.height - bottom.depth, y, height))
            bottomEnd = std::min(bottomEnd, root_.height - bottom.depth);
    }
    // Nobody leaves nothing.
    if (leftEnd >= rightEnd) {
        leftEnd = x;
        rightEnd = std::int64_t{x} + width;
    }
    return {static_cast<int>(leftEnd), y, static_cast<int>(rightEnd - leftEnd),
            static_cast<int>(bottomEnd - y)};
}

}  // namespace velmo::x11
