#include "hotkeys/hotkey_manager.h"

#include "platform/event.h"
#include "platform/simulated/simulated_hot_key_service.h"
#include "platform/simulated/simulated_run_loop.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmo {
namespace {

using Action = SimulatedHotKeyService::Action;
using Call = SimulatedHotKeyService::Call;
using Ids = std::vector<std::uint32_t>;

class HotkeyManagerTest : public testing::Test {
protected:
    HotkeyManagerTest() { manager_.emplace(service_, runLoop_); }

    std::optional<std::uint32_t> registerKey(std::uint16_t keyCode, std::uint64_t modifiers = 0) {
        return manager_->registerHotkey(keyCode, modifiers, [this, keyCode] { ran_.push_back(keyCode); });
    }
    std::vector<HotKeyStatus> deliver(std::uint32_t signature, std::uint32_t id) {
        const HotKeyEvent event{HotKeyID{signature, id}};
        return service_.deliver(&event);
    }
    Ids heldIds() const {
        Ids ids;
        for (const auto& request : service_.held())
            ids.push_back(request.id.id);
        return ids;
    }
    /// Key codes whose actions have run, after all that is posted.
    std::vector<int> ran() {
        runLoop_.runPosted();
        return ran_;
    }

    SimulatedHotKeyService service_;
    SimulatedRunLoop runLoop_;
    std::vector<int> ran_;
    std::optional<HotkeyManager> manager_;
};

TEST_F(HotkeyManagerTest, ListensToPressesOnly) {
    EXPECT_EQ(service_.handledTypes(), (std::vector<HotKeyEventType>{{0x6B657962, 5}}));
    EXPECT_EQ(service_.calls(), (std::vector<Call>{{Action::installHandler}}));
}

TEST_F(HotkeyManagerTest, RegistersWithTheSystem) {
    EXPECT_EQ(registerKey(36, modifier::command | modifier::option), 1U);
    EXPECT_EQ(registerKey(0xFFFF, modifier::control), 2U);
    EXPECT_EQ(service_.requests(),
              (std::vector<SimulatedHotKeyService::Request>{{36, 0x900, {0x564C4D4F, 1}, 0},
                                                            {0xFFFF, 0x1000, {0x564C4D4F, 2}, 0}}));
}

TEST_F(HotkeyManagerTest, RegistersABareKeyWhereOnlyCapsLockIsSet) {
    EXPECT_TRUE(registerKey(49, modifier::capsLock));
    EXPECT_EQ(service_.requests().back().modifiers, 0U);
}

TEST_F(HotkeyManagerTest, GivesAFailedAttemptsIdentifierToNoOther) {
    service_.refuse(1, 0, -9878);
    EXPECT_EQ(registerKey(1), std::nullopt);
    EXPECT_EQ(registerKey(2), 2U);
    EXPECT_EQ(deliver(0x564C4D4F, 1), std::vector<HotKeyStatus>{0});
    EXPECT_TRUE(ran().empty());
}

TEST_F(HotkeyManagerTest, StoresNothingWhereTheSystemGivesNoReference) {
    service_.refuse(1, 0, 0);
    EXPECT_EQ(registerKey(1), std::nullopt);
    EXPECT_EQ(deliver(0x564C4D4F, 1), std::vector<HotKeyStatus>{0});
    EXPECT_EQ(runLoop_.postedCount(), 0U);
    service_.accept(1, 0);
    EXPECT_EQ(registerKey(1), 2U);
}

TEST_F(HotkeyManagerTest, PassesTheSameCombinationOnTwice) {
    EXPECT_EQ(registerKey(7, modifier::shift), 1U);
    EXPECT_EQ(registerKey(7, modifier::shift), 2U);
    EXPECT_EQ(service_.held().size(), 2U);
    EXPECT_EQ(service_.press(7, 0x200), (std::vector<HotKeyStatus>{0, 0}));
    EXPECT_EQ(ran(), (std::vector<int>{7, 7}));
}

TEST_F(HotkeyManagerTest, RunsTheActionInALaterTurn) {
    registerKey(7);
    registerKey(8);
    EXPECT_EQ(service_.press(8, 0), std::vector<HotKeyStatus>{0});
    EXPECT_TRUE(ran_.empty());
    EXPECT_EQ(runLoop_.postedCount(), 1U);
    EXPECT_EQ(ran(), std::vector<int>{8});
}

TEST_F(HotkeyManagerTest, RunsActionsInTheOrderOfThePresses) {
    registerKey(7);
    registerKey(8);
    for (const std::uint32_t key : {8U, 7U, 8U})
        service_.press(key, 0);
    EXPECT_EQ(ran(), (std::vector<int>{8, 7, 8}));
}

TEST_F(HotkeyManagerTest, DoesNotCompareTheSignature) {
    registerKey(7);
    EXPECT_EQ(deliver(0, 1), std::vector<HotKeyStatus>{0});
    EXPECT_EQ(ran(), std::vector<int>{7});
}

TEST_F(HotkeyManagerTest, ConsumesAPressOfAnUnknownIdentifier) {
    registerKey(7);
    EXPECT_EQ(deliver(0x564C4D4F, 2), std::vector<HotKeyStatus>{0});
    EXPECT_EQ(deliver(0x564C4D4F, 0), std::vector<HotKeyStatus>{0});
    EXPECT_EQ(runLoop_.postedCount(), 0U);
}

TEST_F(HotkeyManagerTest, ConsumesAnEventThatCannotBeRead) {
    registerKey(7);
    const HotKeyEvent unreadable;
    EXPECT_EQ(service_.deliver(&unreadable), std::vector<HotKeyStatus>{0});
    EXPECT_EQ(service_.deliver(nullptr), std::vector<HotKeyStatus>{0});
    EXPECT_EQ(runLoop_.postedCount(), 0U);
}

TEST_F(HotkeyManagerTest, UnregistersOnce) {
    const auto id = registerKey(7);
    manager_->unregisterHotkey(id);
    EXPECT_TRUE(service_.held().empty());
    EXPECT_EQ(service_.calls().back(), (Call{Action::releaseHotKey, 1}));
    const auto count = service_.calls().size();
    manager_->unregisterHotkey(id);
    EXPECT_EQ(service_.calls().size(), count);
    EXPECT_EQ(deliver(0x564C4D4F, 1), std::vector<HotKeyStatus>{0});
    EXPECT_EQ(runLoop_.postedCount(), 0U);
}

TEST_F(HotkeyManagerTest, CallsNothingForAnAbsentOrUnknownIdentifier) {
    registerKey(7);
    const auto count = service_.calls().size();
    manager_->unregisterHotkey(std::nullopt);
    manager_->unregisterHotkey(0);
    manager_->unregisterHotkey(2);
    EXPECT_EQ(service_.calls().size(), count);
    EXPECT_EQ(heldIds(), Ids{1});
}

TEST_F(HotkeyManagerTest, DropsTheActionAfterTheKeyWasGivenUp) {
    auto owned = std::make_shared<int>(0);
    const std::weak_ptr<int> action = owned;
    manager_->registerHotkey(7, 0, [owned = std::move(owned)] { ++*owned; });
    bool livedAtRelease = false;
    service_.setCallObserver([&](const Call&) { livedAtRelease = !action.expired(); });
    manager_->unregisterHotkey(1);
    service_.setCallObserver(nullptr);
    EXPECT_TRUE(livedAtRelease);
    EXPECT_TRUE(action.expired());
}

TEST_F(HotkeyManagerTest, StillRunsWhatWasPressedBeforeTheEnd) {
    const auto id = registerKey(7);
    service_.press(7, 0);
    manager_->unregisterHotkey(id);
    EXPECT_EQ(ran(), std::vector<int>{7});
}

TEST_F(HotkeyManagerTest, GivesANewIdentifierToAChangedShortcut) {
    const auto old = registerKey(7);
    manager_->unregisterHotkey(old);
    EXPECT_EQ(registerKey(8), 2U);
    service_.press(7, 0);
    service_.press(8, 0);
    EXPECT_EQ(ran(), std::vector<int>{8});
}

TEST_F(HotkeyManagerTest, GivesUpTheKeysAndThenTheHandler) {
    registerKey(7);
    registerKey(8);
    registerKey(9);
    manager_->unregisterHotkey(2);
    const auto before = static_cast<std::ptrdiff_t>(service_.calls().size());
    manager_.reset();
    EXPECT_EQ(
        std::vector<Call>(service_.calls().begin() + before, service_.calls().end()),
        (std::vector<Call>{{Action::releaseHotKey, 1}, {Action::releaseHotKey, 3}, {Action::removeHandler}}));
    EXPECT_TRUE(service_.held().empty());
    EXPECT_TRUE(service_.handledTypes().empty());
}

TEST_F(HotkeyManagerTest, RegistersEvenWithoutAHandler) {
    manager_.reset();
    service_.setRefusesHandlers(true);
    manager_.emplace(service_, runLoop_);
    EXPECT_EQ(registerKey(7), 1U);
    EXPECT_TRUE(service_.press(7, 0).empty());
    manager_.reset();
    EXPECT_EQ(service_.calls().back(), (Call{Action::releaseHotKey, 1}));
}

using HotkeyManagerDeathTest = HotkeyManagerTest;

TEST_F(HotkeyManagerDeathTest, DiesRatherThanGiveAnIdentifierTwice) {
    manager_.reset();
    manager_.emplace(service_, runLoop_, std::numeric_limits<std::uint32_t>::max() - 1);
    EXPECT_EQ(registerKey(7), std::numeric_limits<std::uint32_t>::max() - 1);
    EXPECT_DEATH(registerKey(8), "");
}

}  // namespace
}  // namespace velmo
