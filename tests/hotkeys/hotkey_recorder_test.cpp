#include "hotkeys/hotkey_recorder.h"

#include "platform/simulated/simulated_desktop.h"
#include "preferences/hotkey_binding.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr std::uint16_t keyA = 0;
constexpr std::uint16_t leftArrow = 123;
constexpr std::uint16_t escape = 53;

class HotkeyRecorderTest : public testing::Test {
protected:
    void start() {
        recorder_->start([this](std::uint16_t keyCode, ModifierFlags modifiers, const std::string& display) {
            recorded_.push_back({keyCode, modifiers, display});
        });
    }
    /// True where the key went on to the window.
    bool press(std::uint16_t keyCode, ModifierFlags flags = 0, std::optional<std::string> characters = "a") {
        Event event{EventType::keyDown, flags};
        event.keyCode = keyCode;
        event.charactersIgnoringModifiers = std::move(characters);
        return desktop_.events().deliverLocally(event);
    }
    bool isRecording() const { return recorder_->isRecording.value(); }
    std::vector<EventMask> monitors() { return desktop_.events().locallyMonitoredMasks(); }

    SimulatedDesktop desktop_;
    std::unique_ptr<HotkeyRecorder> recorder_ = std::make_unique<HotkeyRecorder>(desktop_.events());
    std::vector<HotkeyBinding> recorded_;
};

TEST_F(HotkeyRecorderTest, IsIdleAtFirst) {
    EXPECT_FALSE(isRecording());
    EXPECT_TRUE(monitors().empty());
    EXPECT_TRUE(press(keyA, modifier::command));
}

TEST_F(HotkeyRecorderTest, ListensToKeysWhileItRecords) {
    start();
    EXPECT_TRUE(isRecording());
    EXPECT_EQ(monitors(), std::vector<EventMask>{1024});
    recorder_->stop();
    EXPECT_FALSE(isRecording());
    EXPECT_TRUE(monitors().empty());
}

TEST_F(HotkeyRecorderTest, SaysThatItRecordsBeforeItListens) {
    std::vector<std::size_t> listening;
    const auto subscription = recorder_->isRecording.publisher().dropFirst().sink(
        [&](bool) { listening.push_back(monitors().size()); });
    start();
    recorder_->stop();
    EXPECT_EQ(listening, (std::vector<std::size_t>{0, 0}));
}

TEST_F(HotkeyRecorderTest, SwallowsAPlainLetterAndGoesOn) {
    start();
    EXPECT_FALSE(press(keyA));
    EXPECT_TRUE(isRecording());
    EXPECT_TRUE(recorded_.empty());
}

TEST_F(HotkeyRecorderTest, RecordsALetterWithCommand) {
    start();
    EXPECT_FALSE(press(keyA, modifier::command));
    EXPECT_EQ(recorded_, (std::vector<HotkeyBinding>{{0, 0x100000, "⌘A"}}));
    EXPECT_FALSE(isRecording());
    EXPECT_TRUE(monitors().empty());
    EXPECT_TRUE(press(keyA, modifier::command));
    EXPECT_EQ(recorded_.size(), 1U);
}

TEST_F(HotkeyRecorderTest, TellsTheShortcutWhileItStillRecords) {
    bool wasRecording = false;
    recorder_->start([&](auto...) { wasRecording = isRecording() && monitors().size() == 1; });
    press(keyA, modifier::command);
    EXPECT_TRUE(wasRecording);
}

TEST_F(HotkeyRecorderTest, RecordsAFunctionKeyByItself) {
    start();
    EXPECT_FALSE(press(96));
    EXPECT_EQ(recorded_, (std::vector<HotkeyBinding>{{96, 0, "F5"}}));
}

TEST_F(HotkeyRecorderTest, TakesBareKeysFromNinetySixToOneHundredAndTwentyTwo) {
    for (std::uint16_t keyCode = 0; keyCode < 200; ++keyCode) {
        if (keyCode == escape)
            continue;
        const bool bare = keyCode >= 96 && keyCode <= 122;
        recorded_.clear();
        start();
        EXPECT_FALSE(press(keyCode));
        EXPECT_EQ(isRecording(), !bare) << keyCode;
        EXPECT_EQ(recorded_.size(), bare ? 1U : 0U) << keyCode;
        recorder_->stop();
    }
}

