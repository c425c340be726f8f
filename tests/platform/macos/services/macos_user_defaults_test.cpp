#include "macos/services/macos_user_defaults.h"
#include "platform/macos/macos_test.h"

namespace velmo::macos {
namespace {

class MacosUserDefaultsTest : public MacosTest {
protected:
    ~MacosUserDefaultsTest() override {
        for (const char* key : {"flag", "number", "text", "data", "registered"})
            defaults.removeObject(key);
    }

    MacosUserDefaults defaults;
};

TEST_F(MacosUserDefaultsTest, HaveNothingForKeysThatWereNeverSet) {
    EXPECT_FALSE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.doubleForKey("number"), 0);
    EXPECT_EQ(defaults.stringForKey("text"), std::nullopt);
    EXPECT_EQ(defaults.dataForKey("data"), std::nullopt);
}

TEST_F(MacosUserDefaultsTest, GiveBackWhatWasSet) {
    defaults.setBool(true, "flag");
    defaults.setDouble(2.5, "number");
    defaults.setObject(std::string("EEE d MMM  HH:mm ⌘"), "text");
    defaults.setObject(Data{0, 255, 7}, "data");
    EXPECT_TRUE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.doubleForKey("number"), 2.5);
    EXPECT_EQ(defaults.stringForKey("text"), "EEE d MMM  HH:mm ⌘");
    EXPECT_EQ(defaults.dataForKey("data"), (Data{0, 255, 7}));
    defaults.setBool(false, "flag");
    EXPECT_FALSE(defaults.boolForKey("flag"));
}

TEST_F(MacosUserDefaultsTest, GiveWhatWasRegisteredUntilSomethingIsSet) {
    defaults.registerDefaults({{"registered", 5.0}, {"flag", true}, {"text", std::string("chevron")}});
    EXPECT_EQ(defaults.doubleForKey("registered"), 5.0);
    EXPECT_TRUE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.stringForKey("text"), "chevron");
    defaults.setDouble(0.2, "registered");
    EXPECT_EQ(defaults.doubleForKey("registered"), 0.2);
    defaults.removeObject("registered");
    EXPECT_EQ(defaults.doubleForKey("registered"), 5.0);
}

TEST_F(MacosUserDefaultsTest, GiveNoDataForATextAndNoTextForData) {
    defaults.setObject(std::string("text"), "data");
    EXPECT_EQ(defaults.dataForKey("data"), std::nullopt);
    defaults.setObject(Data{1}, "text");
    EXPECT_EQ(defaults.stringForKey("text"), std::nullopt);
}

TEST_F(MacosUserDefaultsTest, KeepWhatTheyHaveWhereTheNewValueIsNoText) {
    defaults.setObject(std::string("good"), "text");
    defaults.setObject(std::string("\xff\xfe"), "text");
    EXPECT_EQ(defaults.stringForKey("text"), "good");
}

}  // namespace
}  // namespace velmo::macos
