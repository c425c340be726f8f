#include "menubar/control_item.h"

#include "menubar/divider_images.h"
#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class ControlItemTest : public testing::Test {
protected:
    using Journal = std::vector<std::string>;

    std::unique_ptr<ControlItem> make(ControlItem::Kind kind) {
        auto item = std::make_unique<ControlItem>(kind, "Test.Item", desktop_.platform());
        item->onClick = [this](const Event& event) { clicks_.push_back(event); };
        return item;
    }

    SimulatedStatusItem& statusItem() { return *desktop_.statusBar().item("Test.Item"); }

    SimulatedDesktop desktop_;
    std::vector<Event> clicks_;
};

using ToggleItem = ControlItemTest;
using Divider = ControlItemTest;

TEST_F(ControlItemTest, NumbersItsKinds) {
    EXPECT_EQ(static_cast<int>(ControlItem::Kind::toggle), 0);
    EXPECT_EQ(static_cast<int>(ControlItem::Kind::divider), 1);
}

TEST_F(ControlItemTest, BeginsCollapsedWithoutImageAndVisible) {
    const ControlItem item(ControlItem::Kind::divider, "Test.Item", desktop_.platform());
    EXPECT_EQ(item.kind(), ControlItem::Kind::divider);
    EXPECT_FALSE(item.isExpanded);
    EXPECT_FALSE(item.image);
    EXPECT_FALSE(item.onClick);
    EXPECT_TRUE(statusItem().isVisible());
    EXPECT_EQ(statusItem().autosaveName(), "Test.Item");
    EXPECT_EQ(statusItem().button()->image(), std::nullopt);
    EXPECT_TRUE(statusItem().button()->isEnabled());
}

TEST_F(ControlItemTest, IsVisibleEvenWhereTheSystemRemembersItOtherwise) {
    desktop_.statusBar().setHidesNewItems(true);
    const auto item = make(ControlItem::Kind::toggle);
    EXPECT_TRUE(statusItem().isVisible());
}

TEST_F(ControlItemTest, HasItsNameBeforeItIsShown) {
    desktop_.statusBar().beginJournal();
    const auto item = make(ControlItem::Kind::divider);
    EXPECT_EQ(desktop_.statusBar().journal(),
              (Journal{": name Test.Item", "Test.Item: visible", "Test.Item: length 12",
                       "Test.Item: no image", "Test.Item: enabled"}))
        << "A system may keep a place and whether it is shown by that name.";
}

TEST_F(ControlItemTest, AsksForTheReleaseOfEitherButton) {
    const auto item = make(ControlItem::Kind::toggle);
    EXPECT_EQ(statusItem().button()->actionMask(), 20U);
}

TEST_F(Divider, IsTwelvePointsLongAtFirst) {
    const auto item = make(ControlItem::Kind::divider);
    EXPECT_EQ(statusItem().length(), 12);
}

TEST_F(Divider, HidesByItsLengthAndComesBack) {
    const auto item = make(ControlItem::Kind::divider);
    item->image = dividerImage();
    item->isExpanded = true;
    item->update();
    EXPECT_EQ(statusItem().length(), 10000);
    EXPECT_EQ(statusItem().button()->image(), std::nullopt);
    EXPECT_FALSE(statusItem().button()->isEnabled());
    item->isExpanded = false;
    item->update();
    EXPECT_EQ(statusItem().length(), 12);
    EXPECT_EQ(statusItem().button()->image(), dividerImage());
    EXPECT_TRUE(statusItem().button()->isEnabled());
}

TEST_F(Divider, IsEmptyBeforeItIsLongAndShortBeforeItShows) {
    const auto item = make(ControlItem::Kind::divider);
    desktop_.statusBar().beginJournal();
    item->image = dividerImage();
    item->isExpanded = true;
    item->update();
    EXPECT_EQ(desktop_.statusBar().journal(),
              (Journal{"Test.Item: no image", "Test.Item: disabled", "Test.Item: length 10000"}));
    desktop_.statusBar().beginJournal();
    item->isExpanded = false;
    item->update();
    EXPECT_EQ(desktop_.statusBar().journal(),
              (Journal{"Test.Item: length 12", "Test.Item: image", "Test.Item: enabled"}));
}

