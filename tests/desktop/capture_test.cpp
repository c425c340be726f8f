#include "bar_session.h"
#include "bus_program.h"
#include "icon_pixels.h"
#include "tray_client.h"

#include "linux/x11/window_capture.h"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace velmo::desktop {

namespace {

constexpr std::uint32_t opaque = 0xff000000;

class Capture : public BarSession {
protected:
    using Pictures = std::map<xcb_window_t, std::optional<Bitmap>>;

    void start(const std::vector<std::string>& serverOptions = {}, const std::string& resources = {},
               const std::string& screen = "1280x720x24") {
        startServer(screen, serverOptions);
        addToResources(resources);
        startBar();
        capture_ = std::make_unique<x11::WindowCapture>(*bar_);
    }
    void TearDown() override {
        capture_.reset();
        BarSession::TearDown();
        program_.reset();
    }

    xcb_window_t dockIcon(std::uint8_t depth) {
        const auto window = makeIcon(depth, pattern(iconSide, depth));
        dock(window);
        return window;
    }

    void ask(xcb_window_t window, Pictures& pictures,
             std::optional<CaptureConfiguration> configuration = {}) {
        if (!configuration) {
            const auto area = areaOnScreen(*itemOf(window));
            configuration = CaptureConfiguration{area.width, area.height};
        }
        capture_->captureWindow(window, *configuration, [&pictures, window](std::optional<Bitmap> picture) {
            EXPECT_FALSE(pictures.contains(window)) << "once each";
            pictures[window] = std::move(picture);
        });
    }

    std::optional<Bitmap> picture(xcb_window_t window,
                                  std::optional<CaptureConfiguration> configuration = {}) {
        Pictures pictures;
        ask(window, pictures, configuration);
        EXPECT_TRUE(turnUntil([&] { return !pictures.empty(); }));
        return pictures[window];
    }

    /// The picture of an icon has the pattern in its middle and nothing around it.
    static void expectPattern(const std::optional<Bitmap>& bitmap, std::uint8_t depth) {
        ASSERT_TRUE(bitmap);
        ASSERT_EQ(bitmap->width, 30);
        ASSERT_EQ(bitmap->height, 22);
        ASSERT_EQ(bitmap->pixels->size(), 30U * 22 * 4);
        const auto drawn = pattern(iconSide, depth);
        for (int y = 0; y < bitmap->height; ++y) {
            for (int x = 0; x < bitmap->width; ++x) {
                const bool inside = x >= 5 && x < 25 && y >= 1 && y < 21;
                const auto index = static_cast<std::size_t>((y - 1) * iconSide + x - 5);
                ASSERT_EQ(pixelAt(*bitmap, x, y), inside ? drawn[index] : 0) << x << ' ' << y;
            }
        }
    }

    /// The screen shows the picture before the bar.
    void expectSeen(xcb_window_t window, const Bitmap& bitmap) {
        const auto area = areaOnScreen(*itemOf(window));
        ASSERT_EQ(area.width, bitmap.width);
        ASSERT_EQ(area.height, bitmap.height);
        for (int y = 0; y < bitmap.height; ++y) {
            for (int x = 0; x < bitmap.width; ++x) {
                const auto seen = this->x().pixel(area.x + x, area.y + y);
                const auto expected = over(pixelAt(bitmap, x, y), 0xf6f6f8);
                for (int shift = 0; shift < 24; shift += 8) {
                    const int difference = static_cast<int>((seen >> shift) & 0xff) -
                                           static_cast<int>((expected >> shift) & 0xff);
                    ASSERT_LE(std::abs(difference), 1) << x << ' ' << y;
                }
            }
        }
    }

    /// A program on the bus with a half transparent icon, 20 x 20 pixels of red. Returns the item's window
    /// once it is drawn.
    xcb_window_t showBusItem() {
        startNotifierTray();
        const std::string path = "/StatusNotifierItem";
        program_ = std::make_unique<BusProgram>(busAddress());
        EXPECT_TRUE(turnUntil([&] { return program_->isTaken("org.freedesktop.StatusNotifierWatcher"); }));
        program_->addItem(path, "translucent");
        program_->setProperty(path, "IconPixmap", BusProgram::pixmaps({iconSide}, 0x80ff0000));
        program_->registerItem(path);
        const auto drawn = [&]() -> const x11::BarItem* {
            for (const auto* item : bar_->items()) {
                if (!item->isOurs() && item->identity().ends_with("translucent") && item->content())
                    return item;
            }
            return nullptr;
        };
        EXPECT_TRUE(turnUntil([&] { return drawn(); }));
        return drawn() ? drawn()->window() : xcb_window_t{XCB_WINDOW_NONE};
    }

    static void expectTranslucentRed(const std::optional<Bitmap>& bitmap) {
        ASSERT_TRUE(bitmap);
        ASSERT_EQ(bitmap->width, 30);
        ASSERT_EQ(bitmap->height, 22);
        for (int y = 0; y < bitmap->height; ++y) {
            for (int x = 0; x < bitmap->width; ++x) {
                const bool inside = x >= 5 && x < 25 && y >= 1 && y < 21;
                ASSERT_EQ(pixelAt(*bitmap, x, y), inside ? 0x80800000 : 0) << x << ' ' << y;
            }
        }
    }

