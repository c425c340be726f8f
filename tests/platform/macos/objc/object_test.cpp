#include "macos/objc/autorelease_pool.h"
#include "platform/macos/doubles/counted_object.h"

#include <gtest/gtest.h>

#include <utility>

namespace velmo::macos {
namespace {

TEST(ObjectHandle, HoldsItsObjectUntilTheLastHandleGoes) {
    {
        CountedObject second;
        {
            const CountedObject first = CountedObject::create();
            EXPECT_EQ(first.retainCount(), 1U);
            second = first;
            EXPECT_EQ(first.retainCount(), 2U);
        }
        EXPECT_EQ(CountedObject::liveCount(), 1);
        EXPECT_EQ(second.retainCount(), 1U);
    }
    EXPECT_EQ(CountedObject::liveCount(), 0);
}

TEST(ObjectHandle, MovesItsReferenceWithoutTouchingTheCount) {
    CountedObject first = CountedObject::create();
    const CountedObject second = std::move(first);
    EXPECT_EQ(second.retainCount(), 1U);
}

TEST(ObjectHandle, KeepsItsObjectWhenItIsAssignedToItself) {
    CountedObject object = CountedObject::create();
    const CountedObject& same = object;
    object = same;
    EXPECT_EQ(object.retainCount(), 1U);
    EXPECT_EQ(CountedObject::liveCount(), 1);
}

TEST(ObjectHandle, LetsGoOfWhatItHeldWhenAnotherIsAssigned) {
    CountedObject object = CountedObject::create();
    object = CountedObject::create();
    EXPECT_EQ(CountedObject::liveCount(), 1);
    object = {};
    EXPECT_EQ(CountedObject::liveCount(), 0);
}

TEST(ObjectHandle, SharesWhatSomebodyElseOwns) {
    const CountedObject owner = CountedObject::create();
    {
        const auto other = Object::share<CountedObject>(owner.get());
        EXPECT_EQ(owner.retainCount(), 2U);
        EXPECT_TRUE(other == owner);
    }
    EXPECT_EQ(owner.retainCount(), 1U);
}

TEST(ObjectHandle, AnswersMessagesToNoneWithZero) {
    const CountedObject none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.retainCount(), 0U);
    EXPECT_FALSE(none.isEqual(none));
}

TEST(ObjectHandle, GivesAnotherClassOnlyWhereTheObjectIsOfIt) {
    const CountedObject object = CountedObject::create();
    EXPECT_TRUE(as<NSObject>(object));
    EXPECT_TRUE(as<CountedObject>(object));
    EXPECT_FALSE(as<CountedObject>(NSObject::create()));
    EXPECT_FALSE(as<NSObject>(Object()));
    EXPECT_EQ(object.retainCount(), 1U);
}

TEST(AutoreleasePool, ReleasesAtItsEndWhatWasLeftToIt) {
    {
        const AutoreleasePool pool;
        CountedObject::create().leaveToPool();
        EXPECT_EQ(CountedObject::liveCount(), 1);
    }
    EXPECT_EQ(CountedObject::liveCount(), 0);
}

TEST(AutoreleasePool, LeavesAloneWhatAnotherPoolHolds) {
    const AutoreleasePool outer;
    CountedObject::create().leaveToPool();
    {
        const AutoreleasePool inner;
        CountedObject::create().leaveToPool();
        EXPECT_EQ(CountedObject::liveCount(), 2);
    }
    EXPECT_EQ(CountedObject::liveCount(), 1);
}

}  // namespace
}  // namespace velmo::macos
