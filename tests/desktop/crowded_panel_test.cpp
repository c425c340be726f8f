#include "panel_window_session.h"
#include "tray_client.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace velmo::desktop {

namespace {

/// The panel with more pictures than fit on the screen side by side.
class CrowdedPanel : public PanelWindowSession {
protected:
    static constexpr int count = 75;

    void SetUp() override {
        PanelWindowSession::SetUp();
        startServer();
        std::vector<std::string> order = {"Velmo.Toggle", "Velmo.Divider"};
        for (int number = 0; number < count; ++number)
            order.push_back(nameOf(number) + ".Icon");
        startVelmoForPanels({{"autoRehide", false}, {"statusItemOrder", order}});
        client_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
        for (int number = 0; number < count; ++number) {
            icons_.push_back(client_->makeIcon(nameOf(number), TrayClient::Look::opaque, colorOf(number)));
            client_->dock(icons_.back());
        }
        ASSERT_TRUE(eventually([&] {
            return std::all_of(icons_.begin(), icons_.end(), [&](auto icon) { return isHidden(icon); });
        }));
    }
    void TearDown() override {
        client_.reset();
        PanelWindowSession::TearDown();
    }

    static std::string nameOf(int number) { return "icon" + std::to_string(number); }
    static std::uint32_t colorOf(int number) {
        return 0x302010U + 0x000200U * static_cast<std::uint32_t>(number);
    }
    /// Pixels of the panel that have the icon's colour.
    long pixelsOf(int number) const {
        const auto pixels = x().pixels(strip());
        return std::count(pixels.begin(), pixels.end(), colorOf(number));
    }
    bool showsWhole(int number) const {
        return eventually([&] { return pixelsOf(number) == TrayClient::side * TrayClient::side; });
    }
    int wholePictures() const {
        int whole = 0;
        for (int number = 0; number < count; ++number)
            whole += pixelsOf(number) == TrayClient::side * TrayClient::side ? 1 : 0;
        return whole;
    }
    void turnWheel(int button) const {
        const auto area = strip();
        movePointer(area.midX(), area.midY());
        xdotool({"click", "--repeat", "60", "--delay", "2", std::to_string(button)});
    }

    std::unique_ptr<TrayClient> client_;
    std::vector<xcb_window_t> icons_;
};

TEST_F(CrowdedPanel, ShowsWhatFitsOnTheScreenAndTheRestByTheWheel) {
    openPanelWindow();
    const auto area = strip();
    EXPECT_EQ(area.x, 8);
    EXPECT_EQ(area.width, 1280 - 2 * 8);
    EXPECT_TRUE(showsWhole(count - 1)) << "the leftmost";
    // 36 points each.
    EXPECT_EQ(wholePictures(), 35);
    EXPECT_EQ(pixelsOf(0), 0);
    turnWheel(5);
    EXPECT_TRUE(showsWhole(0));
    EXPECT_EQ(pixelsOf(count - 1), 0);
    turnWheel(4);
    EXPECT_TRUE(showsWhole(count - 1));
    turnWheel(5);
    EXPECT_TRUE(showsWhole(0));
    xdotool({"key", "Escape"});
    ASSERT_TRUE(eventually([&] { return !panelWindow(); }));
    openPanelWindow();
    EXPECT_TRUE(showsWhole(count - 1)) << "from the beginning";
    EXPECT_EQ(pixelsOf(0), 0);
}

TEST_F(CrowdedPanel, PicturesThatWereOutOfSightAreClicked) {
    openPanelWindow();
    ASSERT_TRUE(showsWhole(count - 1));
    turnWheel(5);
    ASSERT_TRUE(showsWhole(0));
    const auto area = strip();
    const auto pixels = x().pixels(area);
    const auto found = std::find(pixels.begin(), pixels.end(), colorOf(0)) - pixels.begin();
    const int x0 = area.x + static_cast<int>(found) % area.width;
    const int y0 = area.y + static_cast<int>(found) / area.width;
    movePointer(x0 + TrayClient::side / 2, y0 + TrayClient::side / 2);
    xdotool({"click", "1"});
    EXPECT_TRUE(eventually([&] { return !panelWindow() && isOnScreen(icons_.front()); }));
    EXPECT_TRUE(eventually([&] {
        const auto place = x().area(icons_.front()).value_or(Area{});
        return x().pointer() == std::pair(place.midX(), place.midY());
    })) << "it is clicked";
}

}  // namespace

}  // namespace velmo::desktop
