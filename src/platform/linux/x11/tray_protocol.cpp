#include "tray_protocol.h"

#include "linux/cut_text.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace velmo::x11::tray_protocol {

namespace {

constexpr std::uint32_t requestDock = 0;
constexpr std::size_t longestName = 128;
/// Bytes, as for items of the session's bus.
constexpr std::size_t longestTitle = 500;
/// In the second number; the first one is a version.
constexpr std::uint32_t mappedFlag = 1;

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

std::optional<xcb_window_t> windowToDock(const xcb_client_message_event_t& message, xcb_atom_t opcode) {
    const bool isRequest = (message.response_type & 0x7f) == XCB_CLIENT_MESSAGE && message.format == 32 &&
                           message.type == opcode && message.data.data32[1] == requestDock &&
                           message.data.data32[2] != XCB_WINDOW_NONE;
    return isRequest ? std::optional(message.data.data32[2]) : std::nullopt;
}

std::string applicationFrom(std::string classes) {
    while (!classes.empty() && classes.back() == '\0')
        classes.pop_back();
    classes.resize(std::min(classes.size(), longestName));
    for (char& character : classes) {
        if (character == '\0')
            character = '.';
        else if (character < ' ' || character > '~')
            character = '?';
    }
    return classes;
}

std::optional<std::string> titleFrom(const std::string& title, const std::string& olderTitle) {
    const auto name = title.empty() ? fromLatin1(olderTitle) : title;
    return name.empty() ? std::nullopt : std::optional<std::string>(cutText(name, longestTitle));
}

bool wantsToBeShown(const std::vector<std::uint32_t>& embeddingInfo) {
    return embeddingInfo.size() < 2 || (embeddingInfo[1] & mappedFlag) != 0;
}

}  // namespace velmo::x11::tray_protocol
