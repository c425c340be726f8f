#include "bar_session.h"

namespace velmo::desktop {

namespace {

class Spacing : public BarSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startBar();
    }
    void TearDown() override {
        items_.clear();
        BarSession::TearDown();
    }

    void setSpacing(std::optional<std::int64_t> points) {
        globalPreferences().setValue("NSStatusItemSpacing", points);
        globalPreferences().setValue("NSStatusItemSelectionPadding", points);
        globalPreferences().synchronize();
    }
    xcb_window_t dockIcon() {
        const auto icon = makeIcon(24, std::vector<std::uint32_t>(iconSide * iconSide, 0xff0000));
        dock(icon);
        return icon;
    }
    int widthOf(xcb_window_t icon) const { return itemOf(icon)->place()->width; }
    /// Icons that find room in the bar without standing closer, each docked with that spacing.
    int iconsThatFit(std::optional<std::int64_t> points) {
        setSpacing(points);
        std::vector<xcb_window_t> icons;
        int width = 0;
        while (true) {
            icons.push_back(dockIcon());
            turnUntil([&] { return itemOf(icons.back())->place().has_value(); });
            if (widthOf(icons.front()) < width)
                break;
            width = widthOf(icons.front());
        }
        for (const auto icon : icons)
            xcb_destroy_window(x().raw(), icon);
        xcb_flush(x().raw());
        EXPECT_TRUE(turnUntil([&] { return bar_->items().empty(); }));
        return static_cast<int>(icons.size()) - 1;
    }

    std::vector<std::unique_ptr<StatusItem>> items_;
};

TEST_F(Spacing, EachIconKeepsTheOneThatItCameWith) {
    const auto first = dockIcon();
    EXPECT_EQ(widthOf(first), 30);
    setSpacing(10);
    const auto second = dockIcon();
    EXPECT_EQ(widthOf(second), 22);
    setSpacing(6);
    const auto third = dockIcon();
    EXPECT_EQ(widthOf(third), 20);
    EXPECT_EQ(x().area(third)->width, iconSide) << "nothing is cut off";
    setSpacing(std::nullopt);
    const auto fourth = dockIcon();
    EXPECT_EQ(widthOf(fourth), 30);
    EXPECT_EQ(widthOf(first), 30);
    EXPECT_EQ(widthOf(second), 22);
    EXPECT_EQ(widthOf(third), 20);
}

TEST_F(Spacing, MoreIconsFit) {
    const int ordinary = iconsThatFit(std::nullopt);
    const int compact = iconsThatFit(10);
    const int tight = iconsThatFit(6);
    RecordProperty("ordinary", ordinary);
    RecordProperty("compact", compact);
    RecordProperty("tight", tight);
    EXPECT_NEAR(double(compact) / ordinary, 1 + 1.0 / 3, 0.05);
    EXPECT_EQ(tight, (1280 - 6) / iconSide) << "side by side";
}

TEST_F(Spacing, OurItemsFollowTooWhenTheyAppear) {
    const auto widthOfNewItem = [&] {
        items_.push_back(bar_->makeStatusItem(StatusItem::variableLength));
        items_.back()->button()->setImage(Image{Drawing{.size = {15, 15}}});
        return items_.back()->button()->size().width;
    };
    EXPECT_EQ(widthOfNewItem(), 31);
    setSpacing(10);
    EXPECT_EQ(widthOfNewItem(), 23);
    setSpacing(6);
    EXPECT_EQ(widthOfNewItem(), 19);
    EXPECT_EQ(items_.front()->button()->size().width, 31);
    items_.push_back(bar_->makeStatusItem(12));
    EXPECT_EQ(items_.back()->button()->size().width, 12) << "a length that is asked for counts";
}

TEST_F(Spacing, PressedItemIsHighlightedAsFarAsItMay) {
    globalPreferences().setValue("NSStatusItemSelectionPadding", 10);
    globalPreferences().synchronize();
    items_.push_back(bar_->makeStatusItem(StatusItem::variableLength));
    items_.back()->setAutosaveName("Test.Item");
    items_.back()->button()->setImage(Image{Drawing{.size = {15, 15}}});
    ASSERT_TRUE(turnUntil([&] { return x().windowTitled("Test.Item").has_value(); }));
    const auto area = *x().area(*x().windowTitled("Test.Item"));
    ASSERT_EQ(area.width, 31);
    ASSERT_TRUE(turnUntil([&] { return x().pixel(area.x, area.y + 12) == lightBar; }));
    movePointer(area.midX(), area.midY());
    xdotool({"mousedown", "1"});
    const auto pixel = [&](int column) { return x().pixel(area.x + column, area.y + 12); };
    const auto background = pixel(0);
    EXPECT_TRUE(turnUntil([&] { return pixel(15) != background; }));
    EXPECT_EQ(pixel(3), background);
    EXPECT_NE(pixel(4), background);
    EXPECT_NE(pixel(26), background);
    EXPECT_EQ(pixel(27), background);
    xdotool({"mouseup", "1"});
    EXPECT_TRUE(turnUntil([&] { return pixel(15) == background; }));
}

}  // namespace

}  // namespace velmo::desktop