TEST_F(Divider, ShowsNothingNewBeforeItIsUpdated) {
    const auto item = make(ControlItem::Kind::divider);
    item->image = dividerImage();
    item->isExpanded = true;
    EXPECT_EQ(statusItem().length(), 12);
    EXPECT_EQ(statusItem().button()->image(), std::nullopt);
    EXPECT_TRUE(statusItem().button()->isEnabled());
}

TEST_F(Divider, LosesItsImageWhereItIsTakenAway) {
    const auto item = make(ControlItem::Kind::divider);
    item->image = dividerImage();
    item->update();
    item->image.reset();
    item->update();
    EXPECT_EQ(statusItem().button()->image(), std::nullopt);
    EXPECT_TRUE(statusItem().button()->isEnabled());
}

TEST_F(ToggleItem, KeepsItsVariableLengthWhateverIsExpandedSays) {
    const auto item = make(ControlItem::Kind::toggle);
    item->image = dividerImage();
    for (const bool expanded : {true, false}) {
        item->isExpanded = expanded;
        item->update();
        EXPECT_EQ(statusItem().length(), -1);
        EXPECT_EQ(statusItem().button()->image(), dividerImage());
        EXPECT_TRUE(statusItem().button()->isEnabled());
    }
}

TEST_F(ControlItemTest, IsClickedByAReleaseAndNeverByAPress) {
    const auto item = make(ControlItem::Kind::toggle);
    std::int64_t press = 0;
    for (const auto mouseButton : {MouseButton::left, MouseButton::right}) {
        clicks_.clear();
        ++press;
        desktop_.press("Test.Item", mouseButton, modifier::option);
        EXPECT_TRUE(clicks_.empty());
        desktop_.release("Test.Item", mouseButton, modifier::option);
        const auto type = mouseButton == MouseButton::left ? EventType::leftMouseUp : EventType::rightMouseUp;
        const auto window = desktop_.statusBar().windowNumber(statusItem());
        EXPECT_EQ(clicks_, (std::vector{Event{type, modifier::option, 0, 0, window, 0, {}, press}}));
    }
}

TEST_F(ControlItemTest, IgnoresAnActionWithoutAnEvent) {
    const auto item = make(ControlItem::Kind::toggle);
    statusItem().button()->action()();
    EXPECT_TRUE(clicks_.empty());
}

TEST_F(ControlItemTest, BearsAClickThatNobodyWants) {
    const auto item = make(ControlItem::Kind::toggle);
    item->onClick = nullptr;
    EXPECT_TRUE(desktop_.click("Test.Item"));
}

TEST_F(ControlItemTest, IsNotCalledByALateClick) {
    auto item = make(ControlItem::Kind::toggle);
    const auto action = statusItem().button()->action();
    item.reset();
    desktop_.application().handle(Event{EventType::leftMouseUp}, action);
    EXPECT_TRUE(clicks_.empty());
}

TEST_F(ControlItemTest, MayEndInItsOwnClick) {
    auto item = make(ControlItem::Kind::toggle);
    int calls = 0;
    item->onClick = [&](const Event&) {
        item.reset();
        ++calls;
    };
    desktop_.click("Test.Item");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(desktop_.statusBar().item("Test.Item"), nullptr);
}

TEST_F(ControlItemTest, KnowsItsFrame) {
    const auto item = make(ControlItem::Kind::divider);
    EXPECT_EQ(item->screenFrame(), (Rect{1428, 874, 12, 26}));
    desktop_.screens().set({});
    EXPECT_EQ(item->screenFrame(), std::nullopt);
}

TEST_F(ControlItemTest, IsInertWithoutAButton) {
    desktop_.statusBar().setRefusesButtons(true);
    const auto item = make(ControlItem::Kind::divider);
    item->isExpanded = true;
    item->update();
    EXPECT_EQ(statusItem().length(), 12);
    EXPECT_EQ(item->screenFrame(), std::nullopt);
    desktop_.click("Test.Item");
    EXPECT_TRUE(clicks_.empty());
}

TEST(ClickTarget, HandsTheCurrentEventOn) {
    SimulatedApplication application;
    ClickTarget target(application);
    const Event event{EventType::rightMouseUp, modifier::shift};
    application.handle(event, [&target] { target.clicked(); });
    std::vector<Event> handled;
    target.handler = [&handled](const Event& received) { handled.push_back(received); };
    target.clicked();
    EXPECT_TRUE(handled.empty());
    application.handle(event, [&target] { target.clicked(); });
    EXPECT_EQ(handled, (std::vector{event}));
}

}  // namespace
}  // namespace velmo
