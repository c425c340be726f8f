#include "icon_title_question.h"

#include "linux/x11/tray_protocol.h"

#include <cstdint>

namespace velmo::x11 {

namespace {

/// Bytes that are read of one: programs may have them as long as they like.
constexpr std::uint32_t titleLimit = 512;

}  // namespace

IconTitleQuestion::IconTitleQuestion(const Connection& connection, xcb_window_t client)
    : title_(connection, client, connection.atoms().netWmName, connection.atoms().utf8String, titleLimit),
      olderTitle_(connection, client, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, titleLimit) {}

std::optional<std::string> IconTitleQuestion::answer() const {
    const auto title = title_.text();
    return tray_protocol::titleFrom(title, olderTitle_.text());
}

}  // namespace velmo::x11
