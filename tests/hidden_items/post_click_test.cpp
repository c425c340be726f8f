#include "hidden_items/post_click.h"

#include "async/task_scope.h"
#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

using Posted = SimulatedEventPoster::Posted;

class PostClick : public testing::Test {
protected:
    static constexpr Point point{100, 12};
    static constexpr Point returnPoint{5, 6};

    const std::vector<Posted>& posted() { return desktop_.eventPoster().posted(); }
    TaskHandle start(std::optional<Point> back = std::nullopt) {
        const auto handle = scope_->start(postClick(point, back, desktop_.platform()));
        desktop_.runLoop().runPosted();
        return handle;
    }
    std::vector<EventType> types() {
        std::vector<EventType> result;
        for (const Posted& event : posted())
            result.push_back(event.type);
        return result;
    }

    const std::vector<EventType> wholeClick_{EventType::mouseMoved, EventType::leftMouseDown,
                                             EventType::leftMouseUp};
    SimulatedDesktop desktop_;
    std::optional<TaskScope> scope_{std::in_place, desktop_.runLoop()};
};

TEST_F(PostClick, MovesPressesAndReleasesFortyMillisecondsApart) {
    const auto handle = start();
    EXPECT_EQ(posted().size(), 1U);
    desktop_.advance(0.039);
    EXPECT_EQ(posted().size(), 1U);
    desktop_.advance(0.001);
    EXPECT_EQ(posted().size(), 2U);
    desktop_.advance(0.039);
    EXPECT_EQ(posted().size(), 2U);
    desktop_.advance(0.001);
    EXPECT_EQ(posted(), (std::vector<Posted>{{EventType::mouseMoved, point, 0},
                                             {EventType::leftMouseDown, point, 0.04},
                                             {EventType::leftMouseUp, point, 0.08}}));
    EXPECT_FALSE(handle.isRunning()) << "The pointer is left where it is.";
}

TEST_F(PostClick, ReturnsThePointerWhereItIsToldTo) {
    start(returnPoint);
    desktop_.advance(0.159);
    EXPECT_EQ(types(), wholeClick_);
    desktop_.advance(0.001);
    EXPECT_EQ(posted().back(), (Posted{EventType::mouseMoved, returnPoint, 0.16}));
}

TEST_F(PostClick, LeavesNothingOutWhereItIsCancelledBeforeThePress) {
    auto handle = start();
    desktop_.advance(0.02);
    handle.cancel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(types(), wholeClick_);
}

TEST_F(PostClick, LeavesNothingOutWhereItIsCancelledDuringThePress) {
    auto handle = start(returnPoint);
    desktop_.advance(0.06);
    handle.cancel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(posted().size(), 4U);
    EXPECT_EQ(posted()[2], (Posted{EventType::leftMouseUp, point, 0.06}));
}

TEST_F(PostClick, LeavesNothingOutWhereItIsCancelledBeforeTheReturn) {
    auto handle = start(returnPoint);
    desktop_.advance(0.1);
    handle.cancel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(posted().back(), (Posted{EventType::mouseMoved, returnPoint, 0.1}));
}

TEST_F(PostClick, ReleasesTheButtonEvenWhereItIsEnded) {
    start();
    desktop_.advance(0.05);
    scope_.reset();
    EXPECT_EQ(types(), wholeClick_);
    desktop_.advance(1);
    EXPECT_EQ(posted().size(), 3U);
}

TEST_F(PostClick, PressesNothingWhereItIsEndedBefore) {
    start();
    desktop_.advance(0.03);
    scope_.reset();
    desktop_.advance(1);
    EXPECT_EQ(types(), std::vector<EventType>{EventType::mouseMoved});
}

}  // namespace
}  // namespace velmo
