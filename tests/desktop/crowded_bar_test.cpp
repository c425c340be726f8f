#include "bar_session.h"

#include "linux/x11/accessible_items.h"
#include "linux/x11/synthetic_events.h"
#include "linux/x11/window_capture.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

/// An item that can do with less than it wants.
class YieldingItem : public x11::BarItem {
public:
    YieldingItem(x11::MenuBar& bar, const std::string& identity, int least = 12, int preferred = 30)
        : BarItem(bar.connection(), bar.window()), bar_(bar), least_(least), preferred_(preferred) {
        setIdentity(identity);
        bar_.addItem(*this);
    }
    ~YieldingItem() override { bar_.removeItem(*this); }

    bool isOurs() const override { return false; }
    bool isShown() const override { return true; }
    int preferredWidth() const override { return preferred_; }
    int leastWidth() const override { return least_; }
    void appearanceChanged() override {}
    WindowListEntry describe() const override { return {}; }
    bool click(xcb_button_t /*button*/, xcb_timestamp_t time) override {
        clicks.push_back(time);
        return true;
    }
    void setWidth(int width) {
        least_ = preferred_ = width;
        bar_.setNeedsLayout();
    }

    std::vector<xcb_timestamp_t> clicks;

protected:
    void resized() override {}

private:
    x11::MenuBar& bar_;
    int least_;
    int preferred_;
};

class CrowdedBar : public BarSession {
protected:
    using Items = std::vector<std::unique_ptr<YieldingItem>>;

    void SetUp() override {
        BarSession::SetUp();
        startServer();
    }
    void TearDown() override {
        items_.clear();
        BarSession::TearDown();
    }
    std::vector<int> widths() const {
        std::vector<int> widths;
        for (const auto& item : items_)
            widths.push_back(item->place()->width);
        return widths;
    }
    /// Requests that the bar has sent so far, and this one.
    unsigned requests() const { return xcb_no_operation(connection_->raw()).sequence; }

    Items items_;
};

TEST_F(CrowdedBar, KeepsWidthsWhileAnItemIsDragged) {
    std::vector<std::string> order = {"Velmo.Toggle"};
    for (int number = 0; number < 90; ++number)
        order.push_back("icon" + std::to_string(number));
    startBar(order);
    items_.push_back(std::make_unique<YieldingItem>(*bar_, "Velmo.Toggle", 26, 26));
    for (int number = 0; number < 90; ++number)
        items_.push_back(std::make_unique<YieldingItem>(*bar_, "icon" + std::to_string(number)));
    bar_->layOutIfNeeded();
    const auto before = widths();
    ASSERT_LT(*std::min_element(before.begin(), before.end()), 20);
    auto& toggle = *items_.front();
    const int start = toggle.place()->x;
    bar_->take(toggle);
    std::ptrdiff_t passed = 0;
    for (int x = start; x > start - 200; --x) {
        bar_->dragTo(x);
        bar_->layOutIfNeeded();
        EXPECT_EQ(widths(), before) << x;
        const auto right = std::count_if(items_.begin() + 1, items_.end(),
                                         [x](const auto& item) { return item->place()->x > x; });
        EXPECT_GE(right, passed) << x;
        passed = right;
    }
    EXPECT_GT(passed, 8);
    bar_->drop();
    bar_->layOutIfNeeded();
    EXPECT_NE(widths(), before) << "those right of the toggle have what they want again";
}

TEST_F(CrowdedBar, GivesTranslucentIconsTheirNewLookBeforeTheStepAndOnce) {
    startBar();
    const auto icon = makeIcon(32, std::vector<std::uint32_t>(std::size_t{iconSide} * iconSide, 0x80204060));
    dock(icon);
    turnUntil([] { return false; }, milliseconds(300));
    auto& item = *bar_->items().front();
    auto next = *item.place();
    next.width = 12;
    const auto beforeLook = requests();
    item.willMove(next);
    EXPECT_GT(requests() - beforeLook, 8U) << "it is drawn";
    const auto beforeStep = requests();
    item.setPlace(next);
    // Both windows, the background, what shows it, the end of its pixmap, and of the damage.
    EXPECT_EQ(requests() - beforeStep - 1, 6U);
    const auto afterStep = requests();
    turnUntil([] { return false; }, milliseconds(300));
    EXPECT_EQ(requests() - afterStep - 1, 0U) << "nothing is drawn again";
    next.width = 30;
    const auto beforeUnexpected = requests();
    item.setPlace(next);
    turnUntil([] { return false; }, milliseconds(300));
    EXPECT_GT(requests() - beforeUnexpected, 10U) << "what nobody has drawn before is drawn then";
}

