#include "menubar/manager_test.h"

namespace velmo {
namespace {

using Action = SimulatedHotKeyService::Action;
using Call = SimulatedHotKeyService::Call;

constexpr std::uint16_t keyH = 4;
constexpr std::uint16_t keyP = 35;

class Hotkeys : public ManagerTest {
protected:
    static HotkeyBinding commandOption(std::uint16_t keyCode) {
        return {keyCode, modifier::command | modifier::option, "⌥⌘"};
    }
    void store(const std::string& key, std::uint16_t keyCode) {
        desktop_.userDefaults().setObject(*encodeHotkeyBinding(commandOption(keyCode)), key);
    }
    SimulatedHotKeyService& service() { return desktop_.hotKeys(); }
    /// Presses command, option and the key.
    void press(std::uint16_t keyCode) {
        service().press(keyCode, 0x900);
        desktop_.runLoop().runPosted();
    }
    std::vector<Call> callsSince(std::size_t count) {
        return {service().calls().begin() + static_cast<std::ptrdiff_t>(count), service().calls().end()};
    }
    std::vector<std::uint32_t> heldKeys() {
        std::vector<std::uint32_t> keys;
        for (const auto& request : service().held())
            keys.push_back(request.keyCode);
        return keys;
    }
};

TEST_F(Hotkeys, AreNotRegisteredWhereNoneIsSet) {
    start();
    EXPECT_EQ(service().calls(), (std::vector<Call>{{Action::installHandler}}));
}

TEST_F(Hotkeys, AreRegisteredAtTheStart) {
    store("panelHotkey", keyP);
    store("hotkey", keyH);
    start();
    EXPECT_EQ(service().requests(),
              (std::vector<SimulatedHotKeyService::Request>{{keyH, 0x900, {0x564C4D4F, 1}, 0},
                                                            {keyP, 0x900, {0x564C4D4F, 2}, 0}}));
}

TEST_F(Hotkeys, HaveTheirPlaceInTheOrderOfTheStart) {
    store("hotkey", keyH);
    desktop_.userDefaults().setBool(true, "showOnHover");
    std::vector<Action> seen;
    service().setCallObserver([&](const Call& call) {
        seen.push_back(call.action);
        const bool registering = call.action == Action::registerHotKey;
        EXPECT_EQ(desktop_.statusBar().items().size(), registering ? 3U : 0U);
        EXPECT_EQ(desktop_.events().monitoredMasks().size(), registering ? 2U : 0U);
        EXPECT_TRUE(desktop_.statusBar().trackingAreas().empty());
        // Only where the preferences are observed does this post anything.
        preferences_->autoRehide.set(!preferences_->autoRehide.value());
        EXPECT_EQ(desktop_.runLoop().postedCount(), registering ? 1U : 0U);
    });
    start();
    EXPECT_EQ(seen, (std::vector<Action>{Action::installHandler, Action::registerHotKey}));
    EXPECT_EQ(desktop_.statusBar().trackingAreas().size(), 1U);
    service().setCallObserver(nullptr);
}

TEST_F(Hotkeys, ToggleTheHiddenItems) {
    store("hotkey", keyH);
    start();
    service().press(keyH, 0x900);
    EXPECT_EQ(level(), RevealLevel::none);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(nextTimer(), 5);
    press(keyH);
    EXPECT_EQ(level(), RevealLevel::none);
    reveal(RevealLevel::all);
    press(keyH);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Hotkeys, ToggleEvenWhereTheClickActionIsThePanel) {
    store("hotkey", keyH);
    start();
    preferences_->clickAction.set(ClickAction::showPanel);
    press(keyH);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Hotkeys, DoNotMindOtherCombinations) {
    store("hotkey", keyH);
    start();
    service().press(keyH, 0x100);
    service().press(keyP, 0x900);
    EXPECT_EQ(desktop_.runLoop().postedCount(), 0U);
}

TEST_F(Hotkeys, FollowThePreferenceInALaterTurn) {
    start();
    preferences_->hotkey.set(commandOption(keyH));
    EXPECT_TRUE(service().requests().empty());
    desktop_.runLoop().runPosted();
    press(keyH);
    EXPECT_EQ(level(), RevealLevel::hidden);
    preferences_->hotkey.set(std::nullopt);
    desktop_.runLoop().runPosted();
    EXPECT_TRUE(service().held().empty());
    press(keyH);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Hotkeys, AreRegisteredAnewTogetherWhicheverChanges) {
    store("hotkey", keyH);
    store("panelHotkey", keyP);
    start();
    auto count = service().calls().size();
    preferences_->panelHotkey.set(commandOption(5));
    desktop_.runLoop().runPosted();
    EXPECT_EQ(callsSince(count), (std::vector<Call>{{Action::releaseHotKey, 1},
                                                    {Action::releaseHotKey, 2},
                                                    {Action::registerHotKey, 3},
                                                    {Action::registerHotKey, 4}}));
    EXPECT_EQ(heldKeys(), (std::vector<std::uint32_t>{keyH, 5}));
    count = service().calls().size();
    preferences_->hotkey.set(commandOption(6));
    desktop_.runLoop().runPosted();
    EXPECT_EQ(callsSince(count), (std::vector<Call>{{Action::releaseHotKey, 3},
                                                    {Action::releaseHotKey, 4},
                                                    {Action::registerHotKey, 5},
                                                    {Action::registerHotKey, 6}}));
    EXPECT_EQ(heldKeys(), (std::vector<std::uint32_t>{6, 5}));
}

TEST_F(Hotkeys, MayChangePlaces) {
    store("hotkey", keyH);
    store("panelHotkey", keyP);
    start();
    preferences_->hotkey.set(commandOption(keyP));
    preferences_->panelHotkey.set(commandOption(keyH));
    desktop_.runLoop().runPosted();
    EXPECT_EQ(heldKeys(), (std::vector<std::uint32_t>{keyP, keyH}));
    press(keyH);
    EXPECT_EQ(level(), RevealLevel::none);
    press(keyP);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Hotkeys, StayUnregisteredWhereTheSystemRefuses) {
    service().refuse(keyH, 0x900, -9878);
    store("hotkey", keyH);
    store("panelHotkey", keyP);
    start();
    EXPECT_EQ(heldKeys(), std::vector<std::uint32_t>{keyP});
    const auto count = service().calls().size();
    service().accept(keyH, 0x900);
    preferences_->panelHotkey.set(std::nullopt);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(callsSince(count),
              (std::vector<Call>{{Action::releaseHotKey, 2}, {Action::registerHotKey, 3}}));
    EXPECT_TRUE(preferences_->hotkey.value());
}

TEST_F(Hotkeys, StayAsTheyAreWhereAPreferenceDoesNotChange) {
    start();
    preferences_->hotkey.set(std::nullopt);
    preferences_->panelHotkey.set(std::nullopt);
    EXPECT_EQ(desktop_.runLoop().postedCount(), 0U);
    preferences_->hotkey.set(commandOption(keyH));
    preferences_->hotkey.set(commandOption(keyH));
    EXPECT_EQ(desktop_.runLoop().postedCount(), 1U);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(service().requests().size(), 1U);
}

TEST_F(Hotkeys, AreRegisteredAnewForAnotherDisplayText) {
    store("hotkey", keyH);
    start();
    auto binding = commandOption(keyH);
    binding.display = "⌥⌘H";
    preferences_->hotkey.set(binding);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(service().requests().size(), 2U);
}

TEST_F(Hotkeys, FirstSetOnesAreNotMistakenForTheInitialValue) {
    start();
    preferences_->panelHotkey.set(commandOption(keyP));
    desktop_.runLoop().runPosted();
    EXPECT_EQ(heldKeys(), std::vector<std::uint32_t>{keyP});
}

TEST_F(Hotkeys, DoNothingOnceTheManagerIsGone) {
    store("hotkey", keyH);
    store("panelHotkey", keyP);
    desktop_.screenCapture().setGranted(false);
    start();
    service().press(keyH, 0x900);
    service().press(keyP, 0x900);
    EXPECT_EQ(desktop_.runLoop().postedCount(), 2U);
    manager_.reset();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
    EXPECT_TRUE(service().held().empty());
    EXPECT_TRUE(service().handledTypes().empty());
}

}  // namespace
}  // namespace velmo
