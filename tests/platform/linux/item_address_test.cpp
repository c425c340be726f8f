#include "linux/status_notifier/item_address.h"

#include <gtest/gtest.h>

namespace velmo::status_notifier {

namespace {

constexpr const char* sender = ":1.7";

TEST(ItemAddress, IsAServiceWithTheUsualPath) {
    EXPECT_EQ(parseItemAddress("org.example.App-1", sender),
              (ItemAddress{"org.example.App-1", "/StatusNotifierItem"}));
    EXPECT_EQ(parseItemAddress(":1.42", sender), (ItemAddress{":1.42", "/StatusNotifierItem"}));
}

TEST(ItemAddress, IsAnObjectOfTheSender) {
    EXPECT_EQ(parseItemAddress("/org/ayatana/Item/one", sender),
              (ItemAddress{":1.7", "/org/ayatana/Item/one"}));
}

TEST(ItemAddress, IsAServiceWithAPath) {
    EXPECT_EQ(parseItemAddress(":1.42/Some/Path", sender), (ItemAddress{":1.42", "/Some/Path"}));
    EXPECT_EQ(parseItemAddress("org.example.App/Some/Path", sender)->text(), "org.example.App/Some/Path");
}

TEST(ItemAddress, IsNothingElse) {
    for (const auto* text : {"", "no dots", "a..b", "/", "//", "/trailing/", "org.example/with space",
                             "org.example//", "\n", "org", "org.example.App\n"}) {
        const auto address = parseItemAddress(text, sender);
        if (std::string(text) == "/")
            EXPECT_EQ(address->path, "/");
        else
            EXPECT_FALSE(address) << text;
    }
    EXPECT_FALSE(parseItemAddress(std::string(300, 'a') + ".b", sender));
}

TEST(ItemAddress, HasAPathThatTheBusTakesRulesFor) {
    const std::string longest = "/" + std::string(511, 'p');
    EXPECT_EQ(parseItemAddress(longest, sender)->path, longest);
    EXPECT_FALSE(parseItemAddress(longest + "p", sender));
    EXPECT_FALSE(parseItemAddress("org.example.App/" + std::string(1 << 20, 'p'), sender));
}

}  // namespace

}  // namespace velmo::status_notifier
