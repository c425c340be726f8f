#include "macos/services/macos_hot_key_service.h"
#include "platform/macos/doubles/counted_object.h"
#include "platform/macos/macos_test.h"

#include <vector>

namespace velmo::macos {
namespace {

constexpr std::uint32_t signature = 0x564c4d4f;

class MacosHotKeyServiceTest : public MacosTest {
protected:
    auto handlerThatNotes() {
        return service.installEventHandler(hotKeyPressed, [this](const HotKeyEvent* event) {
            events.push_back(event == nullptr ? std::nullopt : std::optional(*event));
            return 7;
        });
    }

    MacosHotKeyService service;
    std::vector<std::optional<HotKeyEvent>> events;
};

TEST_F(MacosHotKeyServiceTest, RegistersKeysUntilTheirHandlesGo) {
    {
        const auto registration = service.registerHotKey(40, hot_key_modifier::command, {signature, 1}, 0);
        EXPECT_EQ(registration.status, 0);
        ASSERT_TRUE(registration.hotKey);
        ASSERT_EQ(system.hotKeys.size(), 1U);
        EXPECT_EQ(system.hotKeys.begin()->second, (doubles::RegisteredHotKey{40, 0x100, signature, 1}));
    }
    EXPECT_TRUE(system.hotKeys.empty());
}

TEST_F(MacosHotKeyServiceTest, GivesTheStatusOfAKeyThatTheSystemRefuses) {
    system.hotKeyStatus = -9878;
    const auto registration = service.registerHotKey(40, 0, {signature, 1}, 0);
    EXPECT_EQ(registration.status, -9878);
    EXPECT_FALSE(registration.hotKey);
}

TEST_F(MacosHotKeyServiceTest, TellsHandlersWhichKeyWasPressedUntilTheyGo) {
    auto handler = handlerThatNotes();
    EXPECT_EQ(doubles::sendHotKeyEvent(signature, 3), 7);
    ASSERT_EQ(events.size(), 1U);
    ASSERT_TRUE(events[0]);
    EXPECT_EQ(events[0]->directObject, (HotKeyID{signature, 3}));
    handler.reset();
    EXPECT_EQ(system.handlerCount, 0);
    EXPECT_EQ(doubles::sendHotKeyEvent(signature, 3), -1);
    EXPECT_EQ(events.size(), 1U);
}

TEST_F(MacosHotKeyServiceTest, TellsHandlersOfEventsThatSayNothing) {
    const auto handler = handlerThatNotes();
    doubles::sendHotKeyEvent(signature, 3, false);
    doubles::sendMissingHotKeyEvent();
    ASSERT_EQ(events.size(), 2U);
    ASSERT_TRUE(events[0]);
    EXPECT_EQ(events[0]->directObject, std::nullopt);
    EXPECT_FALSE(events[1]);
}

TEST_F(MacosHotKeyServiceTest, GivesNoHandlerWhereTheSystemRefuses) {
    system.installsHandlers = false;
    EXPECT_FALSE(handlerThatNotes());
}

TEST_F(MacosHotKeyServiceTest, LetsGoOfWhatAHandlerHasUsed) {
    const auto handler = service.installEventHandler(hotKeyPressed, [](const HotKeyEvent*) {
        CountedObject::create().leaveToPool();
        return CountedObject::liveCount();
    });
    const int before = CountedObject::liveCount();
    EXPECT_EQ(doubles::sendHotKeyEvent(signature, 1), before + 1);
    EXPECT_EQ(CountedObject::liveCount(), before);
}

TEST_F(MacosHotKeyServiceTest, LetsAHandlerRemoveItself) {
    std::unique_ptr<HotKeyEventHandler> handler;
    int calls = 0;
    handler = service.installEventHandler(hotKeyPressed, [&](const HotKeyEvent*) {
        handler.reset();
        return ++calls;
    });
    EXPECT_EQ(doubles::sendHotKeyEvent(signature, 1), 1);
    EXPECT_EQ(doubles::sendHotKeyEvent(signature, 1), -1);
}

}  // namespace
}  // namespace velmo::macos
