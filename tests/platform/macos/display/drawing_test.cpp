#include "macos/appkit/ns_bezier_path.h"
#include "macos/appkit/ns_image.h"
#include "macos/desktop/image_from.h"
#include "platform/macos/display/display_test.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/call_block.h"
#include "platform/macos/doubles/counted_object.h"

#include <cstdint>
#include <vector>

namespace velmo::macos {
namespace {

class NSBitmapImageRep : public ClassOf<NSBitmapImageRep, "NSBitmapImageRep", NSObject> {
public:
    static NSBitmapImageRep focused(const CGRect& rect) { return make<"initWithFocusedViewRect:">(rect); }

    std::uint8_t* pixels() const { return send<std::uint8_t*, "bitmapData">(); }
    NSInteger bytesPerRow() const { return send<NSInteger, "bytesPerRow">(); }
    NSInteger samplesPerPixel() const { return send<NSInteger, "samplesPerPixel">(); }
    NSInteger height() const { return send<NSInteger, "pixelsHigh">(); }
};

/// Draws as the system does: what an image's handler paints, into a picture of one pixel a point.
class Picture {
public:
    Picture(void* drawingHandler, const CGSize& size) {
        const NSImage canvas = Message<"NSImage", false, "initWithSize:", NSImage, CGSize>::send(
            Message<"NSImage", true, "alloc", NSImage>::send(NSImage::classObject()).leave(), size);
        Message<"NSImage", false, "lockFocus", void>::send(canvas.get());
        const CGRect rect{{0, 0}, size};
        hasDrawn_ = doubles::callBlock<RawBool>(drawingHandler, rect) != RawBool{};
        bitmap_ = NSBitmapImageRep::focused(rect);
        Message<"NSImage", false, "unlockFocus", void>::send(canvas.get());
    }

    bool hasDrawn() const { return hasDrawn_; }
    /// 0: clear, 255: black. Origin at the bottom left.
    int opacityAt(int x, int y) const {
        const auto row = bitmap_.height() - 1 - y;
        const auto samples = bitmap_.samplesPerPixel();
        return bitmap_.pixels()[row * bitmap_.bytesPerRow() + x * samples + samples - 1];
    }

private:
    bool hasDrawn_ = false;
    NSBitmapImageRep bitmap_;
};

int& roundedPaths() {
    static int made = 0;
    return made;
}
NSBezierPath makeRoundedPath(const NSBezierPath& pathClass, const CGRect& rect, CGFloat xRadius,
                             CGFloat yRadius) {
    ++roundedPaths();
    CountedObject::create().leaveToPool();
    return doubles::callOwn<&makeRoundedPath, NSBezierPath>(pathClass, rect, xRadius, yRadius);
}
/// Once for all tests.
void countRoundedPaths() {
    static const bool isDone = [] {
        doubles::overrideMethod<"bezierPathWithRoundedRect:xRadius:yRadius:", &makeRoundedPath>(
            doubles::metaclassOf(classNamed<"NSBezierPath">()));
        return true;
    }();
    static_cast<void>(isDone);
}

class DrawingTest : public DisplayTest {
protected:
    Picture drawn(const Drawing& drawing) {
        imageFrom({.content = drawing, .isTemplate = true});
        return {system.drawingHandlers.back().get(), CGSize{drawing.size.width, drawing.size.height}};
    }
};

TEST_F(DrawingTest, FillsRoundedRectangles) {
    const Picture picture =
        drawn({.size = {12, 18}, .fills = {{.path = {RoundedRect{{4, 3, 4, 12}, 1, 1}}}}});
    EXPECT_TRUE(picture.hasDrawn());
    EXPECT_EQ(picture.opacityAt(5, 9), 255);
    EXPECT_EQ(picture.opacityAt(5, 1), 0);
    EXPECT_EQ(picture.opacityAt(1, 9), 0);
    EXPECT_EQ(picture.opacityAt(10, 9), 0);
}

TEST_F(DrawingTest, HasAPathOfItsOwnForARoundedRectangleAlone) {
    countRoundedPaths();
    roundedPaths() = 0;
    const RoundedRect rounded{{4, 3, 4, 12}, 1, 1};
    drawn({.size = {12, 18}, .fills = {{.path = {rounded}}}});
    const int alone = roundedPaths();
    EXPECT_GT(alone, 0);
    drawn({.size = {12, 18}, .fills = {{.path = {rounded, rounded}}, {.path = {Oval{{4, 3, 4, 12}}}}}});
    EXPECT_EQ(roundedPaths(), alone);
}

TEST_F(DrawingTest, LetsGoOfWhatDrawingHasUsed) {
    countRoundedPaths();
    const int before = CountedObject::liveCount();
    const int made = roundedPaths();
    drawn({.size = {12, 18}, .fills = {{.path = {RoundedRect{{4, 3, 4, 12}, 1, 1}}}}});
    EXPECT_GT(roundedPaths(), made);
    EXPECT_EQ(CountedObject::liveCount(), before);
}

TEST_F(DrawingTest, LeavesOutWhatLiesInTwoPathsByTheEvenOddRule) {
    const std::vector<PathElement> path = {RoundedRect{{2, 2, 14, 14}, 0, 0}, Oval{{5, 5, 8, 8}}};
    const Picture hollow =
        drawn({.size = {18, 18}, .fills = {{.path = path, .windingRule = WindingRule::evenOdd}}});
    EXPECT_EQ(hollow.opacityAt(3, 9), 255);
    EXPECT_EQ(hollow.opacityAt(9, 9), 0);
    const Picture again = drawn(
        {.size = {18, 18},
         .fills = {{.path = path, .windingRule = WindingRule::evenOdd}, {.path = {Oval{{7, 7, 4, 4}}}}}});
    EXPECT_EQ(again.opacityAt(9, 9), 255);
    EXPECT_EQ(again.opacityAt(6, 9), 0);
}

}  // namespace
}  // namespace velmo::macos
