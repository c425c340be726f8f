#pragma once

#include <functional>

namespace velmo::macos {

/// Tells a view's handler, if it has one, what the user has done with a control, and has the control show
/// then what is described.
template <typename Handler, typename... Values>
void report(const Handler& handler, const std::function<void()>& reassert, const Values&... values) {
    // Copies, because the handler may end the node that has both.
    const auto ownHandler = handler;
    const auto ownReassert = reassert;
    if (ownHandler)
        ownHandler(values...);
    ownReassert();
}

}  // namespace velmo::macos
