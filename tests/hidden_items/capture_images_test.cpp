#include "hidden_items/capture_images.h"

#include "async/task_scope.h"
#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velmo {
namespace {

class CaptureImages : public testing::Test {
protected:
    CaptureImages() { capture_.setShareableWindows(ScreenCapture::WindowNumbers{1, 2, 3}); }

    static MenuBarItemInfo item(std::uint32_t windowID, Size size = {24, 22}) {
        MenuBarItemInfo info;
        info.windowID = windowID;
        info.bounds = {0, 0, size.width, size.height};
        return info;
    }

    Task<> run(std::vector<MenuBarItemInfo> items, double scale) {
        images_ = co_await captureImages(std::move(items), scale, capture_);
    }
    TaskHandle start(std::vector<MenuBarItemInfo> items, double scale = 1) {
        return scope_.start(run(std::move(items), scale));
    }

    std::vector<std::uint32_t> pictured() const {
        std::vector<std::uint32_t> numbers;
        for (const auto& [number, image] : *images_)
            numbers.push_back(number);
        return numbers;
    }
    const Bitmap& bitmap(std::uint32_t windowID) const {
        return std::get<Bitmap>(images_->at(windowID).content);
    }
    CaptureConfiguration configuration(Size size, double scale) {
        start({item(1, size)}, scale);
        desktop_.advance(0);
        return capture_.requests().back().configuration;
    }

    SimulatedDesktop desktop_;
    SimulatedScreenCapture& capture_ = desktop_.screenCapture();
    std::optional<std::map<std::uint32_t, Image>> images_;
    TaskScope scope_{desktop_.runLoop()};
};

TEST_F(CaptureImages, PicturesEachItemThatCanBePictured) {
    start({item(2), item(9), item(1)});
    desktop_.advance(0);
    EXPECT_EQ(pictured(), (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(capture_.queries(), std::vector<bool>{true}) << "Only windows on the screen are asked for.";
    EXPECT_EQ(capture_.requests().size(), 2U);
}

TEST_F(CaptureImages, GivesPicturesTheSizeOfTheirItem) {
    start({item(1, {10.5, 22})}, 2);
    desktop_.advance(0);
    EXPECT_EQ(bitmap(1).width, 21);
    EXPECT_EQ(bitmap(1).height, 44);
    EXPECT_EQ(bitmap(1).size, (Size{10.5, 22}));
    EXPECT_FALSE(images_->at(1).isTemplate) << "Its own colours are what it is known by.";
}

TEST_F(CaptureImages, CountsInPixels) {
    EXPECT_EQ(configuration({10.5, 22}, 2), (CaptureConfiguration{21, 44, false}));
    EXPECT_EQ(configuration({10.9, 22.9}, 1), (CaptureConfiguration{10, 22, false}));
    EXPECT_EQ(configuration({24, 22}, 1.5), (CaptureConfiguration{36, 33, false}));
}

TEST_F(CaptureImages, AsksForOnePixelAtLeast) {
    EXPECT_EQ(configuration({0.3, 0}, 2), (CaptureConfiguration{1, 1, false}));
    EXPECT_EQ(configuration({1, 1}, 1), (CaptureConfiguration{1, 1, false}));
}

TEST_F(CaptureImages, MeasuresBoundsThatAreUpsideDown) {
    EXPECT_EQ(configuration({-24, -22}, 1), (CaptureConfiguration{24, 22, false}));
}

TEST_F(CaptureImages, KnowsSizesUpToTheEndsOfAllNumbers) {
    // A picture so large could not be made.
    capture_.setFails(1);
    const double largest = std::nextafter(std::ldexp(1.0, 63), 0.0);
    EXPECT_EQ(configuration({largest, 22}, 1), (CaptureConfiguration{9223372036854774784, 22, false}));
    EXPECT_EQ(configuration({std::ldexp(1.0, 63), 22}, -1), (CaptureConfiguration{1, 1, false}));
}

TEST_F(CaptureImages, EndsTheProgramForSizesBeyondAllNumbers) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_DEATH(configuration({infinity, 22}, 1), "");
    EXPECT_DEATH(configuration({24, std::numeric_limits<double>::quiet_NaN()}, 1), "");
    EXPECT_DEATH(configuration({std::ldexp(1.0, 63), 22}, 1), "");
    EXPECT_DEATH(configuration({std::ldexp(1.0, 63), 22}, std::nextafter(-1.0, -2.0)), "");
}

TEST_F(CaptureImages, TakesAllPicturesSideBySideInAnyOrder) {
    capture_.setDuration(1, 0.3);
    capture_.setDuration(2, 0.1);
    capture_.setDuration(3, 0.2);
    start({item(1), item(2), item(3)});
    desktop_.advance(0);
    EXPECT_EQ(capture_.requests().size(), 3U);
    desktop_.advance(0.299);
    EXPECT_FALSE(images_);
    desktop_.advance(0.001);
    EXPECT_EQ(pictured(), (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST_F(CaptureImages, LeavesOutAPictureThatFails) {
    capture_.setFails(2);
    start({item(1), item(2), item(3)});
    desktop_.advance(0);
    EXPECT_EQ(pictured(), (std::vector<std::uint32_t>{1, 3}));
}

TEST_F(CaptureImages, GivesNothingWhereTheQueryFails) {
    capture_.setShareableWindows(std::nullopt);
    start({item(1)});
    desktop_.advance(0);
    EXPECT_TRUE(images_->empty());
    EXPECT_TRUE(capture_.requests().empty());
}

TEST_F(CaptureImages, AsksNothingWithoutAccess) {
    capture_.setGranted(false);
    start({item(1)});
    desktop_.advance(0);
    EXPECT_TRUE(images_->empty());
    EXPECT_TRUE(capture_.queries().empty());
}

TEST_F(CaptureImages, AsksNothingForNoItems) {
    start({});
    desktop_.advance(0);
    EXPECT_TRUE(images_->empty());
    EXPECT_TRUE(capture_.queries().empty());
}

TEST_F(CaptureImages, FinishesAlthoughItIsCancelled) {
    capture_.setQueryDuration(0.1);
    capture_.setDuration(1, 0.1);
    auto handle = start({item(1)});
    desktop_.advance(0.05);
    handle.cancel();
    desktop_.advance(0.1);
    handle.cancel();
    desktop_.advance(0.05);
    EXPECT_EQ(pictured(), std::vector<std::uint32_t>{1});
}

}  // namespace
}  // namespace velmo
