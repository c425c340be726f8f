#include "macos/foundation/ns_string.h"
#include "macos/objc/autorelease_pool.h"

#include <gtest/gtest.h>

#include <string>

namespace velmo::macos {
namespace {

class NSMutableString : public ClassOf<NSMutableString, "NSMutableString", NSString> {
public:
    static NSMutableString create() { return make<"init">(); }
    static NSMutableString shared() { return sendToClass<NSMutableString, "string">(); }

    void append(const NSString& text) const { send<void, "appendString:">(text); }
    NSString copied() const { return send<NSString, "copy">(); }
    std::uint16_t characterAt(NSUInteger index) const {
        return send<std::uint16_t, "characterAtIndex:">(index);
    }
    double doubleValue() const { return send<double, "doubleValue">(); }
    NSUInteger retainCount() const { return send<NSUInteger, "retainCount">(); }
};

struct Range {
    NSUInteger location;
    NSUInteger length;
};

struct Rectangle {
    double x, y, width, height;
};

class NSValue : public ClassOf<NSValue, "NSValue", NSObject> {
public:
    static NSValue with(const Rectangle& rectangle) {
        return sendToClass<NSValue, "valueWithRect:">(rectangle);
    }
    Rectangle rectangle() const { return send<Rectangle, "rectValue">(); }
    static NSValue with(const Range& range) { return sendToClass<NSValue, "valueWithRange:">(range); }
    Range range() const { return send<Range, "rangeValue">(); }
};

TEST(Message, CarriesTextsOfAnyLanguageAndLength) {
    const AutoreleasePool pool;
    for (const std::string text : {"", "velmo", "⌘-drag … 🧊", "with\nlines"})
        EXPECT_EQ(NSString::from(text).text(), text);
    EXPECT_EQ(NSString::from(std::string("a\0b", 3)).text(), std::string("a\0b", 3));
}

TEST(Message, GivesNoStringWhereTheBytesAreNoText) {
    const AutoreleasePool pool;
    EXPECT_FALSE(NSString::from("\xff\xfe\xfd"));
    EXPECT_EQ(NSString().text(), "");
}

TEST(Message, ReturnsNumbersOfEveryWidth) {
    const AutoreleasePool pool;
    const NSMutableString text = NSMutableString::create();
    text.append(NSString::from("2.5"));
    EXPECT_EQ(text.characterAt(1), u'.');
    EXPECT_EQ(text.doubleValue(), 2.5);
}

TEST(Message, CarriesRecordsBothWays) {
    const AutoreleasePool pool;
    const Rectangle rectangle = NSValue::with(Rectangle{1.5, -2, 300, 22}).rectangle();
    EXPECT_EQ(rectangle.x, 1.5);
    EXPECT_EQ(rectangle.y, -2);
    EXPECT_EQ(rectangle.width, 300);
    EXPECT_EQ(rectangle.height, 22);
    const Range range = NSValue::with(Range{3, 4}).range();
    EXPECT_EQ(range.location, 3U);
    EXPECT_EQ(range.length, 4U);
}

TEST(Message, GivesZeroForARecordThatNobodyAnswers) {
    const Rectangle rectangle = NSValue().rectangle();
    EXPECT_EQ(rectangle.x, 0);
    EXPECT_EQ(rectangle.y, 0);
    EXPECT_EQ(rectangle.width, 0);
    EXPECT_EQ(rectangle.height, 0);
}

TEST(Message, TakesOverWhatMakersAndCopiesReturn) {
    const AutoreleasePool pool;
    const NSMutableString made = NSMutableString::create();
    EXPECT_EQ(made.retainCount(), 1U);
    made.append(NSString::from("some text that is too long to be stored in a pointer"));
    const auto copy = Object::share<NSMutableString>(made.copied().get());
    EXPECT_EQ(copy.retainCount(), 1U);
}

TEST(Message, SharesWhatOtherMessagesReturn) {
    NSMutableString outlives;
    {
        const AutoreleasePool pool;
        outlives = NSMutableString::shared();
        EXPECT_EQ(outlives.retainCount(), 2U);
    }
    EXPECT_EQ(outlives.retainCount(), 1U);
}

TEST(Message, KnowsOwnershipFromTheNameOfTheSelector) {
    for (const char* owned : {"alloc", "new", "copy", "mutableCopy", "init", "initWithFrame:", "newItem",
                              "copyWithZone:", "init:"})
        EXPECT_TRUE(returnsOwned(owned)) << owned;
    for (const char* shared : {"initialize", "newsgroup", "copying", "allocate", "string", "button", "isNew"})
        EXPECT_FALSE(returnsOwned(shared)) << shared;
}

}  // namespace
}  // namespace velmo::macos
