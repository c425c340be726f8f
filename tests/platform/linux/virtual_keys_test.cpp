#include "linux/x11/virtual_keys.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace velmo::x11 {

namespace {

/// Rows are named from the space bar up; each name ends with the key's number in its row.
std::vector<std::string> row(const std::string& prefix, int count) {
    std::vector<std::string> names;
    for (int number = 1; number <= count; ++number)
        names.push_back(prefix + (number < 10 ? "0" : "") + std::to_string(number));
    return names;
}

TEST(VirtualKeys, NameEachKeyOnce) {
    std::vector<std::string> names = {"TLDE", "BKSL", "LSGT", "RTRN", "TAB",  "SPCE", "BKSP", "ESC",  "KP0",
                                      "KP1",  "KP2",  "KP3",  "KP4",  "KP5",  "KP6",  "KP7",  "KP8",  "KP9",
                                      "KPDL", "KPMU", "KPAD", "NMLK", "KPDV", "KPEN", "KPSU", "KPEQ", "INS",
                                      "HOME", "PGUP", "DELE", "END",  "PGDN", "LEFT", "RGHT", "DOWN", "UP"};
    for (const auto& part : {row("AE", 13), row("AD", 12), row("AC", 11), row("AB", 11), row("FK", 20)})
        names.insert(names.end(), part.begin(), part.end());
    std::set<std::uint16_t> codes;
    for (const auto& name : names) {
        const auto code = virtualKeyCodeOf(name);
        ASSERT_TRUE(code) << name;
        EXPECT_TRUE(codes.insert(*code).second) << name;
    }
    // 26 letters, 10 digits, 12 of punctuation, 5 for editing, 18 of the keypad, 20 function keys, 10 for
    // navigation, 2 of Japanese keyboards.
    EXPECT_EQ(codes.size(), 26U + 10 + 12 + 5 + 18 + 20 + 10 + 2);
}

TEST(VirtualKeys, NameKnownKeys) {
    EXPECT_EQ(virtualKeyCodeOf("AC01"), 0);
    EXPECT_EQ(virtualKeyCodeOf("AC08"), 40);
    EXPECT_EQ(virtualKeyCodeOf("SPCE"), 49);
    EXPECT_EQ(virtualKeyCodeOf("ESC"), 53);
    EXPECT_EQ(virtualKeyCodeOf("KPEN"), 76);
    EXPECT_EQ(virtualKeyCodeOf("FK05"), 96);
    EXPECT_EQ(virtualKeyCodeOf("LEFT"), 123);
}

TEST(VirtualKeys, KnowTheKeyBesideATallReturnByBothItsNames) {
    EXPECT_EQ(virtualKeyCodeOf("AC12"), 42);
    EXPECT_EQ(virtualKeyCodeOf("BKSL"), 42);
}

TEST(VirtualKeys, HaveNoneForModifiersAndStrangers) {
    EXPECT_EQ(virtualKeyCodeOf("LFSH"), std::nullopt);
    EXPECT_EQ(virtualKeyCodeOf(""), std::nullopt);
    EXPECT_EQ(virtualKeyCodeOf("AC01 "), std::nullopt);
}

}  // namespace

}  // namespace velmo::x11
