#pragma once

#include "bar_session.h"
#include "bus_program.h"
#include "icon_pixels.h"
#include "tray_client.h"

#include "linux/x11/window_capture.h"

#include <cstdlib>
#include <map>

namespace velmo::desktop {

/// A bar whose items are pictured.
class CaptureSession : public BarSession {
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

}  // namespace velmo::desktop
