#include "macos/objc/block.h"
#include "macos/foundation/ns_string.h"
#include "macos/objc/autorelease_pool.h"
#include "platform/macos/doubles/counted_object.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace velmo::macos {
namespace {

/// Calls a block as compiled code does: by the function in its fourth word.
template <typename Result, typename... Arguments>
Result callBlock(void* block, Arguments... arguments) {
    struct Layout {
        void* kind;
        int flags;
        int reserved;
        Result (*invoke)(void*, Arguments...);
    };
    return static_cast<Layout*>(block)->invoke(block, arguments...);
}

TEST(Block, CallsItsFunction) {
    int sum = 0;
    const Block<void(int, double)> block(
        [&](int number, double factor) { sum = static_cast<int>(number * factor); });
    callBlock<void>(block.get(), 3, 2.0);
    EXPECT_EQ(sum, 6);
}

TEST(Block, HandsObjectsAndTruthOver) {
    const AutoreleasePool pool;
    const Block<bool(NSString)> block([](const NSString& text) { return text.text() == "velmo"; });
    EXPECT_TRUE(callBlock<RawBool>(block.get(), NSString::from("velmo").get()));
    EXPECT_FALSE(callBlock<RawBool>(block.get(), NSString::from("other").get()));
    EXPECT_FALSE(callBlock<RawBool>(block.get(), Id{}));
}

TEST(Block, ReturnsObjectsThatNobodyElseHolds) {
    const Block<CountedObject()> block([] { return CountedObject::create(); });
    {
        const AutoreleasePool pool;
        const auto made = Object::share<CountedObject>(callBlock<Id>(block.get()));
        EXPECT_EQ(made.retainCount(), 2U);
    }
    EXPECT_EQ(CountedObject::liveCount(), 0);
}

TEST(Block, KeepsWhatItHasCaughtUntilTheLastWhoHasItLetsGo) {
    auto caught = std::make_shared<int>(1);
    void* kept = nullptr;
    {
        const Block<void()> block([caught] { ++*caught; });
        EXPECT_EQ(caught.use_count(), 2);
        kept = _Block_copy(block.get());
    }
    EXPECT_EQ(caught.use_count(), 2);
    callBlock<void>(kept);
    EXPECT_EQ(*caught, 2);
    _Block_release(kept);
    EXPECT_EQ(caught.use_count(), 1);
}

TEST(Block, MayLoseItsLastOwnerWhileItRuns) {
    const auto caught = std::make_shared<int>(0);
    void* kept = nullptr;
    {
        const Block<void()> block([caught, &kept] {
            _Block_release(kept);
            ++*caught;
        });
        kept = _Block_copy(block.get());
    }
    EXPECT_EQ(caught.use_count(), 2);
    callBlock<void>(kept);
    EXPECT_EQ(*caught, 1);
    EXPECT_EQ(caught.use_count(), 1);
}

TEST(Block, SharesOneFunctionAmongItsCopies) {
    auto caught = std::make_shared<int>(0);
    Block<void()> block([caught] { ++*caught; });
    Block<void()> copy = block;
    EXPECT_EQ(caught.use_count(), 2);
    const Block<void()> moved = std::move(copy);
    block = Block<void()>(nullptr);
    EXPECT_EQ(caught.use_count(), 2);
    callBlock<void>(moved.get());
    EXPECT_EQ(*caught, 1);
}

TEST(Block, OfNoFunctionIsNone) {
    EXPECT_EQ(Block<void()>(nullptr).get(), nullptr);
}

}  // namespace
}  // namespace velmo::macos
