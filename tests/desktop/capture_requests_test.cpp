#include "capture_session.h"

#include <algorithm>

namespace velmo::desktop {

namespace {

class CaptureRequests : public CaptureSession {};

TEST_F(CaptureRequests, FailsForWindowsAndSizesThatAreNone) {
    start();
    const auto window = dockIcon(24);
    EXPECT_FALSE(picture(xcb_window_t{0xdeadbeef}, CaptureConfiguration{30, 22}));
    EXPECT_FALSE(picture(x().root(), CaptureConfiguration{30, 22}));
    EXPECT_FALSE(picture(window, CaptureConfiguration{0, 22}));
    EXPECT_FALSE(picture(window, CaptureConfiguration{30, std::int64_t{1} << 40}));
    EXPECT_TRUE(picture(window, CaptureConfiguration{1, 1}));
}

TEST_F(CaptureRequests, CompletesInALaterTurn) {
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

TEST_F(CaptureRequests, WindowThatVanishesInTheMiddleCostsOnlyItsPicture) {
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

TEST_F(CaptureRequests, FiftyTogetherTakeLessThanFiftyMilliseconds) {
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

TEST_F(CaptureRequests, ShareableWindowsAreThoseOfTheItems) {
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

TEST_F(CaptureRequests, AccessIsWhatTheServerAllows) {
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
