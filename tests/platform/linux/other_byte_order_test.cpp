#include "built_files.h"
#include "bus_session.h"
#include "child_process.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace velmo {

namespace {

class OtherByteOrder : public BusSession {
protected:
    /// A program whose icon has so many pixels a side.
    desktop::ChildProcess foreigner(int side) const {
        return {{"/usr/bin/python3", std::string(linuxTestFiles) + "/other_byte_order.py", bus_->address(),
                 std::to_string(side)},
                {}};
    }
};

TEST_F(OtherByteOrder, ItemsShowTheirPixmapsAndAllElse) {
    startHost();
    const auto owner = foreigner(20);
    ASSERT_TRUE(untilItems(1));
    EXPECT_EQ(items_.front()->properties().id, "foreign");
    EXPECT_EQ(items_.front()->properties().title, "Foreign");
    ASSERT_TRUE(items_.front()->icon());
    EXPECT_EQ(std::get<Bitmap>(items_.front()->icon()->content).width, 20);
    EXPECT_EQ(colorOf(*items_.front()), 0x123456U);
}

TEST_F(OtherByteOrder, HugePixmapsLeaveTheLoopFree) {
    startHost();
    const auto owner = foreigner(2000);
    // Of the processor, which others may want, too.
    const auto worked = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    };
    std::chrono::nanoseconds longest{};
    ASSERT_TRUE(until([&] {
        const auto start = worked();
        loop_.turn();
        longest = std::max(longest, worked() - start);
        return items_.size() == 1;
    }));
    EXPECT_EQ(items_.front()->properties().id, "foreign");
    EXPECT_FALSE(items_.front()->icon()) << "it costs too much to read";
#ifdef __SANITIZE_ADDRESS__
    const auto bound = std::chrono::seconds(10);
#else
    const auto bound = std::chrono::milliseconds(100);
#endif
    EXPECT_LT(longest, bound);
}

}  // namespace

}  // namespace velmo
