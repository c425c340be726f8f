#include "bus_program.h"
#include "settings_by_keyboard.h"

#include <algorithm>
#include <thread>

namespace velmo::desktop {

namespace {

constexpr const char* itemPath = "/StatusNotifierItem";
constexpr std::uint32_t red = 0xff0000;
constexpr std::uint32_t blue = 0x0000ff;

/// A hidden item whose program changes its icon, and the settings with the tab of the panel.
class PicturesInPanel : public SettingsByKeyboard {
protected:
    void prepareSession() override { startSessionBus(); }
    void TearDown() override {
        program_.reset();
        SettingsByKeyboard::TearDown();
    }

    void hideRedItem() {
        program_ = std::make_unique<BusProgram>(busAddress());
        ASSERT_TRUE(eventually([&] { return program_->isTaken("org.freedesktop.StatusNotifierWatcher"); }));
        program_->addItem(itemPath, "network");
        program_->setText(itemPath, "Title", "Network");
        program_->registerItem(itemPath);
        ASSERT_TRUE(eventually([&] { return isOnScreen(icon()); }));
        superDrag(icon(), farLeft);
        ASSERT_TRUE(eventually([&] { return isHidden(icon()); }));
    }
    xcb_window_t icon() const { return itemTitled("Network"); }
    /// Waits until pictures that were taken before are old.
    void paint(std::uint32_t color) {
        program_->setProperty(itemPath, "IconPixmap", BusProgram::pixmaps({22}, 0xff000000 | color));
        program_->emit(itemPath, "org.kde.StatusNotifierItem", "NewIcon");
        std::this_thread::sleep_for(milliseconds(2500));
    }
    /// How much of the panel that the focused button opens has the colour.
    long pixelsOf(std::uint32_t color) const {
        press("space");
        EXPECT_TRUE(eventually([&] { return isShown("Velmo.Panel"); }));
        movePointer(farLeft, 600);
        const auto area = panel().value_or(Area{});
        const auto pixels = x().pixels(area);
        press("Escape");
        EXPECT_TRUE(eventually([&] { return !isShown("Velmo.Panel"); }));
        return std::count(pixels.begin(), pixels.end(), color);
    }
    /// From the button to the switch below it, and back.
    void switchRefreshing(bool isOn) const {
        next();
        press("space");
        EXPECT_TRUE(comesToBe("refreshPanelOnOpen", isOn));
        press("shift+Tab");
    }

    std::unique_ptr<BusProgram> program_;
};

TEST_F(PicturesInPanel, AreTakenAnewOnlyWhereTheUserWantsThat) {
    constexpr long enough = 100;
    hideRedItem();
    comeBack();
    goToTab(3);
    next();
    EXPECT_GT(pixelsOf(red), enough);
    paint(blue);
    EXPECT_GT(pixelsOf(blue), enough);
    switchRefreshing(false);
    paint(red);
    EXPECT_GT(pixelsOf(blue), enough) << "the picture that was taken last";
    EXPECT_EQ(pixelsOf(red), 0);
    switchRefreshing(true);
    EXPECT_GT(pixelsOf(red), enough);
}

}  // namespace

}  // namespace velmo::desktop
