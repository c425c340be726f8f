#include "preferences/json_reader.h"

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <string>

namespace velmo {
namespace {

bool isRead(const std::string& text) {
    return readJsonObject(text).has_value();
}

/// The text of the member "a" of this value. Absent where the whole is not read, or it is no string.
std::optional<std::string> stringIn(const std::string& value) {
    const auto members = readJsonObject(R"({"a":)" + value + "}");
    if (!members || members->at("a").asString() == nullptr)
        return std::nullopt;
    return *members->at("a").asString();
}

std::optional<std::uint64_t> numberIn(const std::string& value,
                                      std::uint64_t maximum = std::numeric_limits<std::uint64_t>::max()) {
    const auto members = readJsonObject(R"({"a":)" + value + "}");
    return members ? members->at("a").asUnsigned(maximum) : std::nullopt;
}

TEST(JsonReader, ReadsOneObjectAndNothingElse) {
    for (const char* text : {"{}", " \t\n\r{}\r\n\t ", "{ }", "{\n}", R"({"a":[]})", R"({"a":[ ]})",
                             R"({"a":[1 , 2 ]})", R"({ "a" : { } , "b" : { "c" : [ { } ] } })"})
        EXPECT_TRUE(isRead(text)) << text;
    for (const char* text : {"", " ", "{", "}", "{{}", "{}}", "{} {}", "[]", "1", "x", "{}x", "{]", "\v{}"})
        EXPECT_FALSE(isRead(text)) << text;
}

TEST(JsonReader, RefusesAMemberThatIsNotWhole) {
    for (const char* members : {",",          "a",           "\"a\"",     "\"a\":",          "\"a\" 1",
                                ":1",         "\"a\":1,",    ",\"a\":1",  "\"a\":1 \"b\":2", "\"a\"::1",
                                "\"a:1",      "a\":1",       "1:1",       "\"a\":1;",        "\"a\":tru",
                                "\"a\":truE", "\"a\":falsy", "\"a\":nul", "\"a\":true1",     "\"a\":x"})
        EXPECT_FALSE(isRead("{" + std::string(members) + "}")) << members;
}

TEST(JsonReader, RefusesAListThatIsNotWhole) {
    for (const char* list :
         {"[", "]", "[,]", "[1,]", "[,1]", "[1 2]", "[1}", "[[]", "[]]", "[1", "[\"a\":1]"})
        EXPECT_FALSE(isRead(R"({"a":)" + std::string(list) + "}")) << list;
}

TEST(JsonReader, RefusesEveryBeginningOfAText) {
    const std::string text = R"( {"a" : [1.5e+3 , "\u00e9\n" ,{"b":null}] , "c":{"d":-0,"e":false}} )";
    ASSERT_TRUE(isRead(text));
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_FALSE(isRead(text.substr(0, length))) << length;
}

TEST(JsonReader, CountsWhatIsOpenAndNotWhatWas) {
    const auto side = [](const std::string& one) {
        std::string many = one;
        for (int i = 0; i < 600; ++i)
            many += "," + one;
        return R"({"a":[)" + many + "]}";
    };
    EXPECT_TRUE(isRead(side("[]")));
    EXPECT_TRUE(isRead(side("[1]")));
    EXPECT_TRUE(isRead(side("{}")));
    EXPECT_TRUE(isRead(side(R"({"b":1})")));
}

TEST(JsonReader, ReadsObjectsWithinEachOtherFiveHundredAndTwelveTimes) {
    const auto nested = [](int depth) {
        std::string text = "1";
        for (int i = 0; i < depth; ++i)
            text = R"({"a":)" + text + "}";
        return text;
    };
    EXPECT_TRUE(isRead(nested(512)));
    EXPECT_FALSE(isRead(nested(513)));
}

TEST(JsonReader, CountsListsAsObjects) {
    // As many as are opened, or one fewer.
    const auto nested = [](int opened, int closed) {
        return R"({"a":)" + std::string(static_cast<std::size_t>(opened), '[') +
               std::string(static_cast<std::size_t>(closed), ']') + "}";
    };
    EXPECT_TRUE(isRead(nested(511, 511)));
    EXPECT_FALSE(isRead(nested(511, 510)));
    EXPECT_FALSE(isRead(nested(512, 512)));
    EXPECT_FALSE(isRead(nested(512, 511)));
}

TEST(JsonReader, KnowsWhatMayStandInAString) {
    EXPECT_EQ(stringIn("\" ~\x7f\""), " ~\x7f");
    EXPECT_EQ(stringIn(R"("")"), "");
    for (char character = 0; character < ' '; ++character) {
        EXPECT_FALSE(stringIn("\"" + std::string(1, character) + "\"")) << static_cast<int>(character);
        EXPECT_FALSE(stringIn("\"" + std::string(1, character))) << static_cast<int>(character);
    }
    for (const char* string :
         {"\"", "\"a", "a\"", R"("\")", R"("\a")", R"("\")", R"("\u")", R"("\u00e")", R"("\u00eg")",
          R"("\u00e`")", R"("\u00eG")", R"("\u00e@")", R"("\u00e/")", R"("\u00e:")", R"("\u-001")"})
        EXPECT_FALSE(stringIn(string)) << string;
}

TEST(JsonReader, ReadsEveryHexadecimalDigit) {
    EXPECT_EQ(stringIn(R"("\u0123\u4567\u89ab\ucdef")"), "\u0123\u4567\u89ab\ucdef");
    EXPECT_EQ(stringIn(R"("\u89AB\uCDEF")"), "\u89ab\ucdef");
}

TEST(JsonReader, PutsHalvesOfALetterTogether) {
    EXPECT_EQ(stringIn(R"("\ud7ff\ue000\uffff")"), "\ud7ff\ue000\uffff");
    EXPECT_EQ(stringIn(R"("\ud800\udc00")"), "\U00010000");
    EXPECT_EQ(stringIn(R"("\ud801\udc01")"), "\U00010401");
    EXPECT_EQ(stringIn(R"("\udbff\udfff")"), "\U0010ffff");
    for (const char* string :
         {R"("\ud800")", R"("\udbff")", R"("\udc00")", R"("\udfff")", R"("\udc00\ud800")",
          R"("\udc00\udc00")", R"("\ud800\ud800")", R"("\ud800\udbff")", R"("\ud800\ue000")",
          R"("\ud800dc00")", R"("\ud800\\udc00")", R"("\ud800\u")"})
        EXPECT_FALSE(stringIn(string)) << string;
}

TEST(JsonReader, KnowsWhatIsANumber) {
    for (const char* number : {"0", "-0", "10", "-7", "1.5", "0.05", "1e5", "1E-5", "0.1e+07"})
        EXPECT_TRUE(isRead(R"({"a":)" + std::string(number) + "}")) << number;
    for (const char* number : {"-", "+1", "01", "-01", "1.", ".5", "-.5", "1.e5", "1e", "1e+", "1e-", "1e1.5",
                               "- 1", "1 e5", "0x1", "1,5", "NaN", "Infinity", "--1"})
        EXPECT_FALSE(isRead(R"({"a":)" + std::string(number) + "}")) << number;
}

TEST(JsonReader, KnowsNumbersUpToTheirLargest) {
    EXPECT_EQ(numberIn("7", 7), 7U);
    EXPECT_FALSE(numberIn("8", 7));
    EXPECT_EQ(numberIn("7.0", 7), 7U);
    EXPECT_FALSE(numberIn("8.0", 7));
    EXPECT_EQ(numberIn("18446744073709549568.0"), 18446744073709549568U);
    EXPECT_FALSE(numberIn("18446744073709551616.0"));
    EXPECT_FALSE(numberIn("1e999"));
    EXPECT_FALSE(numberIn("-1.0"));
    EXPECT_FALSE(numberIn("true"));
}

/// A locale that writes numbers otherwise.
class Commas : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(JsonReader, ReadsNumbersWhateverTheLocale) {
    const auto former = std::locale::global(std::locale(std::locale::classic(), new Commas));
    EXPECT_EQ(numberIn("1.5e1"), 15U);
    EXPECT_EQ(numberIn("1500.0"), 1500U);
    std::locale::global(former);
}

}  // namespace
}  // namespace velmo
