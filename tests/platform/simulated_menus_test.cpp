#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class Entry : public MenuItem {
public:
    Entry(const std::string& title, std::string& performed) : MenuItem(title, ""), performed_(performed) {}
    void performAction() override { performed_ += title(); }

private:
    std::string& performed_;
};

class SimulatedMenusTest : public testing::Test {
protected:
    SimulatedMenusTest() {
        item_->setAutosaveName("item");
        menu_.items = {std::make_shared<Entry>("a", performed_), nullptr,
                       std::make_shared<Entry>("b", performed_), std::make_shared<Entry>("b", performed_)};
    }

    void popUp() { item_->button()->popUp(menu_, {3, 30}); }

    SimulatedDesktop desktop_;
    std::unique_ptr<StatusItem> item_ = desktop_.statusBar().makeStatusItem(20);
    std::string performed_;
    Menu menu_;
};

TEST_F(SimulatedMenusTest, CloseAtOnceWhereNobodyLooksAtThem) {
    popUp();
    EXPECT_EQ(performed_, "");
    EXPECT_EQ(desktop_.menus().shownCount(), 1U);
    EXPECT_EQ(desktop_.menus().openCount(), 0U);
}

TEST_F(SimulatedMenusTest, TellWhatTheyShowAndWhere) {
    std::vector<std::string> titles;
    desktop_.menus().setScript([&](SimulatedOpenMenu& menu) {
        titles = menu.titles();
        EXPECT_EQ(menu.itemName(), "item");
        EXPECT_EQ(menu.location(), (Point{3, 30}));
        EXPECT_EQ(desktop_.menus().openCount(), 1U);
    });
    popUp();
    EXPECT_EQ(titles, (std::vector<std::string>{"a", "-", "b", "b"}));
}

TEST_F(SimulatedMenusTest, PerformTheChoiceOnceTheyHaveClosed) {
    desktop_.menus().setScript([this](SimulatedOpenMenu& menu) {
        EXPECT_FALSE(menu.choose("c"));
        EXPECT_FALSE(menu.choose("-"));
        EXPECT_TRUE(menu.choose("b"));
        EXPECT_EQ(performed_, "");
    });
    popUp();
    EXPECT_EQ(performed_, "b");
}

TEST_F(SimulatedMenusTest, LetTimePassWhileTheyAreOpen) {
    bool fired = false;
    desktop_.runLoop().schedule(3, [&fired] { fired = true; });
    desktop_.menus().setScript([this](SimulatedOpenMenu&) { desktop_.advance(3); });
    popUp();
    EXPECT_TRUE(fired);
}

TEST_F(SimulatedMenusTest, OutliveTheirItem) {
    desktop_.menus().setScript([this](SimulatedOpenMenu& menu) {
        item_.reset();
        menu.choose("a");
    });
    popUp();
    EXPECT_EQ(performed_, "a");
}

TEST_F(SimulatedMenusTest, OpenAtButtonsThatKnowTheirSize) {
    EXPECT_EQ(item_->button()->size(), (Size{20, 26}));
    item_->setLength(12);
    desktop_.statusBar().setThickness(37);
    EXPECT_EQ(item_->button()->size(), (Size{12, 37}));
}

}  // namespace
}  // namespace velmo
