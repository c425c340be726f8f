#pragma once

#include <cstddef>
#include <string_view>

namespace velmo {

/// The beginning of a text in UTF-8: at most so many bytes, and no part of a character.
inline std::string_view cutText(std::string_view text, std::size_t most) {
    if (text.size() <= most)
        return text;
    while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xc0) == 0x80)
        --most;
    return text.substr(0, most);
}

}  // namespace velmo
