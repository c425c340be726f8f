#include "linux/bar/order_saver.h"
#include "simulated/simulated_run_loop.h"

#include <gtest/gtest.h>

namespace velmo {

namespace {

class SavedOrder : public testing::Test {
protected:
    using Order = std::vector<std::string>;

    SimulatedRunLoop loop_;
    std::vector<Order> written_;
    std::optional<OrderSaver> saver_{std::in_place, loop_,
                                     [this](const Order& order) { written_.push_back(order); }};
};

TEST_F(SavedOrder, IsWrittenAtOnceAndThenOnceForAllThatCameInThePause) {
    saver_->saveSoon({"a"});
    EXPECT_EQ(written_, std::vector<Order>{{"a"}});
    saver_->saveSoon({"b", "a"});
    saver_->saveSoon({"c", "b", "a"});
    loop_.advance(1.999);
    EXPECT_EQ(written_.size(), 1U);
    loop_.advance(0.001);
    EXPECT_EQ(written_, (std::vector<Order>{{"a"}, {"c", "b", "a"}}));
    saver_->saveSoon({"d"});
    EXPECT_EQ(written_.size(), 2U) << "that was a writing, too";
    loop_.advance(2);
    EXPECT_EQ(written_.size(), 3U);
    loop_.advance(10);
    EXPECT_EQ(written_.size(), 3U) << "nothing has changed";
    saver_->saveSoon({"e"});
    EXPECT_EQ(written_.size(), 4U);
}

TEST_F(SavedOrder, ThatTheUserHasMadeDoesNotWait) {
    saver_->saveSoon({"a"});
    saver_->saveSoon({"b"});
    saver_->save({"c"});
    EXPECT_EQ(written_, (std::vector<Order>{{"a"}, {"c"}}));
    loop_.advance(10);
    EXPECT_EQ(written_.size(), 2U) << "what waited is older";
}

TEST_F(SavedOrder, IsWrittenAtTheEnd) {
    saver_->saveSoon({"a"});
    saver_->saveSoon({"b"});
    saver_.reset();
    EXPECT_EQ(written_, (std::vector<Order>{{"a"}, {"b"}}));
    loop_.advance(10);
    EXPECT_EQ(written_.size(), 2U);
}

}  // namespace

}  // namespace velmo
