#include "macos/services/macos_screen_capture.h"
#include "platform/macos/doubles/record_class.h"
#include "platform/macos/macos_test.h"

#include <memory>
#include <thread>

namespace velmo::macos {
namespace {

class MacosScreenCaptureTest : public MacosTest {
protected:
    void share(std::initializer_list<double> numbers) {
        const auto windows = Object::adopt<NSArray>(Message<"NSMutableArray", true, "new", NSArray>::send(
                                                        reinterpret_cast<Id>(classNamed<"NSMutableArray">()))
                                                        .leave());
        for (const double number : numbers) {
            const Object window = doubles::makeRecord("SCWindow");
            doubles::setMember(window, "windowID", number);
            Message<"NSMutableArray", false, "addObject:", void, Object>::send(windows.get(), window);
        }
        system.shareableWindows = doubles::ShareableWindows{windows};
    }

    std::optional<ScreenCapture::WindowNumbers> shareableWindows() {
        std::optional<ScreenCapture::WindowNumbers> found;
        bool isDone = false;
        capture->getShareableWindows(true, [&](const auto& numbers) {
            EXPECT_EQ(std::this_thread::get_id(), mainThread);
            found = numbers;
            isDone = true;
        });
        EXPECT_FALSE(isDone);
        EXPECT_TRUE(runUntil([&] { return isDone; }));
        return found;
    }

    std::optional<Bitmap> picture(std::uint32_t window, const CaptureConfiguration& configuration) {
        std::optional<Bitmap> taken;
        bool isDone = false;
        capture->captureWindow(window, configuration, [&](const auto& bitmap) {
            EXPECT_EQ(std::this_thread::get_id(), mainThread);
            taken = bitmap;
            isDone = true;
        });
        EXPECT_FALSE(isDone);
        EXPECT_TRUE(runUntil([&] { return isDone; }));
        return taken;
    }

    const std::thread::id mainThread = std::this_thread::get_id();
    std::unique_ptr<MacosScreenCapture> capture = std::make_unique<MacosScreenCapture>();
};

TEST_F(MacosScreenCaptureTest, AsksForConsentOnlyWhenItIsToldTo) {
    EXPECT_FALSE(capture->preflightAccess());
    EXPECT_EQ(system.captureRequests, 0);
    EXPECT_FALSE(capture->requestAccess());
    EXPECT_EQ(system.captureRequests, 1);
    system.mayCapture = true;
    EXPECT_TRUE(capture->preflightAccess());
    EXPECT_TRUE(capture->requestAccess());
}

TEST_F(MacosScreenCaptureTest, EndsWhatItCallsOnTheMainThread) {
    share({17});
    shareableWindows();
    std::thread::id ended;
    bool isDone = false;
    {
        const std::shared_ptr<int> kept(new int, [&](const int* number) {
            ended = std::this_thread::get_id();
            delete number;
        });
        capture->captureWindow(17, {}, [&isDone, kept](const auto& /*bitmap*/) { isDone = true; });
    }
    EXPECT_TRUE(runUntil([&] { return isDone && ended != std::thread::id(); }));
    EXPECT_EQ(ended, mainThread);
}

TEST_F(MacosScreenCaptureTest, TellsOnTheMainThreadWhichWindowsCanBePictured) {
    share({17, 4711});
    EXPECT_EQ(shareableWindows(), (ScreenCapture::WindowNumbers{17, 4711}));
    EXPECT_EQ(system.contentRequests, (std::vector{std::pair(false, true)}));
}

TEST_F(MacosScreenCaptureTest, TellsNothingWhereTheSystemDoesNotAnswer) {
    EXPECT_EQ(shareableWindows(), std::nullopt);
}

TEST_F(MacosScreenCaptureTest, PicturesAWindowAsConfigured) {
    share({7});
    shareableWindows();
    const auto bitmap = picture(7, {.width = 21, .height = 44});
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 21);
    EXPECT_EQ(bitmap->height, 44);
    EXPECT_EQ(*bitmap->pixels, std::vector<std::uint8_t>(4 * 21 * 44, 7));
    EXPECT_EQ(system.captures,
              std::vector{(doubles::RequestedCapture{
                  .window = 7, .width = 21, .height = 44, .resolution = 1, .pixelFormat = 0x42475241})});
}

TEST_F(MacosScreenCaptureTest, GivesNoPictureOfAWindowThatIsNotShared) {
    share({7});
    shareableWindows();
    EXPECT_EQ(picture(8, {.width = 1, .height = 1}), std::nullopt);
    EXPECT_TRUE(system.captures.empty());
}

TEST_F(MacosScreenCaptureTest, GivesNoPictureWhereTheSystemFails) {
    share({7});
    shareableWindows();
    system.capturesSucceed = false;
    EXPECT_EQ(picture(7, {.width = 1, .height = 1}), std::nullopt);
    EXPECT_EQ(system.captures.size(), 1U);
}

TEST_F(MacosScreenCaptureTest, GivesNoPictureWithoutPixelsOrRoomForThem) {
    share({7});
    shareableWindows();
    EXPECT_EQ(picture(7, {.width = 0, .height = 1}), std::nullopt);
    EXPECT_EQ(picture(7, {.width = 1, .height = 0}), std::nullopt);
    EXPECT_TRUE(picture(7, {.width = 1, .height = 1}));
    system.makesContexts = false;
    EXPECT_EQ(picture(7, {.width = 1, .height = 1}), std::nullopt);
}

TEST_F(MacosScreenCaptureTest, DropsAnswersThatComeAfterItsEnd) {
    share({7});
    bool isAnswered = false;
    capture->getShareableWindows(true, [&](const auto&) { isAnswered = true; });
    capture.reset();
    runFor(0.05);
    EXPECT_FALSE(isAnswered);
}

}  // namespace
}  // namespace velmo::macos
