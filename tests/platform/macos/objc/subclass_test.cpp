#include "macos/foundation/ns_string.h"
#include "macos/objc/autorelease_pool.h"
#include "macos/objc/instance.h"
#include "platform/macos/doubles/counted_object.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace velmo::macos {
namespace {

/// What the tests send to objects of a class that is made here.
class Receiver : public ClassOf<Receiver, "NSObject", Object> {
public:
    static Receiver of(const Object& object) { return Object::share<Receiver>(object.get()); }

    void perform(const NSObject& sender) const { send<void, "perform:">(sender); }
    bool allows(const NSString& word, bool always) const {
        return send<bool, "allows:always:">(word, always);
    }
    double half(double number) const { return send<double, "half:">(number); }
    CountedObject fresh() const { return send<CountedObject, "fresh">(); }
    NSString description() const { return send<NSString, "description">(); }
    bool responds(Selector selector) const { return send<bool, "respondsToSelector:">(selector); }
};

class Target {
public:
    NSObject lastSender;

    Receiver receiver() const { return Receiver::of(instance_.object()); }

private:
    void perform(NSObject sender) { lastSender = sender; }
    bool allows(const NSString& word, bool always) { return always || word.text() == "velmo"; }
    double half(double number) { return number / 2; }
    CountedObject fresh() { return CountedObject::create(); }
    NSString description() { return NSString::from("a target"); }

    using Class =
        Subclass<Target, "VelmoTestTarget", NSObject, Method<"perform:", &Target::perform>,
                 Method<"allows:always:", &Target::allows>, Method<"half:", &Target::half>,
                 Method<"fresh", &Target::fresh>, Method<"description", &Target::description, "NSObject">>;
    Instance<Target, Class, NSObject> instance_{*this};
};

TEST(Subclass, AnswersMessagesByItsOwnersFunctions) {
    const AutoreleasePool pool;
    Target target;
    const NSObject sender = NSObject::create();
    target.receiver().perform(sender);
    EXPECT_TRUE(target.lastSender == sender);
    EXPECT_TRUE(target.receiver().allows(NSString::from("velmo"), false));
    EXPECT_FALSE(target.receiver().allows(NSString::from("other"), false));
    EXPECT_TRUE(target.receiver().allows(NSString::from("other"), true));
    EXPECT_EQ(target.receiver().half(5), 2.5);
}

TEST(Subclass, TakesThePlaceOfInheritedMethods) {
    const AutoreleasePool pool;
    const Target target;
    EXPECT_EQ(target.receiver().description().text(), "a target");
    EXPECT_NE(Receiver::of(NSObject::create()).description().text(), "a target");
}

TEST(Subclass, AnswersWhetherItRespondsAsAnyClassDoes) {
    const AutoreleasePool pool;
    const Target target;
    EXPECT_TRUE(target.receiver().responds(selectorNamed<"perform:">()));
    EXPECT_FALSE(target.receiver().responds(selectorNamed<"unknown:">()));
}

TEST(Subclass, ReturnsObjectsThatNobodyElseHolds) {
    {
        const AutoreleasePool pool;
        const Target target;
        EXPECT_EQ(target.receiver().fresh().retainCount(), 2U);
    }
    EXPECT_EQ(CountedObject::liveCount(), 0);
}

TEST(Subclass, CallsEachObjectsOwnOwner) {
    const AutoreleasePool pool;
    Target one;
    Target other;
    const NSObject sender = NSObject::create();
    one.receiver().perform(sender);
    EXPECT_TRUE(one.lastSender);
    EXPECT_FALSE(other.lastSender);
}

TEST(Subclass, DoesNothingOnceItsOwnerHasGone) {
    const AutoreleasePool pool;
    auto target = std::make_unique<Target>();
    const Receiver kept = target->receiver();
    EXPECT_EQ(kept.half(5), 2.5);
    target.reset();
    kept.perform(NSObject::create());
    EXPECT_EQ(kept.half(5), 0);
    EXPECT_FALSE(kept.allows(NSString::from("velmo"), true));
    EXPECT_FALSE(kept.fresh());
}

/// Is asked while it is being made.
class AskedTarget {
public:
    double answer = 0;

private:
    Id askedAndInitialized(Id allocated) {
        answer = Receiver::of(Object::share(allocated)).half(5);
        return Message<"NSObject", false, "init", Object>::send(allocated).leave();
    }
    double half(double number) { return number / 2; }

    using Class =
        Subclass<AskedTarget, "VelmoTestAskedTarget", NSObject, Method<"half:", &AskedTarget::half>>;
    Instance<AskedTarget, Class, NSObject> instance_{
        *this, [this](Id allocated) { return askedAndInitialized(allocated); }};
};

TEST(Subclass, AnswersWhileItIsBeingMade) {
    const AutoreleasePool pool;
    const AskedTarget target;
    EXPECT_EQ(target.answer, 2.5);
}

TEST(Subclass, HoldsWhatItsOwnerIsGivenNoLongerThanTheOwnerDoes) {
    {
        const AutoreleasePool pool;
        Target target;
        target.receiver().perform(CountedObject::create());
        EXPECT_EQ(CountedObject::liveCount(), 1);
        target.lastSender = {};
        EXPECT_EQ(CountedObject::liveCount(), 0);
    }
}

}  // namespace
}  // namespace velmo::macos
