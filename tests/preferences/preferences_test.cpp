#include "preferences/preferences.h"

#include "preferences/bytes.h"

#include "platform/simulated/simulated_user_defaults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <latch>
#include <limits>
#include <thread>

namespace velmo {
namespace {

using Write = std::pair<std::string, std::optional<DefaultsValue>>;

class PreferencesTest : public testing::Test {
protected:
    void recordWrites() {
        defaults_.setWriteObserver([this](const std::string& key, const std::optional<DefaultsValue>& value) {
            writes_.emplace_back(key, value);
        });
    }

    SimulatedUserDefaults defaults_;
    std::vector<Write> writes_;
};

TEST_F(PreferencesTest, GiveAFreshUserTheDefaults) {
    const Preferences preferences(defaults_);
    EXPECT_TRUE(preferences.autoRehide.value());
    EXPECT_EQ(preferences.rehideDelay.value(), 5.0);
    EXPECT_TRUE(preferences.hideOnClickOutside.value());
    EXPECT_FALSE(preferences.showOnHover.value());
    EXPECT_FALSE(preferences.showOnScroll.value());
    EXPECT_FALSE(preferences.alwaysHiddenEnabled.value());
    EXPECT_TRUE(preferences.refreshPanelOnOpen.value());
    EXPECT_FALSE(preferences.clockEnabled.value());
    EXPECT_EQ(preferences.clockFormat.value(), "EEE d MMM  HH:mm");
    EXPECT_EQ(preferences.clickAction.value(), ClickAction::revealInMenuBar);
    EXPECT_EQ(preferences.toggleIconStyle.value(), ToggleIconStyle::chevron);
    EXPECT_EQ(preferences.hotkey.value(), std::nullopt);
    EXPECT_EQ(preferences.panelHotkey.value(), std::nullopt);
    EXPECT_TRUE(defaults_.stored().empty());
}

TEST_F(PreferencesTest, RegisterElevenDefaults) {
    const Preferences preferences(defaults_);
    EXPECT_EQ(defaults_.registered(),
              (SimulatedUserDefaults::Values{{"autoRehide", true},
                                             {"rehideDelay", 5.0},
                                             {"hideOnClickOutside", true},
                                             {"showOnHover", false},
                                             {"showOnScroll", false},
                                             {"alwaysHiddenEnabled", false},
                                             {"refreshPanelOnOpen", true},
                                             {"clockEnabled", false},
                                             {"clockFormat", std::string("EEE d MMM  HH:mm")},
                                             {"clickAction", std::string("revealInMenuBar")},
                                             {"toggleIconStyle", std::string("chevron")}}));
}

TEST_F(PreferencesTest, TouchOnlyTheShortcutsWhenTheyAreMade) {
    recordWrites();
    const Preferences preferences(defaults_);
    EXPECT_EQ(writes_, (std::vector<Write>{{"hotkey", std::nullopt}, {"panelHotkey", std::nullopt}}));
}

TEST_F(PreferencesTest, TakeWhatIsStored) {
    for (const char* key : {"autoRehide", "hideOnClickOutside", "refreshPanelOnOpen"})
        defaults_.setBool(false, key);
    for (const char* key : {"showOnHover", "showOnScroll", "alwaysHiddenEnabled", "clockEnabled"})
        defaults_.setBool(true, key);
    defaults_.setDouble(0.25, "rehideDelay");
    defaults_.setObject(std::string("HH"), "clockFormat");
    defaults_.setObject(std::string("showPanel"), "clickAction");
    defaults_.setObject(std::string("fridge"), "toggleIconStyle");
    const Preferences preferences(defaults_);
    EXPECT_FALSE(preferences.autoRehide.value());
    EXPECT_FALSE(preferences.hideOnClickOutside.value());
    EXPECT_FALSE(preferences.refreshPanelOnOpen.value());
    EXPECT_TRUE(preferences.showOnHover.value());
    EXPECT_TRUE(preferences.showOnScroll.value());
    EXPECT_TRUE(preferences.alwaysHiddenEnabled.value());
    EXPECT_TRUE(preferences.clockEnabled.value());
    EXPECT_EQ(preferences.rehideDelay.value(), 0.25);
    EXPECT_EQ(preferences.clockFormat.value(), "HH");
    EXPECT_EQ(preferences.clickAction.value(), ClickAction::showPanel);
    EXPECT_EQ(preferences.toggleIconStyle.value(), ToggleIconStyle::fridge);
}

TEST_F(PreferencesTest, MatchTheClickActionByItsExactLetters) {
    for (const char* stored : {"ShowPanel", "showpanel", "SHOWPANEL", ""}) {
        defaults_.setObject(std::string(stored), "clickAction");
        EXPECT_EQ(Preferences(defaults_).clickAction.value(), ClickAction::revealInMenuBar) << stored;
    }
}

TEST_F(PreferencesTest, LeaveAnUnknownIconStyleStoredUntilOneIsPicked) {
    defaults_.setObject(std::string("sparkles"), "toggleIconStyle");
    Preferences preferences(defaults_);
    EXPECT_EQ(preferences.toggleIconStyle.value(), ToggleIconStyle::chevron);
    EXPECT_EQ(defaults_.stringForKey("toggleIconStyle"), "sparkles");
    preferences.toggleIconStyle.set(ToggleIconStyle::chevron);
    EXPECT_EQ(defaults_.stringForKey("toggleIconStyle"), "chevron");
}

TEST_F(PreferencesTest, FallBackWhereAStoredValueHasAnotherType) {
    defaults_.setObject(Data{1, 2}, "clockFormat");
    defaults_.setObject(Data{1, 2}, "clickAction");
    defaults_.setObject(3.0, "toggleIconStyle");
    defaults_.setObject(std::string("yes"), "showOnHover");
    defaults_.setObject(std::string("2.5 s"), "rehideDelay");
    defaults_.setObject(Data{1}, "autoRehide");
    const Preferences preferences(defaults_);
    EXPECT_EQ(preferences.clockFormat.value(), "EEE d MMM  HH:mm");
    EXPECT_EQ(preferences.clickAction.value(), ClickAction::revealInMenuBar);
    EXPECT_EQ(preferences.toggleIconStyle.value(), ToggleIconStyle::chevron);
    EXPECT_TRUE(preferences.showOnHover.value());
    EXPECT_EQ(preferences.rehideDelay.value(), 2.5);
    EXPECT_FALSE(preferences.autoRehide.value());
}

TEST_F(PreferencesTest, StoreEachSettingUnderItsKey) {
    Preferences preferences(defaults_);
    recordWrites();
    preferences.autoRehide.set(false);
    preferences.rehideDelay.set(-3);
    preferences.hideOnClickOutside.set(false);
    preferences.showOnHover.set(true);
    preferences.showOnScroll.set(true);
    preferences.alwaysHiddenEnabled.set(true);
    preferences.refreshPanelOnOpen.set(false);
    preferences.clockEnabled.set(true);
    preferences.clockFormat.set("HH:mm");
    preferences.clickAction.set(ClickAction::showPanel);
    preferences.toggleIconStyle.set(ToggleIconStyle::eye);
    preferences.hotkey.set(HotkeyBinding{1, 2, "x"});
    preferences.panelHotkey.set(HotkeyBinding{3, 4, "y"});
    EXPECT_EQ(writes_,
              (std::vector<Write>{{"autoRehide", false},
                                  {"rehideDelay", -3.0},
                                  {"hideOnClickOutside", false},
                                  {"showOnHover", true},
                                  {"showOnScroll", true},
                                  {"alwaysHiddenEnabled", true},
                                  {"refreshPanelOnOpen", false},
                                  {"clockEnabled", true},
                                  {"clockFormat", std::string("HH:mm")},
                                  {"clickAction", std::string("showPanel")},
                                  {"toggleIconStyle", std::string("eye")},
                                  {"hotkey", bytes(R"({"keyCode":1,"modifiers":2,"display":"x"})")},
                                  {"panelHotkey", bytes(R"({"keyCode":3,"modifiers":4,"display":"y"})")}}));
}

TEST_F(PreferencesTest, StoreAValueEvenWhereItIsNotNew) {
    Preferences preferences(defaults_);
    recordWrites();
    preferences.autoRehide.set(true);
    preferences.autoRehide.set(true);
    preferences.clockFormat.set(preferences.clockFormat.value());
    EXPECT_EQ(writes_.size(), 3U);
}

TEST_F(PreferencesTest, AnnounceThenTakeThenStore) {
    Preferences preferences(defaults_);
    std::vector<std::string> order;
    const auto subscription = preferences.rehideDelay.publisher().dropFirst().sink([&](double announced) {
        EXPECT_EQ(announced, 7);
        EXPECT_EQ(preferences.rehideDelay.value(), 5);
        EXPECT_EQ(defaults_.doubleForKey("rehideDelay"), 5);
        order.emplace_back("announced");
    });
    defaults_.setWriteObserver([&](const std::string&, const std::optional<DefaultsValue>&) {
        EXPECT_EQ(preferences.rehideDelay.value(), 7);
        order.emplace_back("stored");
    });
    preferences.rehideDelay.set(7);
    EXPECT_EQ(order, (std::vector<std::string>{"announced", "stored"}));
}

TEST_F(PreferencesTest, KeepAnyDelayAsItIs) {
    Preferences preferences(defaults_);
    for (const double delay : {0.0, -1.0, 1e300, std::numeric_limits<double>::infinity()}) {
        preferences.rehideDelay.set(delay);
        EXPECT_EQ(preferences.rehideDelay.value(), delay);
        EXPECT_EQ(defaults_.doubleForKey("rehideDelay"), delay);
    }
}

TEST_F(PreferencesTest, RemoveAShortcutThatCannotBeDecoded) {
    defaults_.setObject(bytes(R"({"keyCode":1,"modifiers":2})"), "hotkey");
    defaults_.setObject(bytes("nonsense"), "panelHotkey");
    const Preferences preferences(defaults_);
    EXPECT_EQ(preferences.hotkey.value(), std::nullopt);
    EXPECT_EQ(preferences.panelHotkey.value(), std::nullopt);
    EXPECT_TRUE(defaults_.stored().empty());
}

TEST_F(PreferencesTest, RemoveAShortcutThatIsNotData) {
    defaults_.setObject(std::string(R"({"keyCode":1,"modifiers":2,"display":"x"})"), "hotkey");
    const Preferences preferences(defaults_);
    EXPECT_EQ(preferences.hotkey.value(), std::nullopt);
    EXPECT_FALSE(defaults_.stored().contains("hotkey"));
}

TEST_F(PreferencesTest, WriteAStoredShortcutBackInTheirOwnForm) {
    defaults_.setObject(bytes(R"({ "display":"\u2318", "modifiers":2.0, "keyCode":1, "more":[] })"),
                        "panelHotkey");
    const Preferences preferences(defaults_);
    EXPECT_EQ(preferences.panelHotkey.value(), (HotkeyBinding{1, 2, "⌘"}));
    EXPECT_EQ(defaults_.dataForKey("panelHotkey"), bytes(R"({"keyCode":1,"modifiers":2,"display":"⌘"})"));
}

TEST_F(PreferencesTest, RemoveTheKeyOfAnAbsentShortcut) {
    Preferences preferences(defaults_);
    preferences.hotkey.set(HotkeyBinding{1, 2, "x"});
    EXPECT_TRUE(defaults_.stored().contains("hotkey"));
    preferences.hotkey.set(std::nullopt);
    EXPECT_FALSE(defaults_.stored().contains("hotkey"));
}

TEST_F(PreferencesTest, RemoveTheKeyOfAShortcutThatCannotBeEncoded) {
    Preferences preferences(defaults_);
    preferences.hotkey.set(HotkeyBinding{1, 2, "x"});
    preferences.hotkey.set(HotkeyBinding{1, 2, "\xFF"});
    EXPECT_FALSE(defaults_.stored().contains("hotkey"));
    EXPECT_TRUE(preferences.hotkey.value());
}

TEST_F(PreferencesTest, DoNotNoticeWhatOthersStore) {
    const Preferences preferences(defaults_);
    defaults_.setDouble(9, "rehideDelay");
    EXPECT_EQ(preferences.rehideDelay.value(), 5);
}

TEST_F(PreferencesTest, FindTheirValuesAgain) {
    {
        Preferences preferences(defaults_);
        preferences.rehideDelay.set(12);
        preferences.clickAction.set(ClickAction::showPanel);
        preferences.hotkey.set(HotkeyBinding{1, 2, "x"});
    }
    defaults_.forgetRegistered();
    const Preferences preferences(defaults_);
    EXPECT_EQ(preferences.rehideDelay.value(), 12);
    EXPECT_EQ(preferences.clickAction.value(), ClickAction::showPanel);
    EXPECT_EQ(preferences.hotkey.value(), (HotkeyBinding{1, 2, "x"}));
}

TEST_F(PreferencesTest, AreSharedByAllWhoAskForThem) {
    const auto first = Preferences::shared(defaults_);
    recordWrites();
    const auto second = Preferences::shared(defaults_);
    EXPECT_EQ(first, second);
    EXPECT_EQ(&first->defaults, &defaults_);
    EXPECT_TRUE(writes_.empty());
    SimulatedUserDefaults others;
    EXPECT_NE(Preferences::shared(others), first);
}

TEST_F(PreferencesTest, AreMadeOnceWhicheverThreadAsksFirst) {
    constexpr std::size_t threadCount = 8;
    std::vector<std::shared_ptr<Preferences>> found(threadCount);
    std::array<SimulatedUserDefaults, threadCount> others;
    std::latch everyoneIsHere(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([&, i] {
            everyoneIsHere.arrive_and_wait();
            found[i] = Preferences::shared(defaults_);
            // The list of all stores grows meanwhile.
            EXPECT_NE(Preferences::shared(others[i]), found[i]);
        });
    }
    for (auto& thread : threads)
        thread.join();
    ASSERT_TRUE(found.front());
    EXPECT_EQ(std::count(found.begin(), found.end(), found.front()), threadCount);
}

}  // namespace
}  // namespace velmo
