#include "platform/simulated/simulated_hot_key_service.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

using Action = SimulatedHotKeyService::Action;
using Call = SimulatedHotKeyService::Call;

constexpr HotKeyEventType pressed{0x6B657962, 5};

class SimulatedHotKeyServiceTest : public testing::Test {
protected:
    auto install(const HotKeyEventType& type, HotKeyStatus result) {
        return service_.installEventHandler(type, [this, result](const HotKeyEvent* event) {
            const bool readable = event != nullptr && event->directObject;
            seen_.push_back(readable ? event->directObject->id : 0);
            return result;
        });
    }

    SimulatedHotKeyService service_;
    std::vector<std::uint32_t> seen_;
};

TEST_F(SimulatedHotKeyServiceTest, ReportsPressesOfWhatIsHeld) {
    const auto handler = install(pressed, -9874);
    auto first = service_.registerHotKey(7, 0x100, {1, 11}, 0);
    const auto second = service_.registerHotKey(7, 0x100, {1, 12}, 0);
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(service_.press(7, 0x100), (std::vector<HotKeyStatus>{-9874, -9874}));
    EXPECT_TRUE(service_.press(7, 0).empty());
    EXPECT_TRUE(service_.press(8, 0x100).empty());
    first.hotKey.reset();
    service_.press(7, 0x100);
    EXPECT_EQ(seen_, (std::vector<std::uint32_t>{11, 12, 12}));
}

TEST_F(SimulatedHotKeyServiceTest, ReportsPressesToTheirHandlersOnly) {
    const auto releases = install({0x6B657962, 6}, 1);
    auto presses = install(pressed, 0);
    const HotKeyEvent unreadable;
    EXPECT_EQ(service_.deliver(&unreadable), std::vector<HotKeyStatus>{0});
    EXPECT_EQ(service_.deliver(nullptr), std::vector<HotKeyStatus>{0});
    presses.reset();
    EXPECT_TRUE(service_.deliver(nullptr).empty());
    EXPECT_EQ(service_.handledTypes(), (std::vector<HotKeyEventType>{{0x6B657962, 6}}));
}

TEST_F(SimulatedHotKeyServiceTest, Refuses) {
    service_.refuse(7, 0x100, -9878);
    service_.refuse(8, 0, 0);
    const auto refused = service_.registerHotKey(7, 0x100, {1, 1}, 0);
    EXPECT_EQ(refused.status, -9878);
    EXPECT_EQ(refused.hotKey, nullptr);
    const auto withheld = service_.registerHotKey(8, 0, {1, 2}, 0);
    EXPECT_EQ(withheld.status, 0);
    EXPECT_EQ(withheld.hotKey, nullptr);
    EXPECT_NE(service_.registerHotKey(7, 0, {1, 3}, 0).hotKey, nullptr);
    service_.accept(7, 0x100);
    EXPECT_NE(service_.registerHotKey(7, 0x100, {1, 4}, 0).hotKey, nullptr);
    EXPECT_EQ(service_.requests().size(), 4U);
    EXPECT_TRUE(service_.held().empty());
    service_.setRefusesHandlers(true);
    EXPECT_EQ(install(pressed, 0), nullptr);
}

TEST_F(SimulatedHotKeyServiceTest, RemembersTheOrderOfAll) {
    auto handler = install(pressed, 0);
    auto first = service_.registerHotKey(7, 0, {1, 1}, 0);
    auto second = service_.registerHotKey(8, 0, {1, 2}, 0);
    second.hotKey.reset();
    handler.reset();
    first.hotKey.reset();
    EXPECT_EQ(service_.calls(), (std::vector<Call>{{Action::installHandler},
                                                   {Action::registerHotKey, 1},
                                                   {Action::registerHotKey, 2},
                                                   {Action::releaseHotKey, 2},
                                                   {Action::removeHandler},
                                                   {Action::releaseHotKey, 1}}));
}

}  // namespace
}  // namespace velmo