TEST_F(CrowdedBar, ShowsWhatATranslucentIconDrawsWhileItIsAboutToMove) {
    startBar();
    const auto icon = makeIcon(32, std::vector<std::uint32_t>(std::size_t{iconSide} * iconSide, 0x80204060));
    dock(icon);
    turnUntil([] { return false; }, milliseconds(300));
    auto& item = *bar_->items().front();
    const auto start = *item.place();
    const auto fill = [&](std::uint32_t pixel) {
        xcb_change_window_attributes(x().raw(), icon, XCB_CW_BACK_PIXEL, &pixel);
        xcb_clear_area(x().raw(), 0, icon, 0, 0, 0, 0);
        EXPECT_TRUE(x().exists(icon));
    };
    const auto shows = [&](std::uint32_t color) {
        const auto area = areaOnScreen(item);
        return x().pixel(area.midX(), area.midY()) == color;
    };
    const auto moveTo = [&](const x11::PixelRect& next, std::uint32_t color) {
        item.willMove(next);
        fill(0xff000000 | color);
        item.setPlace(next);
        EXPECT_TRUE(turnUntil([&] { return shows(color); }, milliseconds(1000))) << std::hex << color;
    };
    auto narrow = start;
    narrow.width = 22;
    moveTo(narrow, 0x205080);
    auto away = narrow;
    away.x = -500;
    item.setPlace(away);
    fill(0xff802010);
    turnUntil([] { return false; }, milliseconds(300));
    moveTo(narrow, 0x108040);
    moveTo(start, 0x604020);
}

TEST_F(CrowdedBar, PicturesShowIconsWholeThatAreCutOffThere) {
    startBar();
    x11::WindowCapture capture(*bar_);
    const auto icon = makeIcon(24, std::vector<std::uint32_t>(std::size_t{iconSide} * iconSide, 0x204060));
    dock(icon);
    auto& item = *bar_->items().front();
    const auto wide = bar_->shownArea(item);
    auto next = *item.place();
    next.width = 12;
    item.setPlace(next);
    const auto shown = bar_->shownArea(item);
    EXPECT_EQ(shown.width, wide.width);
    EXPECT_EQ(shown.x + shown.width / 2, 6) << "around the middle";
    std::optional<Bitmap> picture;
    capture.captureWindow(icon, {shown.width, shown.height}, [&](auto taken) { picture = std::move(taken); });
    ASSERT_TRUE(turnUntil([&] { return picture.has_value(); }));
    int drawn = 0;
    for (std::size_t alpha = 3; alpha < picture->pixels->size(); alpha += 4)
        drawn += picture->pixels->at(alpha) == 0xff ? 1 : 0;
    EXPECT_EQ(drawn, iconSide * iconSide);
}

TEST_F(CrowdedBar, ItemsArePressedForOthersAtTheServersTimeAndOnlyWhereTheyAreSeen) {
    startBar({"divider", "icon"});
    x11::SyntheticEvents events(*bar_);
    x11::AccessibleItems accessible(*bar_, events);
    items_.push_back(std::make_unique<YieldingItem>(*bar_, "divider", 20, 20));
    items_.push_back(std::make_unique<YieldingItem>(*bar_, "icon"));
    auto& divider = *items_.front();
    const auto& icon = *items_.back();
    bar_->layOutIfNeeded();
    accessible.press(icon.window());
    ASSERT_TRUE(turnUntil([&] { return icon.clicks.size() == 1; }));
    EXPECT_NE(icon.clicks.front(), xcb_timestamp_t{XCB_CURRENT_TIME});
    accessible.press(icon.window());
    divider.setWidth(5000);
    accessible.press(divider.window());
    EXPECT_FALSE(
        turnUntil([&] { return icon.clicks.size() > 1 || !divider.clicks.empty(); }, milliseconds(300)));
    divider.setWidth(20);
    accessible.press(icon.window());
    EXPECT_TRUE(turnUntil([&] { return icon.clicks.size() == 2; }));
    EXPECT_GE(icon.clicks.back(), icon.clicks.front());
}

}  // namespace

}  // namespace velmo::desktop
