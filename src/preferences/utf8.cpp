#include "preferences/utf8.h"

namespace velmo::utf8 {

namespace {

std::uint32_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

/// Length of the sequence at `start`; 0 where it is not valid.
std::size_t sequenceLength(std::string_view text, std::size_t start) {
    const auto lead = byteAt(text, start);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - start < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, start + i) & 0xC0U) != 0x80)
            return 0;
    }
    const auto second = byteAt(text, start + 1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second >= 0xA0;
    const bool beyond = lead == 0xF4 && second >= 0x90;
    return overlong || surrogate || beyond ? 0 : length;
}

}  // namespace

bool isValid(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto length = sequenceLength(text, i);
        if (length == 0)
            return false;
        i += length;
    }
    return true;
}

std::uint32_t next(std::string_view text, std::size_t& index) {
    const auto length = sequenceLength(text, index);
    const auto lead = byteAt(text, index);
    // The lead byte of n bytes has n + 1 bits that are not the code point's.
    std::uint32_t codePoint = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
        codePoint = codePoint << 6U | (byteAt(text, index + i) & 0x3FU);
    index += length;
    return codePoint;
}

void append(std::string& text, std::uint32_t codePoint) {
    const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (codePoint < 0x80) {
        put(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        put(0xC0U | codePoint >> 6U);
    } else {
        if (codePoint < 0x10000) {
            put(0xE0U | codePoint >> 12U);
        } else {
            put(0xF0U | codePoint >> 18U);
            put(0x80U | (codePoint >> 12U & 0x3FU));
        }
        put(0x80U | (codePoint >> 6U & 0x3FU));
    }
    put(0x80U | (codePoint & 0x3FU));
}

}  // namespace velmo::utf8
