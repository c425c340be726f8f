#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/reply.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace velmo::x11 {

/// A question for a property of a window, asked at once. Its answer is to be taken, once; who asks several
/// first waits for the server only once.
class PropertyQuestion {
public:
    /// The answer is cut off after `limit` bytes.
    PropertyQuestion(const Connection& connection, xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                     std::uint32_t limit = 65536)
        : connection_(connection.raw()),
          type_(type),
          cookie_(xcb_get_property(connection_, 0, window, name, type, 0, limit / 4)) {}

    /// Null where the window has gone.
    Owned<xcb_get_property_reply_t> answer() const {
        return owned(xcb_get_property_reply(connection_, cookie_, nullptr));
    }
    /// Empty where there is none of that type.
    std::string text() const {
        const auto reply = answer();
        if (!reply || reply->type != type_)
            return {};
        const auto* begin = static_cast<const char*>(xcb_get_property_value(reply.get()));
        return {begin, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
    }

private:
    xcb_connection_t* connection_;
    xcb_atom_t type_;
    xcb_get_property_cookie_t cookie_;
};

}  // namespace velmo::x11
