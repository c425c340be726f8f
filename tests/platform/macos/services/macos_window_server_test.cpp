#include "macos/services/macos_window_server.h"
#include "macos/foundation/ns_number.h"
#include "platform/macos/macos_test.h"

namespace velmo::macos {
namespace {

class NSMutableArray : public ClassOf<NSMutableArray, "NSMutableArray", NSArray> {
public:
    static NSMutableArray create() { return make<"init">(); }
    void add(const Object& object) const { send<void, "addObject:">(object); }
};

class MacosWindowServerTest : public MacosTest {
protected:
    static NSMutableDictionary dictionary(std::initializer_list<std::pair<const char*, Object>> members) {
        NSMutableDictionary made = NSMutableDictionary::create();
        for (const auto& [key, value] : members)
            made.setObject(value, NSString::from(key));
        return made;
    }
    static Object number(std::int64_t value) { return NSNumber::with(value); }
    static Object boundsOf(const Rect& rect) {
        return dictionary({{"X", NSNumber::with(rect.x)},
                           {"Y", NSNumber::with(rect.y)},
                           {"Width", NSNumber::with(rect.width)},
                           {"Height", NSNumber::with(rect.height)}});
    }
    void list(std::initializer_list<Object> entries) {
        const NSMutableArray all = NSMutableArray::create();
        for (const Object& entry : entries)
            all.add(entry);
        system.windowList = all;
    }

    MacosWindowServer server;
};

TEST_F(MacosWindowServerTest, TellsEverythingOfAWindow) {
    list({dictionary({{"kCGWindowNumber", number(4711)},
                      {"kCGWindowLayer", number(25)},
                      {"kCGWindowOwnerPID", number(123)},
                      {"kCGWindowOwnerName", NSString::from("Mail")},
                      {"kCGWindowName", NSString::from("Item-0")},
                      {"kCGWindowBounds", boundsOf({1000.5, 0, 30, 24})},
                      {"kCGWindowIsOnscreen", NSNumber::with(true)}})});
    const auto windows = server.windowList(WindowListOption::onScreenOnly);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 1U);
    const WindowListEntry& window = windows->front();
    EXPECT_EQ(window.number, 4711);
    EXPECT_EQ(window.layer, 25);
    EXPECT_EQ(window.ownerPID, 123);
    EXPECT_EQ(window.ownerName, "Mail");
    EXPECT_EQ(window.name, "Item-0");
    EXPECT_EQ(window.bounds, (Rect{1000.5, 0, 30, 24}));
    EXPECT_EQ(window.isOnScreen, true);
    EXPECT_EQ(system.windowListOption, 1U);
    EXPECT_EQ(system.relativeToWindow, 0U);
}

TEST_F(MacosWindowServerTest, LeavesOutWhatTheSystemDoesNotTellOrTellsOtherwise) {
    list({dictionary({{"kCGWindowLayer", NSString::from("25")},
                      {"kCGWindowName", number(1)},
                      {"kCGWindowBounds", dictionary({{"X", number(1)}})}})});
    const auto windows = server.windowList(WindowListOption::onScreenOnly);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 1U);
    EXPECT_EQ(windows->front().layer, std::nullopt);
    EXPECT_EQ(windows->front().number, std::nullopt);
    EXPECT_EQ(windows->front().name, std::nullopt);
    EXPECT_EQ(windows->front().bounds, std::nullopt);
    EXPECT_EQ(windows->front().isOnScreen, std::nullopt);
}

TEST_F(MacosWindowServerTest, TakesNoNumberForAnotherOne) {
    list({dictionary({{"kCGWindowLayer", NSNumber::with(25.5)},
                      {"kCGWindowOwnerPID", number(std::int64_t{1} << 32 | 7)}}),
          dictionary({{"kCGWindowLayer", NSNumber::with(25.0)}})});
    const auto windows = server.windowList(WindowListOption::onScreenOnly);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2U);
    EXPECT_EQ((*windows)[0].layer, std::nullopt);
    EXPECT_EQ((*windows)[0].ownerPID, std::nullopt);
    EXPECT_EQ((*windows)[1].layer, 25);
}

TEST_F(MacosWindowServerTest, TakesAListWithAnythingElseForNone) {
    list({dictionary({{"kCGWindowNumber", number(2)}}), NSString::from("no window")});
    EXPECT_FALSE(server.windowList(WindowListOption::onScreenOnly));
}

TEST_F(MacosWindowServerTest, KeepsTheOrder) {
    list({dictionary({{"kCGWindowNumber", number(2)}}), dictionary({{"kCGWindowNumber", number(1)}})});
    const auto windows = server.windowList(WindowListOption::onScreenOnly);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2U);
    EXPECT_EQ((*windows)[0].number, 2);
    EXPECT_EQ((*windows)[1].number, 1);
}

TEST_F(MacosWindowServerTest, GivesNothingWhereTheSystemDoesNotAnswer) {
    EXPECT_EQ(server.windowList(WindowListOption::onScreenOnly).has_value(), false);
}

}  // namespace
}  // namespace velmo::macos
