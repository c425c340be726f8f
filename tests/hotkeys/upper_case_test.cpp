#include "hotkeys/upper_case.h"

#include "preferences/utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace velmo {
namespace {

TEST(UpperCase, TurnsLettersIntoCapitals) {
    EXPECT_EQ(upperCased("azk"), "AZK");
    EXPECT_EQ(upperCased("àöøþÿµ"), "ÀÖØÞŸΜ");
    EXPECT_EQ(upperCased("āčėıłńőşťūźžơưə"), "ĀČĖIŁŃŐŞŤŪŹŽƠƯƏ");
    EXPECT_EQ(upperCased("ạỹ"), "ẠỸ");
    EXPECT_EQ(upperCased("αωςάέόώ"), "ΑΩΣΆΈΌΏ");
    EXPECT_EQ(upperCased("абяёіўґқӏү"), "АБЯЁІЎҐҚӀҮ");
    EXPECT_EQ(upperCased("աֆაჰ"), "ԱՖᲐᲰ");
}

TEST(UpperCase, KnowsCapitalsOfTwoLetters) {
    EXPECT_EQ(upperCased("ß"), "SS");
    EXPECT_EQ(upperCased("և"), "ԵՒ");
}

TEST(UpperCase, LeavesTheRestAsItIs) {
    EXPECT_EQ(upperCased(""), "");
    EXPECT_EQ(upperCased("AZ09 `{[÷×ÀΣЯ"), "AZ09 `{[÷×ÀΣЯ");
    EXPECT_EQ(upperCased("אعक한あ😀"), "אعक한あ😀");
}

TEST(UpperCase, LeavesWhatIsNotUtf8AsItIs) {
    EXPECT_EQ(upperCased("a\xFF"), "a\xFF");
    EXPECT_EQ(upperCased("a\xC3"), "a\xC3");
}

// How many letters it knows a capital of, each the one that Unicode has for it, and the FNV-1a hash of all
// texts of one code point: whoever adds letters takes both anew, after a look at what is added.
TEST(UpperCase, KnowsTheLettersThatItKnew) {
    constexpr std::uint32_t surrogates = 0xD800;
    constexpr std::uint32_t afterSurrogates = 0xE000;
    int changed = 0;
    std::uint64_t hash = 0xcbf29ce484222325;
    for (std::uint32_t letter = 1; letter < 0x10000; ++letter) {
        if (letter >= surrogates && letter < afterSurrogates)
            continue;
        std::string text;
        utf8::append(text, letter);
        const std::string capital = upperCased(text);
        changed += capital != text ? 1 : 0;
        for (const char byte : capital)
            hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    }
    EXPECT_EQ(changed, 573);
    EXPECT_EQ(hash, 0x18ffd6854ec5bf17);
}

}  // namespace
}  // namespace velmo
