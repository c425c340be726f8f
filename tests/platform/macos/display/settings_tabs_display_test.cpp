#include "macos/appkit/ns_slider.h"
#include "platform/macos/display/settings_display_test.h"

#include <iterator>
#include <string>
#include <vector>

namespace velmo::macos {
namespace {

TEST_F(SettingsDisplayTest, ShowASwitchAsItIsWhereUsingItHasChangedNothing) {
    system.registeredStatus = 2;
    runSettings([&] {
        const auto login = named<NSSwitch>(page(), "Launch at login");
        ASSERT_TRUE(login);
        press(login);
        EXPECT_EQ(system.loginCalls, std::vector<std::string>{"register"});
        EXPECT_EQ(login.state(), 0);
    });
}

TEST_F(SettingsDisplayTest, SlideInWholeSteps) {
    runSettings([&] {
        const auto delay = named<NSSlider>(open(1), "After");
        ASSERT_TRUE(delay);
        delay.setDoubleValue(11.6);
        use(delay);
        EXPECT_EQ(defaults().doubleForKey(NSString::from("rehideDelay")), 12);
        EXPECT_EQ(delay.doubleValue(), 12);
    });
}

TEST_F(SettingsDisplayTest, LookLikeThis) {
    runSettings([&] {
        const char* names[] = {"general", "hiding", "clock", "panel", "spacing"};
        for (std::size_t tab = 0; tab < std::size(names); ++tab) {
            open(tab);
            EXPECT_EQ(chosenTabOf(window), names[tab]);
            picture(std::string("settings-") + names[tab]);
        }
    });
}

}  // namespace
}  // namespace velmo::macos
