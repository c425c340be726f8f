#include "macos/objc/function.h"
#include "macos/core_graphics/events.h"
#include "macos/core_graphics/window_list.h"
#include "platform/macos/doubles/counted_object.h"
#include "platform/macos/macos_test.h"

namespace velmo::macos {
namespace {

Id& someoneElses() {
    static Id object = nullptr;
    return object;
}
Id someCreateObject() {
    return CountedObject::create().leave();
}
Id someCopyOfObject() {
    return CountedObject::create().leave();
}
Id someCreatedObject() {
    return someoneElses();
}

class FunctionTest : public MacosTest {};

TEST_F(FunctionTest, IsNamedAsWhatIsCalled) {
    EXPECT_EQ(nameOf<&core_graphics::CGEventPost>(), "CGEventPost");
    EXPECT_EQ(nameOf<&core_graphics::CGRectMakeWithDictionaryRepresentation>(),
              "CGRectMakeWithDictionaryRepresentation");
    EXPECT_EQ(nameOf<&core_graphics::kCGWindowName>(), "kCGWindowName");
    EXPECT_EQ(nameOf<&someCreateObject>(), "someCreateObject");
}

TEST_F(FunctionTest, LetsGoOfWhatItHasMade) {
    constexpr Function<&someCreateObject> create;
    constexpr Function<&someCopyOfObject> copy;
    const int before = CountedObject::liveCount();
    {
        const Object made = create();
        const Object copied = copy();
        EXPECT_EQ(CountedObject::liveCount(), before + 2);
    }
    EXPECT_EQ(CountedObject::liveCount(), before);
}

TEST_F(FunctionTest, LeavesToOthersWhatItHasNotMade) {
    constexpr Function<&someCreatedObject> created;
    const CountedObject object = CountedObject::create();
    someoneElses() = object.get();
    const auto count = object.retainCount();
    EXPECT_EQ(created(), object);
    EXPECT_EQ(object.retainCount(), count);
}

}  // namespace
}  // namespace velmo::macos
