#include "platform/defaults_conversion.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

using defaults_conversion::toBool;
using defaults_conversion::toDouble;
using defaults_conversion::toString;

DefaultsValue text(const char* characters) {
    return std::string(characters);
}

TEST(DefaultsConversion, ReadsNumbersAsBools) {
    EXPECT_TRUE(toBool(1.0));
    EXPECT_TRUE(toBool(-0.5));
    EXPECT_FALSE(toBool(0.0));
    EXPECT_TRUE(toBool(true));
    EXPECT_FALSE(toBool(false));
}

TEST(DefaultsConversion, ReadsTextsAsBools) {
    for (const char* yes : {"YES", "yes", "y", "true", "T", "1", "42", "  yes", "-1", "0.5"})
        EXPECT_TRUE(toBool(text(yes))) << yes;
    for (const char* no : {"", "NO", "false", "0", "off", "   ", "0.0", "abc"})
        EXPECT_FALSE(toBool(text(no))) << no;
}

TEST(DefaultsConversion, ReadsTextsAsNumbersUpToWhereTheyStopBeingOne) {
    EXPECT_EQ(toDouble(text("2.5")), 2.5);
    EXPECT_EQ(toDouble(text(" +3 seconds")), 3);
    EXPECT_EQ(toDouble(text("-1e2x")), -100);
    EXPECT_EQ(toDouble(text("five")), 0);
    EXPECT_EQ(toDouble(text("")), 0);
    EXPECT_EQ(toDouble(true), 1);
    EXPECT_EQ(toDouble(false), 0);
}

TEST(DefaultsConversion, GivesNumbersAndBoolsAsText) {
    EXPECT_EQ(toString(5.0), "5");
    EXPECT_EQ(toString(0.25), "0.25");
    EXPECT_EQ(toString(true), "1");
    EXPECT_EQ(toString(false), "0");
    EXPECT_EQ(toString(text("abc")), "abc");
}

TEST(DefaultsConversion, ReadsDataAsNothing) {
    const DefaultsValue data = Data{'1'};
    EXPECT_FALSE(toBool(data));
    EXPECT_EQ(toDouble(data), 0);
    EXPECT_EQ(toString(data), std::nullopt);
}

}  // namespace
}  // namespace velmo
