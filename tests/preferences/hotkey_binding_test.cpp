#include "preferences/hotkey_binding.h"

#include "preferences/bytes.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmo {
namespace {

std::string encoded(const HotkeyBinding& binding) {
    const auto json = encodeHotkeyBinding(binding);
    return json ? std::string(json->begin(), json->end()) : "none";
}

std::optional<HotkeyBinding> decoded(const std::string& json) {
    return decodeHotkeyBinding(bytes(json));
}

/// A shortcut whose text is given as JSON.
std::optional<HotkeyBinding> withDisplay(const std::string& display) {
    return decoded(R"({"keyCode":1,"modifiers":2,"display":)" + display + "}");
}

std::optional<HotkeyBinding> withNumbers(const std::string& keyCode, const std::string& modifiers) {
    return decoded(R"({"keyCode":)" + keyCode + R"(,"modifiers":)" + modifiers + R"(,"display":""})");
}

/// A shortcut with one more member.
std::optional<HotkeyBinding> withMember(const std::string& member) {
    return decoded(R"({"keyCode":1,"modifiers":2,"display":"x",)" + member + "}");
}

TEST(HotkeyBinding, IsWrittenInTheOrderOfItsFields) {
    EXPECT_EQ(encoded({4, 1179648, "⇧⌘H"}), R"({"keyCode":4,"modifiers":1179648,"display":"⇧⌘H"})");
}

TEST(HotkeyBinding, WritesTheLargestNumbersInFull) {
    EXPECT_EQ(
        encoded({std::numeric_limits<std::uint16_t>::max(), std::numeric_limits<std::uint64_t>::max(), ""}),
        R"({"keyCode":65535,"modifiers":18446744073709551615,"display":""})");
}

TEST(HotkeyBinding, EscapesWhatMustNotStandInAString) {
    EXPECT_EQ(encoded({0, 0, std::string("\"\\/\b\f\n\r\t\x01\x1f\x7f\0", 12)}),
              "{\"keyCode\":0,\"modifiers\":0,\"display\":\""
              "\\\"\\\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f\x7f\\u0000\"}");
    EXPECT_EQ(encoded({49, 0, "a b"}), R"({"keyCode":49,"modifiers":0,"display":"a b"})");
}

TEST(HotkeyBinding, CannotBeWrittenWithATextThatIsNotUtf8) {
    for (const char* display : {"\x80", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x8C",
                                "\xFF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xF5\x80\x80\x80"})
        EXPECT_FALSE(encodeHotkeyBinding({1, 2, display})) << display;
    for (const char* display :
         {"\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(encodeHotkeyBinding({1, 2, display})) << display;
}

TEST(HotkeyBinding, ReadsWhatItWrote) {
    for (const HotkeyBinding& binding :
         {HotkeyBinding{0, 0, ""},
          HotkeyBinding{65535, std::numeric_limits<std::uint64_t>::max(), "⌃⌥⇧⌘Space"},
          HotkeyBinding{49, 0x100000, std::string("a\"b\\c/d\n\0e\x01", 11)},
          HotkeyBinding{1, 2, "\U0001F9CA"}}) {
        const auto json = encodeHotkeyBinding(binding);
        ASSERT_TRUE(json);
        EXPECT_EQ(decodeHotkeyBinding(*json), binding);
    }
}

TEST(HotkeyBinding, ComparesFieldByField) {
    const HotkeyBinding binding{1, 2, "x"};
    EXPECT_EQ(binding, (HotkeyBinding{1, 2, "x"}));
    EXPECT_NE(binding, (HotkeyBinding{3, 2, "x"}));
    EXPECT_NE(binding, (HotkeyBinding{1, 3, "x"}));
    EXPECT_NE(binding, (HotkeyBinding{1, 2, "y"}));
}

TEST(HotkeyBinding, IsReadInAnyOrderWithBlanksAndOtherMembers) {
    EXPECT_EQ(
        decoded(
            " {\n\t\"display\" : \"x\" ,\r\"more\":[1,{\"a\":null},[]],\"modifiers\":2, \"keyCode\": 1 } "),
        (HotkeyBinding{1, 2, "x"}));
    for (const char* member : {R"("a":true)", R"("a":false)", R"("a":null)", R"("a":{})",
                               R"("a":[{},{"b":[1e5]}])", R"("a":-0.5E+10)", R"("":"\u00e9")"})
        EXPECT_EQ(withMember(member), (HotkeyBinding{1, 2, "x"})) << member;
}

TEST(HotkeyBinding, NeedsAllThreeMembers) {
    EXPECT_FALSE(decoded(R"({"modifiers":2,"display":"x"})"));
    EXPECT_FALSE(decoded(R"({"keyCode":1,"display":"x"})"));
    EXPECT_FALSE(decoded(R"({"keyCode":1,"modifiers":2})"));
    EXPECT_FALSE(decoded(R"({"KeyCode":1,"modifiers":2,"display":"x"})"));
    EXPECT_FALSE(decoded(R"({"inner":{"keyCode":1,"modifiers":2,"display":"x"}})"));
    EXPECT_FALSE(decoded("{}"));
}

TEST(HotkeyBinding, NeedsMembersOfTheRightTypes) {
    for (const char* wrong : {R"("1")", "null", "true", "[1]", "{}"}) {
        EXPECT_FALSE(withNumbers(wrong, "2")) << wrong;
        EXPECT_FALSE(withNumbers("1", wrong)) << wrong;
    }
    for (const char* wrong : {"1", "null", "true", R"(["x"])", "{}"})
        EXPECT_FALSE(withDisplay(wrong)) << wrong;
}

TEST(HotkeyBinding, NeedsNumbersInRange) {
    EXPECT_TRUE(withNumbers("65535", "18446744073709551615"));
    EXPECT_FALSE(withNumbers("65536", "0"));
    EXPECT_FALSE(withNumbers("0", "18446744073709551616"));
    EXPECT_FALSE(withNumbers("-1", "0"));
    EXPECT_FALSE(withNumbers("0", "-1"));
    EXPECT_FALSE(withNumbers("1e400", "0"));
    EXPECT_FALSE(withNumbers("0", "1.8446744073709552e19"));
    EXPECT_FALSE(withNumbers("0", "99999999999999999999999999"));
}

TEST(HotkeyBinding, TakesWholeNumbersHoweverWritten) {
    EXPECT_EQ(withNumbers("5.0", "1e3"), (HotkeyBinding{5, 1000, ""}));
    EXPECT_EQ(withNumbers("-0", "1.5E1"), (HotkeyBinding{0, 15, ""}));
    EXPECT_EQ(withNumbers("500e-1", "0.0"), (HotkeyBinding{50, 0, ""}));
    EXPECT_FALSE(withNumbers("5.5", "0"));
    EXPECT_FALSE(withNumbers("1e-1", "0"));
    EXPECT_FALSE(withNumbers("1e-999", "0"));
    EXPECT_EQ(withNumbers("0e999", "0.0e-999"), (HotkeyBinding{0, 0, ""}));
}

TEST(HotkeyBinding, RefusesNumbersThatJsonDoesNotKnow) {
    for (const char* number :
         {"01", "+1", ".5", "1.", "1e", "1e+", "0x10", "NaN", "Infinity", "-", "1 2", ""})
        EXPECT_FALSE(withNumbers(number, "0")) << number;
}

TEST(HotkeyBinding, ReadsEscapes) {
    EXPECT_EQ(withDisplay(R"("\"\\\/\b\f\n\r\t")")->display, "\"\\/\b\f\n\r\t");
    EXPECT_EQ(withDisplay(R"("\u0041\u00e9\u2318\uD83e\uddCA")")->display, "A\u00e9\u2318\U0001F9CA");
    EXPECT_EQ(withDisplay(R"("\u0000")")->display, std::string(1, '\0'));
}

TEST(HotkeyBinding, RefusesBrokenStrings) {
    for (const char* string : {R"("\x")", R"("\u12")", R"("\u12G4")", R"("\uD83E")", R"("\uD83E\u0041")",
                               R"("\uDDCA")", R"("\uD83Ex")", R"("\uD83E\n")", "\"", "\"\\", "\"\\u",
                               "\"\n\"", "\"\t\"", "\"\xC3\"", "\"\xED\xA0\x80\"", "'x'", R"("\U0041")"})
        EXPECT_FALSE(withDisplay(string)) << string;
}

TEST(HotkeyBinding, RefusesWhatIsNotOneJsonObject) {
    const std::string whole = R"({"keyCode":1,"modifiers":2,"display":"x"})";
    ASSERT_TRUE(decoded(whole));
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(decoded(whole.substr(0, length))) << length;
    for (const std::string& text : {"[" + whole + "]", whole + whole, whole + ",", whole + "x",
                                    std::string("null"), std::string("\"x\""), std::string("1"),
                                    "//\n" + whole, whole + std::string(1, '\0'), "\xEF\xBB\xBF" + whole})
        EXPECT_FALSE(decoded(text)) << text;
}

TEST(HotkeyBinding, RefusesBrokenSyntaxInMembersItDoesNotRead) {
    for (const char* member :
         {R"("a":)", R"("a")", R"(a:1)", R"("a":tru)", R"("a":nul)", R"("a":[1,])", R"("a":[1 2])",
          R"("a":{"b"})", R"("a":{"b":1,})", R"("a":{,})", R"("a":[)", R"("a":{)", R"("a":"\q")", R"("a":-)",
          R"("a":1,)", R"("a":1e)", "\"\xFF\":1", "\"a\":\v1"})
        EXPECT_FALSE(withMember(member)) << member;
}

TEST(HotkeyBinding, TakesTheFirstOfRepeatedMembers) {
    EXPECT_EQ(withMember(R"("display":"y","keyCode":7)"), (HotkeyBinding{1, 2, "x"}));
}

TEST(HotkeyBinding, RefusesEndlessNesting) {
    const auto nested = [](std::size_t depth) {
        return R"("a":)" + std::string(depth, '[') + std::string(depth, ']');
    };
    EXPECT_TRUE(withMember(nested(511)));
    EXPECT_FALSE(withMember(nested(512)));
    EXPECT_FALSE(withMember(R"("a":)" + std::string(1'000'000, '[')));
    std::string objects;
    for (int i = 0; i < 100'000; ++i)
        objects += "{\"a\":";
    EXPECT_FALSE(decoded(objects));
}

}  // namespace
}  // namespace velmo
