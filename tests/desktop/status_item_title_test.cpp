#include "bar_session.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace velmo::desktop {

namespace {

constexpr std::uint32_t darkText = 0x1d1d20;
constexpr std::uint32_t lightText = 0xf1f1f3;

class StatusItemTitle : public BarSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
    }

    void makeItem() {
        item_ = bar_->makeStatusItem(StatusItem::variableLength);
        item_->setAutosaveName("Test.Title");
        item_->button()->setFont(Font{.hasMonospacedDigits = true});
    }
    void TearDown() override {
        item_.reset();
        BarSession::TearDown();
    }

    Area area() const {
        const auto window = x().windowTitled("Test.Title");
        return window ? x().area(*window).value_or(Area{}) : Area{};
    }
    /// Pixels of the item that are not the bar's background, as rows and columns of the item; absent
    /// where it shows nothing.
    std::optional<Area> inkedArea(std::uint32_t background) const {
        const auto place = area();
        Area inked{place.width, place.height, 0, 0};
        int right = -1;
        int bottom = -1;
        const int lines = place.height - place.height / 26;
        for (int row = 0; row < lines; ++row) {
            for (int column = 0; column < place.width; ++column) {
                if (x().pixel(place.x + column, place.y + row) == background)
                    continue;
                inked.x = std::min(inked.x, column);
                inked.y = std::min(inked.y, row);
                right = std::max(right, column);
                bottom = std::max(bottom, row);
            }
        }
        if (right < 0)
            return std::nullopt;
        inked.width = right + 1 - inked.x;
        inked.height = bottom + 1 - inked.y;
        return inked;
    }
    /// How far the darkest, or lightest, pixel of the item is from a colour, by its red part.
    int distanceTo(std::uint32_t color) const {
        const auto place = area();
        int nearest = 255;
        for (int row = 0; row < place.height - 2; ++row) {
            for (int column = 0; column < place.width; ++column) {
                const auto red = static_cast<int>(x().pixel(place.x + column, place.y + row) >> 16 & 0xff);
                nearest = std::min(nearest, std::abs(red - static_cast<int>(color >> 16 & 0xff)));
            }
        }
        return nearest;
    }
    void show(const std::string& title) {
        item_->button()->setTitle(title);
        const int drawings = text_.drawings();
        EXPECT_TRUE(turnUntil([&] { return text_.drawings() > drawings; }));
        EXPECT_TRUE(turnUntil([&] { return area().width > 16; }));
    }

    std::unique_ptr<StatusItem> item_;
};

TEST_F(StatusItemTitle, StandsInTheMiddleOfTheBarWithRoomOnBothSides) {
    startBar();
    makeItem();
    show("Sat 21 Nov  14:05");
    const auto inked = inkedArea(lightBar);
    ASSERT_TRUE(inked);
    EXPECT_NEAR(inked->x, 8, 1);
    EXPECT_NEAR(area().width - inked->x - inked->width, 8, 1);
    EXPECT_NEAR(inked->y + inked->height / 2.0, 13, 1);
    EXPECT_GT(inked->height, 8);
    EXPECT_LT(inked->height, 14);
    EXPECT_LT(distanceTo(darkText), 60);
    EXPECT_EQ(item_->button()->size(), (Size{static_cast<double>(area().width), 26}));
}

TEST_F(StatusItemTitle, IsTwiceAsLargeAtScaleTwo) {
    addToResources("Xft.dpi: 192\n");
    startBar();
    makeItem();
    show("14:05");
    const auto inked = inkedArea(lightBar);
    ASSERT_TRUE(inked);
    EXPECT_NEAR(inked->x, 16, 2);
    EXPECT_NEAR(inked->y + inked->height / 2.0, 26, 1.5);
    EXPECT_GT(inked->height, 16);
    EXPECT_LT(inked->height, 26);
    EXPECT_LT(distanceTo(darkText), 20) << "strokes are as wide as pixels";
}

TEST_F(StatusItemTitle, FollowsTheAppearanceLive) {
    const auto settings = home_ / "xsettingsd.conf";
    const auto write = [&](const std::string& theme, const std::string& font) {
        std::ofstream(settings) << "Net/ThemeName \"" << theme << "\"\nGtk/FontName \"" << font << "\"\n";
    };
    write("Adwaita", "DejaVu Sans 10");
    const auto manager = run({"xsettingsd", "-c", settings});
    ASSERT_TRUE(eventually([&] { return x().selectionOwner("_XSETTINGS_S0") != XCB_WINDOW_NONE; }));
    startBar();
    makeItem();
    show("14:05");
    const int width = area().width;
    ASSERT_LT(distanceTo(darkText), 80);

    write("Adwaita-dark", "DejaVu Sans 10");
    manager.signal(SIGHUP);
    EXPECT_TRUE(turnUntil([&] { return inkedArea(darkBar) && distanceTo(lightText) < 80; }));
    EXPECT_EQ(area().width, width);
    const auto inked = inkedArea(darkBar);
    EXPECT_NEAR(inked->y + inked->height / 2.0, 13, 1);

    write("Adwaita-dark", "DejaVu Sans 14");
    manager.signal(SIGHUP);
    EXPECT_TRUE(turnUntil([&] { return area().width > width; }));
}

TEST_F(StatusItemTitle, ChangingDigitsMoveNothing) {
    startBar();
    makeItem();
    show("Sat 21 Nov  11:11:11");
    const auto place = area();
    for (const char* time : {"Sat 21 Nov  00:47:58", "Sat 21 Nov  23:59:59"}) {
        show(time);
        EXPECT_EQ(area(), place) << time;
    }
    show("Sat 21 Nov  1:11:11");
    EXPECT_LT(area().width, place.width);
}

TEST_F(StatusItemTitle, IsDrawnOnlyWhenItChanges) {
    startBar();
    makeItem();
    show("14:05");
    EXPECT_EQ(text_.drawings(), 1);
    const auto neighbour = bar_->makeStatusItem(30);
    for (int repetition = 0; repetition < 3; ++repetition) {
        item_->button()->setTitle("14:05");
        item_->button()->setFont(Font{.hasMonospacedDigits = true});
        neighbour->setLength(30 + repetition);
        turnUntil([] { return false; }, milliseconds(50));
    }
    EXPECT_EQ(text_.drawings(), 1);
    item_->button()->setTitle("14:06");
    turnUntil([] { return false; }, milliseconds(50));
    EXPECT_EQ(text_.drawings(), 2);
}

TEST_F(StatusItemTitle, EmptyTitleShowsNothing) {
    startBar();
    makeItem();
    show("14:05");
    item_->button()->setTitle("");
    EXPECT_TRUE(turnUntil([&] { return area().width == 16; }));
    EXPECT_TRUE(turnUntil([&] { return !inkedArea(lightBar); }));
}

TEST_F(StatusItemTitle, EndsInAnEllipsisBeforeItFillsTheBar) {
    startBar();
    makeItem();
    show(std::string(10000, 'W'));
    EXPECT_LE(area().width, 480 + 16);
    EXPECT_GT(area().width, 440);
}

}  // namespace

}  // namespace velmo::desktop
