#include "linux/x11/virtual_keys.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace velmo::x11 {

namespace {

TEST(VirtualKeys, NameEachKeyOnce) {
    std::set<std::string_view> names;
    int keys = 0;
    for (std::uint32_t code = 0; code < 256; ++code) {
        const auto name = keyNameOf(code);
        if (!name)
            continue;
        ++keys;
        EXPECT_TRUE(names.insert(*name).second) << *name;
        EXPECT_EQ(virtualKeyCodeOf(*name), code);
        EXPECT_LE(name->size(), 4U);
    }
    // 26 letters, 10 digits, 12 of punctuation, 5 for editing, 18 of the keypad, 20 function keys, 10 for
    // navigation, 2 of Japanese keyboards.
    EXPECT_EQ(keys, 26 + 10 + 12 + 5 + 18 + 20 + 10 + 2);
}

TEST(VirtualKeys, CoverTheMainBlock) {
    const auto row = [](const std::string& prefix, int first, int last) {
        for (int number = first; number <= last; ++number) {
            const std::string name = prefix + (number < 10 ? "0" : "") + std::to_string(number);
            EXPECT_TRUE(virtualKeyCodeOf(name)) << name;
        }
    };
    row("AE", 1, 12);
    row("AD", 1, 12);
    row("AC", 1, 11);
    row("AB", 1, 10);
    row("FK", 1, 20);
}

TEST(VirtualKeys, NameKnownKeys) {
    EXPECT_EQ(keyNameOf(0), "AC01");
    EXPECT_EQ(keyNameOf(40), "AC08");
    EXPECT_EQ(keyNameOf(49), "SPCE");
    EXPECT_EQ(keyNameOf(53), "ESC");
    EXPECT_EQ(keyNameOf(76), "KPEN");
    EXPECT_EQ(keyNameOf(96), "FK05");
    EXPECT_EQ(keyNameOf(123), "LEFT");
}

TEST(VirtualKeys, KnowTheKeyBesideATallReturnByBothItsNames) {
    EXPECT_EQ(virtualKeyCodeOf("AC12"), 42);
    EXPECT_EQ(virtualKeyCodeOf("BKSL"), 42);
}

TEST(VirtualKeys, HaveNoneForModifiersAndStrangers) {
    EXPECT_EQ(virtualKeyCodeOf("LFSH"), std::nullopt);
    EXPECT_EQ(virtualKeyCodeOf(""), std::nullopt);
    EXPECT_EQ(keyNameOf(55), std::nullopt);
    EXPECT_EQ(keyNameOf(65536), std::nullopt);
}

}  // namespace

}  // namespace velmo::x11
