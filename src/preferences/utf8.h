#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmo::utf8 {

/// False for stray and missing continuation bytes, overlong forms, surrogates and what lies beyond U+10FFFF.
bool isValid(std::string_view text);
/// The code point at `index` of a valid text; `index` moves on to the next one.
std::uint32_t next(std::string_view text, std::size_t& index);
/// The code point is a valid one.
void append(std::string& text, std::uint32_t codePoint);

}  // namespace velmo::utf8