TEST_F(HotkeyRecorderTest, WantsAModifierForAnArrow) {
    start();
    EXPECT_FALSE(press(leftArrow, modifier::function | modifier::numericPad));
    EXPECT_TRUE(isRecording());
    EXPECT_FALSE(press(leftArrow, modifier::option | modifier::function | modifier::numericPad));
    EXPECT_EQ(recorded_, (std::vector<HotkeyBinding>{{123, 0x80000, "⌥←"}}));
}

TEST_F(HotkeyRecorderTest, TakesAnyOneModifier) {
    for (const ModifierFlags flag :
         {modifier::shift, modifier::control, modifier::option, modifier::command}) {
        start();
        press(keyA, flag);
        EXPECT_FALSE(isRecording());
        EXPECT_EQ(recorded_.back().modifiers, flag);
    }
}

TEST_F(HotkeyRecorderTest, IsCancelledByEscape) {
    for (const ModifierFlags flags : {ModifierFlags{0}, modifier::command}) {
        start();
        EXPECT_FALSE(press(escape, flags));
        EXPECT_FALSE(isRecording());
        EXPECT_TRUE(monitors().empty());
        EXPECT_TRUE(recorded_.empty());
    }
}

TEST_F(HotkeyRecorderTest, MasksOtherFlagsOff) {
    start();
    press(keyA, modifier::command | modifier::capsLock | modifier::function | 0x108);
    EXPECT_EQ(recorded_, (std::vector<HotkeyBinding>{{0, 0x100000, "⌘A"}}));
}

TEST_F(HotkeyRecorderTest, DoesNotTakeALockForAModifier) {
    start();
    EXPECT_FALSE(press(keyA, modifier::capsLock));
    EXPECT_TRUE(isRecording());
}

TEST_F(HotkeyRecorderTest, ShowsAKeyWithoutCharactersAsAQuestionMark) {
    start();
    press(10, modifier::command, std::nullopt);
    EXPECT_EQ(recorded_.back().display, "⌘?");
    start();
    press(10, modifier::command, "");
    EXPECT_EQ(recorded_.back().display, "⌘");
}

TEST_F(HotkeyRecorderTest, LetsOtherEventsPass) {
    start();
    EXPECT_TRUE(desktop_.events().deliverLocally({EventType::leftMouseDown}));
    EXPECT_TRUE(isRecording());
}

TEST_F(HotkeyRecorderTest, RecordsOnWithoutAMonitorUntilItIsStopped) {
    desktop_.events().setRefusedMonitors(maskOf(EventType::keyDown));
    start();
    EXPECT_TRUE(isRecording());
    EXPECT_TRUE(monitors().empty());
    recorder_->stop();
    EXPECT_FALSE(isRecording());
}

TEST_F(HotkeyRecorderTest, LeavesAMonitorThatLetsEverythingPassWhereItGoesAwayWhileRecording) {
    start();
    recorder_.reset();
    EXPECT_EQ(monitors().size(), 1U);
    EXPECT_TRUE(press(keyA, modifier::command));
    EXPECT_TRUE(press(keyA));
    EXPECT_TRUE(press(escape));
    EXPECT_TRUE(recorded_.empty());
    EXPECT_EQ(monitors().size(), 1U);
}

TEST_F(HotkeyRecorderTest, LeavesNothingBehindWhereItGoesAwayIdle) {
    start();
    recorder_->stop();
    recorder_.reset();
    EXPECT_TRUE(monitors().empty());
}

TEST_F(HotkeyRecorderTest, DoesNotStopAnotherOne) {
    HotkeyRecorder other(desktop_.events());
    int recordedByOther = 0;
    start();
    other.start([&](auto...) { ++recordedByOther; });
    EXPECT_TRUE(isRecording());
    // The first to listen is the first to be asked.
    press(keyA, modifier::command);
    EXPECT_FALSE(isRecording());
    EXPECT_TRUE(other.isRecording.value());
    press(keyA, modifier::command);
    EXPECT_EQ(recorded_.size(), 1U);
    EXPECT_EQ(recordedByOther, 1);
}

}  // namespace
}  // namespace velmo
