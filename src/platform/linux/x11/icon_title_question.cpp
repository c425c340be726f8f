#include "icon_title_question.h"

#include "linux/cut_text.h"

#include <cstddef>
#include <string_view>

namespace velmo::x11 {

namespace {

/// Bytes, as for items of the session's bus.
constexpr std::size_t longestTitle = 500;

/// What a property of the type STRING holds, in UTF-8.
std::string fromLatin1(std::string_view text) {
    std::string result;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            result += character;
        } else {
            result += static_cast<char>(0xc0 | code >> 6);
            result += static_cast<char>(0x80 | (code & 0x3f));
        }
    }
    return result;
}

}  // namespace

IconTitleQuestion::IconTitleQuestion(const Connection& connection, xcb_window_t client)
    : title_(connection, client, connection.atoms().netWmName, connection.atoms().utf8String),
      olderTitle_(connection, client, XCB_ATOM_WM_NAME, XCB_ATOM_STRING) {}

std::optional<std::string> IconTitleQuestion::answer() const {
    auto title = title_.text();
    const auto olderTitle = olderTitle_.text();
    if (title.empty())
        title = fromLatin1(olderTitle);
    return title.empty() ? std::nullopt : std::optional<std::string>(cutText(title, longestTitle));
}

}  // namespace velmo::x11
