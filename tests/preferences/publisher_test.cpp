#include "preferences/published.h"

#include "platform/simulated/simulated_run_loop.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace velmo {
namespace {

class PublisherTest : public testing::Test {
protected:
    Publisher<int>::Receiver record() {
        return [this](int value) { received_.push_back(value); };
    }

    Published<int> published_{1};
    SimulatedRunLoop loop_;
    std::vector<int> received_;
};

TEST_F(PublisherTest, DeliversTheCurrentValueFirstThenEachNewOne) {
    const auto subscription = published_.publisher().sink(record());
    published_.set(2);
    published_.set(2);
    published_.set(3);
    EXPECT_EQ(received_, (std::vector{1, 2, 2, 3}));
}

TEST_F(PublisherTest, AnnouncesAValueBeforeItTakesEffect) {
    std::vector<int> current;
    const auto subscription =
        published_.publisher().dropFirst().sink([&](int) { current.push_back(published_.value()); });
    published_.set(2);
    EXPECT_EQ(current, (std::vector{1}));
    EXPECT_EQ(published_.value(), 2);
}

TEST_F(PublisherTest, CanSkipTheCurrentValue) {
    const auto subscription = published_.publisher().dropFirst().sink(record());
    EXPECT_TRUE(received_.empty());
    published_.set(1);
    EXPECT_EQ(received_, (std::vector{1}));
}

TEST_F(PublisherTest, CanLeaveOutWhatDidNotChange) {
    const auto subscription = published_.publisher().removeDuplicates().dropFirst().sink(record());
    published_.set(1);
    published_.set(2);
    published_.set(2);
    published_.set(1);
    EXPECT_EQ(received_, (std::vector{2, 1}));
}

TEST_F(PublisherTest, DeliversOnTheRunLoop) {
    const auto subscription = published_.publisher().receiveOn(loop_).sink(record());
    published_.set(2);
    EXPECT_TRUE(received_.empty());
    loop_.runPosted();
    EXPECT_EQ(received_, (std::vector{1, 2}));
}

TEST_F(PublisherTest, DropsWhatWasUnderWayWhenTheSubscriptionEnded) {
    auto subscription = published_.publisher().receiveOn(loop_).sink(record());
    subscription = {};
    loop_.runPosted();
    published_.set(2);
    loop_.runPosted();
    EXPECT_TRUE(received_.empty());
}

TEST_F(PublisherTest, KeepsTheStateOfEachSubscriptionApart) {
    const auto source = published_.publisher().dropFirst();
    const auto first = source.sink(record());
    published_.set(2);
    const auto second = source.sink(record());
    published_.set(3);
    EXPECT_EQ(received_, (std::vector{2, 3, 3}));
}

TEST_F(PublisherTest, EndsWithItsSubscription) {
    { const auto subscription = published_.publisher().sink(record()); }
    published_.set(2);
    EXPECT_EQ(received_, (std::vector{1}));
}

TEST_F(PublisherTest, LetsReceiversEndEachOther) {
    Subscription second;
    const auto first = published_.publisher().dropFirst().sink([&second](int) { second.cancel(); });
    second = published_.publisher().dropFirst().sink(record());
    published_.set(2);
    published_.set(3);
    EXPECT_TRUE(received_.empty());
}

TEST_F(PublisherTest, LetsSubscriptionsOutliveTheValue) {
    std::optional<Published<int>> value(std::in_place, 5);
    const auto source = value->publisher();
    const auto subscription = source.sink(record());
    value.reset();
    const auto late = source.sink(record());
    EXPECT_EQ(received_, (std::vector{5, 5}));
}

TEST_F(PublisherTest, MovesASubscriptionWithoutEndingIt) {
    auto subscription = published_.publisher().dropFirst().sink(record());
    const Subscription moved = std::move(subscription);
    published_.set(2);
    EXPECT_EQ(received_, (std::vector{2}));
}

TEST_F(PublisherTest, TellsTheOneAloneWhoseSubscriptionHasReplacedAnother) {
    auto subscription = published_.publisher().dropFirst().sink([](int) { ADD_FAILURE() << "it is told"; });
    subscription = published_.publisher().dropFirst().sink(record());
    published_.set(2);
    EXPECT_EQ(received_, (std::vector{2}));
}

/// One that sets again what it was told, as a view does that shows a value, is not told for ever.
TEST_F(PublisherTest, LeavesOutWhatAReceiverSetsAgain) {
    constexpr int enough = 5;
    const auto subscription = published_.publisher().removeDuplicates().sink([&](int value) {
        received_.push_back(value);
        if (received_.size() < enough)
            published_.set(value);
    });
    published_.set(7);
    EXPECT_EQ(received_, (std::vector{1, 7}));
}

TEST(PublisherOfOptionals, TellsNoneFromNothingYet) {
    Published<std::optional<int>> published;
    std::vector<std::optional<int>> received;
    const auto subscription = published.publisher().removeDuplicates().sink(
        [&received](const std::optional<int>& value) { received.push_back(value); });
    for (const auto& value : {std::optional<int>(), std::optional(1), std::optional(1), std::optional<int>(),
                              std::optional<int>(), std::optional(1)})
        published.set(value);
    EXPECT_EQ(received, (std::vector<std::optional<int>>{std::nullopt, 1, std::nullopt, 1}));
}

TEST_F(PublisherTest, LetsGoOfAReceiverThatIsCancelled) {
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> weak = held;
    auto subscription = published_.publisher().sink([held = std::move(held)](int) {});
    EXPECT_FALSE(weak.expired());
    subscription.cancel();
    EXPECT_TRUE(weak.expired());
}

TEST_F(PublisherTest, MayGoBeforeItsSubscriptions) {
    auto shortLived = std::make_unique<Published<int>>(1);
    auto subscription = shortLived->publisher().sink(record());
    shortLived.reset();
    subscription.cancel();
    EXPECT_EQ(received_, (std::vector{1}));
}

}  // namespace
}  // namespace velmo
