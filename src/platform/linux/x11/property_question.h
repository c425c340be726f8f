#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/property_value.h"
#include "linux/x11/reply.h"

#include <cstdint>
#include <string>
#include <vector>

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

    /// Empty where there is none of that type.
    std::string text() const { return textIn(answer().get(), type_); }
    /// Empty where there are none of 32 bits.
    std::vector<std::uint32_t> numbers() const { return numbersIn(answer().get()); }

private:
    /// Null where the window has gone.
    Owned<xcb_get_property_reply_t> answer() const {
        return owned(xcb_get_property_reply(connection_, cookie_, nullptr));
    }

    xcb_connection_t* connection_;
    xcb_atom_t type_;
    xcb_get_property_cookie_t cookie_;
};

}  // namespace velmo::x11
