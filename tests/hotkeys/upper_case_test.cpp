#include "hotkeys/upper_case.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace velmo
