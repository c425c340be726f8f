#include "preferences/utf8.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

namespace velmo {
namespace {

using namespace std::string_literals;

// The first and the last code point of each length, and both sides of the gap of the surrogates.
const std::array<std::pair<std::uint32_t, std::string>, 11> codePoints{{
    {0x0, "\0"s},
    {0x7F, "\x7F"},
    {0x80, "\xC2\x80"},
    {0x7FF, "\xDF\xBF"},
    {0x800, "\xE0\xA0\x80"},
    {0xD7FF, "\xED\x9F\xBF"},
    {0xE000, "\xEE\x80\x80"},
    {0xFFFF, "\xEF\xBF\xBF"},
    {0x10000, "\xF0\x90\x80\x80"},
    {0x12345, "\xF0\x92\x8D\x85"},
    {0x10FFFF, "\xF4\x8F\xBF\xBF"},
}};

TEST(Utf8, WritesAndReadsEveryLength) {
    std::string all;
    for (const auto& [codePoint, text] : codePoints) {
        std::string written;
        utf8::append(written, codePoint);
        EXPECT_EQ(written, text) << codePoint;
        EXPECT_TRUE(utf8::isValid(text)) << codePoint;
        all += text;
    }
    EXPECT_TRUE(utf8::isValid(all));
    std::size_t index = 0;
    for (const auto& [codePoint, text] : codePoints)
        EXPECT_EQ(utf8::next(all, index), codePoint);
    EXPECT_EQ(index, all.size());
}

TEST(Utf8, RefusesWhatIsCutOff) {
    for (const auto& [codePoint, text] : codePoints) {
        for (std::size_t length = 1; length < text.size(); ++length) {
            EXPECT_FALSE(utf8::isValid(text.substr(0, length))) << codePoint;
            EXPECT_FALSE(utf8::isValid("abcd" + text.substr(0, length))) << codePoint;
            EXPECT_FALSE(utf8::isValid(text.substr(0, length) + "a")) << codePoint;
        }
        EXPECT_TRUE(text.size() == 1 || !utf8::isValid(text.substr(1))) << codePoint;
    }
}

TEST(Utf8, RefusesOtherWaysToWriteACodePoint) {
    for (const char* text : {"\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xF0\x80\x80\x80",
                             "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80",
                             "\xF5\x80\x80\x80", "\xFF", "\x80", "\xBF", "\xC2\x7F", "\xC2\xC0"})
        EXPECT_FALSE(utf8::isValid(text)) << text;
}

}  // namespace
}  // namespace velmo