    std::unique_ptr<x11::WindowCapture> capture_;
    std::unique_ptr<BusProgram> program_;
};

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

TEST_F(Capture, FailsForWindowsAndSizesThatAreNone) {
    start();
    const auto window = dockIcon(24);
    EXPECT_FALSE(picture(xcb_window_t{0xdeadbeef}, CaptureConfiguration{30, 22}));
    EXPECT_FALSE(picture(x().root(), CaptureConfiguration{30, 22}));
    EXPECT_FALSE(picture(window, CaptureConfiguration{0, 22}));
    EXPECT_FALSE(picture(window, CaptureConfiguration{30, std::int64_t{1} << 40}));
    EXPECT_TRUE(picture(window, CaptureConfiguration{1, 1}));
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

TEST_F(Capture, CompletesInALaterTurn) {
    start();
    const auto window = dockIcon(24);
    Pictures pictures;
    ask(window, pictures);
    EXPECT_TRUE(pictures.empty());
    bool listed = false;
    capture_->getShareableWindows(true, [&](const auto&) { listed = true; });
    EXPECT_FALSE(listed);
    EXPECT_TRUE(turnUntil([&] { return listed && !pictures.empty(); }));
}

TEST_F(Capture, WindowThatVanishesInTheMiddleCostsOnlyItsPicture) {
    start();
    std::vector<xcb_window_t> windows;
    for (int count = 0; count < 8; ++count)
        windows.push_back(dockIcon(count % 2 == 0 ? 24 : 32));
    Pictures pictures;
    for (const auto window : windows)
        ask(window, pictures);
    xcb_destroy_window(x().raw(), windows[2]);
    xcb_destroy_window(x().raw(), windows[3]);
    xcb_unmap_window(x().raw(), windows[4]);
    xcb_unmap_window(x().raw(), windows[5]);
    x().exists(windows[0]);
    ASSERT_TRUE(turnUntil([&] { return pictures.size() == windows.size(); }));
    for (const int index : {0, 1, 6, 7}) {
        SCOPED_TRACE(index);
        expectPattern(pictures[windows[static_cast<std::size_t>(index)]], index % 2 == 0 ? 24 : 32);
    }
    for (const int index : {2, 3, 4, 5})
        EXPECT_FALSE(pictures[windows[static_cast<std::size_t>(index)]]) << index;
    expectPattern(picture(windows[0]), 24);
}

TEST_F(Capture, FiftyTogetherTakeLessThanFiftyMilliseconds) {
    start({}, {}, "3840x1080x24");
    std::vector<xcb_window_t> windows;
    for (int count = 0; count < 50; ++count)
        windows.push_back(dockIcon(count % 2 == 0 ? 24 : 32));
    Pictures pictures;
    const auto begin = std::chrono::steady_clock::now();
    for (const auto window : windows)
        ask(window, pictures, CaptureConfiguration{30, 22});
    while (pictures.size() < windows.size()) {
        loop_.turn();
        loop_.prepareToSleep();
    }
    const auto time = std::chrono::steady_clock::now() - begin;
    RecordProperty("microseconds",
                   static_cast<int>(std::chrono::duration_cast<std::chrono::microseconds>(time).count()));
    EXPECT_LT(time, milliseconds(50));
    const auto taken = std::count_if(pictures.begin(), pictures.end(),
                                     [](const auto& entry) { return entry.second.has_value(); });
    EXPECT_EQ(taken, 50);
}

TEST_F(Capture, ShareableWindowsAreThoseOfTheItems) {
    start();
    const auto icon = dockIcon(24);
    const auto item = bar_->makeStatusItem(30);
    const auto own = bar_->items().back()->window();
    const auto divider = bar_->makeStatusItem(10000);
    const auto hidden = bar_->makeStatusItem(30);
    const auto beyond = bar_->items().back()->window();
    const auto list = [&](bool onScreenOnly) {
        std::optional<ScreenCapture::WindowNumbers> numbers;
        capture_->getShareableWindows(onScreenOnly, [&](auto result) { numbers = std::move(result); });
        EXPECT_TRUE(turnUntil([&] { return numbers.has_value(); }));
        return *numbers;
    };
    const auto has = [](const auto& numbers, xcb_window_t window) {
        return std::count(numbers.begin(), numbers.end(), window) == 1;
    };
    EXPECT_TRUE(has(list(true), own));
    EXPECT_TRUE(has(list(false), own));
    EXPECT_TRUE(has(list(true), icon));
    EXPECT_FALSE(has(list(true), beyond));
    EXPECT_TRUE(has(list(false), beyond));
    item->setVisible(false);
    EXPECT_FALSE(has(list(false), own));
}

TEST_F(Capture, AccessIsWhatTheServerAllows) {
    start();
    turnUntil([] { return true; });
    xcb_unmap_window(x().raw(), bar_->window());
    x().exists(x().root());
    EXPECT_FALSE(capture_->preflightAccess()) << "the server refuses";
    EXPECT_FALSE(capture_->requestAccess());
    xcb_map_window(x().raw(), bar_->window());
    x().exists(x().root());
    EXPECT_TRUE(capture_->preflightAccess()) << "it is asked again";
    EXPECT_TRUE(capture_->requestAccess());
}

}  // namespace

}  // namespace velmo::desktop
