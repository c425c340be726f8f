#include "capture_session.h"

#include <algorithm>

namespace velmo::desktop {

namespace {

constexpr std::uint32_t opaque = 0xff000000;

class Capture : public CaptureSession {};

TEST_F(Capture, GivesAnIconAsItsProgramDrewIt) {
    start();
    const auto window = dockIcon(24);
    const auto bitmap = picture(window);
    expectPattern(bitmap, 24);
    expectSeen(window, *bitmap);
}

TEST_F(Capture, KeepsTheAlphaOfAnIcon) {
    start();
    const auto window = dockIcon(32);
    const auto bitmap = picture(window);
    expectPattern(bitmap, 32);
    ASSERT_TRUE(turnUntil([&] {
        const auto area = areaOnScreen(*itemOf(window));
        return x().pixel(area.midX(), area.midY()) != 0xf6f6f8;
    }));
    expectSeen(window, *bitmap);
}

TEST_F(Capture, KeepsTheAlphaOfAnItemOnTheBus) {
    start();
    const auto window = showBusItem();
    const auto bitmap = picture(window);
    expectTranslucentRed(bitmap);
    expectSeen(window, *bitmap);
}

TEST_F(Capture, ShowsNothingOfTheUseThatIsMadeOfAnItem) {
    start();
    const auto window = showBusItem();
    const auto area = areaOnScreen(*itemOf(window));
    const auto beside = [&] { return x().pixel(area.x + 4, area.midY()); };
    ASSERT_EQ(beside(), 0xf6f6f8U);
    movePointer(area.midX(), area.midY());
    xdotool({"mousedown", "1"});
    ASSERT_TRUE(turnUntil([&] { return beside() != 0xf6f6f8; })) << "highlighted";
    EXPECT_NE(x().pixel(area.midX(), area.midY()), over(0x80800000, 0xf6f6f8)) << "also behind the icon";
    expectTranslucentRed(picture(window));
    xdotool({"mouseup", "1"});
    EXPECT_TRUE(turnUntil([&] { return beside() == 0xf6f6f8; }));
}

TEST_F(Capture, IsHadOfAnItemOnTheBusBeyondTheEdgeOfTheScreen) {
    startServer();
    startBar({"Item-0", "desktop_tests.translucent"});
    capture_ = std::make_unique<x11::WindowCapture>(*bar_);
    const auto divider = bar_->makeStatusItem(10000);
    const auto window = showBusItem();
    ASSERT_LT(itemOf(window)->place()->x, 0);
    expectTranslucentRed(picture(window));
}

TEST_F(Capture, IsTheSameWithoutSharedMemory) {
    start({"-extension", "MIT-SHM"});
    for (const std::uint8_t depth : {std::uint8_t{24}, std::uint8_t{32}})
        expectPattern(picture(dockIcon(depth)), depth);
}

TEST_F(Capture, SeesThroughWhatCoversTheBar) {
    start();
    const auto opaqueIcon = dockIcon(24);
    const auto icon = dockIcon(32);
    const auto item = bar_->makeStatusItem(30);
    item->button()->setImage(Image{Symbol{"chevron.left", 13}});
    turnUntil([] { return true; });
    const auto own = bar_->items().back()->window();
    const auto before = picture(own);
    const auto cover = coverBar();
    ASSERT_TRUE(eventually([&] { return x().pixel(600, 10) == 0xff00ff; }));
    expectPattern(picture(opaqueIcon), 24);
    expectPattern(picture(icon), 32);
    const auto after = picture(own);
    ASSERT_TRUE(before && after);
    EXPECT_EQ(*before->pixels, *after->pixels);
    xcb_destroy_window(x().raw(), cover);
}

TEST_F(Capture, GivesOurOwnItemAsItIsSeen) {
    start();
    const auto item = bar_->makeStatusItem(30);
    item->button()->setImage(Image{Symbol{"chevron.left", 13}});
    turnUntil([] { return true; });
    const auto window = bar_->items().back()->window();
    const auto bitmap = picture(window);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 30);
    EXPECT_EQ(bitmap->height, 26);
    expectSeen(window, *bitmap);
    std::size_t marked = 0;
    for (int y = 0; y < bitmap->height; ++y) {
        for (int x = 0; x < bitmap->width; ++x) {
            EXPECT_EQ(pixelAt(*bitmap, x, y) & opaque, opaque);
            marked += pixelAt(*bitmap, x, y) < 0xff808080 ? 1 : 0;
        }
    }
    EXPECT_GT(marked, 5U) << "the symbol";
}

TEST_F(Capture, IsAtTheScaleOfTheScreen) {
    start({}, "Xft.dpi: 192\n");
    const auto window = dockIcon(24);
    const auto bitmap = picture(window, CaptureConfiguration{60, 44});
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 60);
    EXPECT_EQ(bitmap->height, 44);
    ASSERT_EQ(areaOnScreen(*itemOf(window)), (Area{areaOnScreen(*itemOf(window)).x, 4, 60, 44}));
    EXPECT_EQ(pixelAt(*bitmap, 10, 2), pattern(iconSide, 24)[0]) << "as many pixels as the window has";
    EXPECT_EQ(pixelAt(*bitmap, 9, 2), 0U);
}

