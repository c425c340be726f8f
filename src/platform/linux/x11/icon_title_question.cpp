#include "icon_title_question.h"

#include "linux/x11/tray_protocol.h"

namespace velmo::x11 {

IconTitleQuestion::IconTitleQuestion(const Connection& connection, xcb_window_t client)
    : title_(connection, client, connection.atoms().netWmName, connection.atoms().utf8String),
      olderTitle_(connection, client, XCB_ATOM_WM_NAME, XCB_ATOM_STRING) {}

std::optional<std::string> IconTitleQuestion::answer() const {
    const auto title = title_.text();
    return tray_protocol::titleFrom(title, olderTitle_.text());
}

}  // namespace velmo::x11
