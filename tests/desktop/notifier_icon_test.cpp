#include "bar_session.h"
#include "bus_program.h"

#include "linux/x11/status_item_window.h"
#include "linux/x11/window_capture.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr const char* itemObject = "/StatusNotifierItem";
constexpr double longLength = 10000;
constexpr double shortLength = 12;

/// An item of the bus left of a divider that may push it off the screen.
class NotifierIcons : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
        startBar({"Divider", "desktop_tests.hidden"});
        divider_ = std::make_unique<x11::StatusItemWindow>(*bar_, longLength);
        divider_->setAutosaveName("Divider");
        startNotifierTray();
        program_ = std::make_unique<BusProgram>(busAddress());
        ASSERT_TRUE(turnUntil([&] { return program_->isTaken("org.freedesktop.StatusNotifierWatcher"); }));
        program_->addItem(itemObject, "hidden");
        program_->registerItem(itemObject);
        ASSERT_TRUE(turnUntil([&] { return item() && item()->place(); }));
        turnFor(milliseconds(300));
        ASSERT_TRUE(isOffScreen());
    }

    void TearDown() override {
        divider_.reset();
        BarSession::TearDown();
        program_.reset();
    }

    x11::BarItem* item() const {
        for (auto* item : bar_->items()) {
            if (!item->isOurs())
                return item;
        }
        return nullptr;
    }

    bool isOffScreen() const { return item()->place()->x + item()->place()->width <= 0; }

    void turnFor(milliseconds time) {
        turnUntil([] { return false; }, time);
    }

    /// Changes the icon, and waits until that is known and has been dealt with.
    void changeIcon(std::uint32_t color) {
        const int asked = program_->callsOf("GetAll");
        program_->setProperty(itemObject, "IconPixmap", BusProgram::pixmaps({iconSide}, color));
        program_->emit(itemObject, "org.kde.StatusNotifierItem", "NewIcon");
        ASSERT_TRUE(turnUntil([&] { return program_->callsOf("GetAll") > asked; }));
        turnFor(milliseconds(200));
    }

    /// Sent to the server so far, with this question's own.
    unsigned requests() const { return xcb_no_operation(connection_->raw()).sequence; }

    std::uint32_t colorOnScreen() const {
        const auto area = areaOnScreen(*item());
        return x().pixel(area.midX(), area.midY());
    }

    std::unique_ptr<x11::StatusItemWindow> divider_;
    std::unique_ptr<BusProgram> program_;
};

TEST_F(NotifierIcons, OffTheScreenAreNotDrawnUntilTheyAreRevealed) {
    const unsigned before = requests();
    changeIcon(0xff00ff00);
    changeIcon(0xff0000ff);
    EXPECT_EQ(requests(), before + 1) << "none but the question";
    divider_->setLength(shortLength);
    ASSERT_TRUE(turnUntil([&] { return !isOffScreen(); }));
    EXPECT_EQ(colorOnScreen(), 0x0000ffU) << "from the first moment";
}

TEST_F(NotifierIcons, AreDrawnBeforeTheyComeOnTheScreen) {
    changeIcon(0xff0000ff);
    const auto place = *item()->place();
    const auto requestsFor = [&](int left) {
        const unsigned before = requests();
        item()->willMove({left, place.y, place.width, place.height});
        return requests() - before - 1;
    };
    EXPECT_EQ(requestsFor(-place.width), 0U) << "still beyond the edge";
    EXPECT_GT(requestsFor(100), 0U);
    EXPECT_EQ(requestsFor(100), 0U) << "once";
}

TEST_F(NotifierIcons, OffTheScreenArePicturedAsTheyAreNow) {
    x11::WindowCapture capture(*bar_);
    const auto color = [&] {
        std::optional<Bitmap> picture;
        const auto area = areaOnScreen(*item());
        capture.captureWindow(item()->window(), {area.width, area.height},
                              [&](std::optional<Bitmap> bitmap) { picture = std::move(bitmap); });
        EXPECT_TRUE(turnUntil([&] { return picture.has_value(); }));
        const auto middle =
            static_cast<std::size_t>(picture->height / 2 * picture->width + picture->width / 2);
        const auto* bytes = picture->pixels->data() + middle * 4;
        return static_cast<std::uint32_t>(bytes[2] << 16 | bytes[1] << 8 | bytes[0]);
    };
    EXPECT_EQ(color(), 0xff0000U);
    changeIcon(0xff00ff00);
    EXPECT_EQ(color(), 0x00ff00U);
}

TEST_F(NotifierIcons, OfOneNameAreNumberedAndAFreeNumberIsTakenAgain) {
    const auto identities = [&] {
        std::vector<std::string> all;
        for (const auto* item : bar_->items())
            all.push_back(item->identity());
        return all;
    };
    const auto add = [&](const std::string& place) {
        const auto known = bar_->items().size();
        program_->addItem(place, "same");
        program_->registerItem(place);
        EXPECT_TRUE(turnUntil([&] { return bar_->items().size() > known; }));
        return identities().back();
    };
    const std::string name = "desktop_tests.same";
    EXPECT_EQ(add("/First"), name);
    auto other = std::make_unique<BusProgram>(busAddress());
    other->addItem(itemObject, "same");
    other->registerItem(itemObject);
    ASSERT_TRUE(turnUntil([&] { return identities().back() == name + "#2"; }));
    EXPECT_EQ(add("/Third"), name + "#3");
    other.reset();
    ASSERT_TRUE(turnUntil([&] { return bar_->items().size() == 4; }));
    EXPECT_EQ(add("/Fourth"), name + "#2");
    EXPECT_EQ(add("/Fifth"), name + "#4");
}

}  // namespace

}  // namespace velmo::desktop