TEST_F(Capture, IsScaledWhereAnotherSizeIsAskedFor) {
    start();
    const auto window = makeIcon(32, std::vector<std::uint32_t>(iconSide * iconSide, 0x80800000));
    dock(window);
    const auto larger = picture(window, CaptureConfiguration{60, 44});
    ASSERT_TRUE(larger);
    EXPECT_EQ(larger->width, 60);
    EXPECT_EQ(larger->height, 44);
    EXPECT_EQ(larger->pixels->size(), 60U * 44 * 4);
    EXPECT_EQ(pixelAt(*larger, 30, 22), 0x80800000);
    EXPECT_EQ(pixelAt(*larger, 2, 22), 0U);
    const auto smaller = picture(window, CaptureConfiguration{15, 11});
    ASSERT_TRUE(smaller);
    EXPECT_EQ(smaller->width, 15);
    EXPECT_EQ(smaller->height, 11);
    EXPECT_EQ(pixelAt(*smaller, 7, 5), 0x80800000);
    EXPECT_EQ(pixelAt(*smaller, 0, 5), 0U);
}

TEST_F(Capture, IsCutAndNotBlurredWhereTheSizeIsAPixelOff) {
    start();
    const auto window = dockIcon(32);
    const auto drawn = pattern(iconSide, 32);
    for (const int change : {-1, 1}) {
        const auto bitmap = picture(window, CaptureConfiguration{30 + change, 22 + change});
        ASSERT_TRUE(bitmap);
        ASSERT_EQ(bitmap->width, 30 + change);
        ASSERT_EQ(bitmap->height, 22 + change);
        EXPECT_EQ(pixelAt(*bitmap, 5, 1), drawn.front());
        EXPECT_EQ(pixelAt(*bitmap, 24, 20), drawn.back());
    }
}

TEST_F(Capture, IsHadOfIconsBeyondTheEdgeOfTheScreen) {
    startServer();
    startBar({"Item-0", "desktop_tests", "desktop_tests#2"});
    capture_ = std::make_unique<x11::WindowCapture>(*bar_);
    const auto divider = bar_->makeStatusItem(10);
    const auto window = dockIcon(24);
    const auto withAlpha = dockIcon(32);
    divider->setLength(10000);
    bar_->layOutIfNeeded();
    ASSERT_LT(itemOf(window)->place()->x, 0);
    expectPattern(picture(window), 24);
    expectPattern(picture(withAlpha), 32);
}

TEST_F(Capture, LeavesOutWhatIsNotInTheShapeOfAnIcon) {
    start();
    TrayClient client(environment_.at("DISPLAY"));
    const auto window = client.makeIcon("shaped", TrayClient::Look::shaped, 0x123456);
    dock(window);
    ASSERT_TRUE(eventually([&] { return client.exposures() > 0; }));
    client.setColor(window, 0x123457);
    client.x().exists(window);
    const auto bitmap = picture(window);
    ASSERT_TRUE(bitmap);
    for (int y = 0; y < bitmap->height; ++y) {
        for (int x = 0; x < bitmap->width; ++x) {
            const bool inside = x >= 10 && x < 20 && y >= 6 && y < 16;
            ASSERT_EQ(pixelAt(*bitmap, x, y), inside ? 0xff123457 : 0) << x << ' ' << y;
        }
    }
}

}  // namespace

}  // namespace velmo::desktop
