#include "macos/desktop/macos_status_bar.h"
#include "macos/foundation/ns_user_defaults.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/record_class.h"
#include "platform/macos/macos_test.h"

#include <memory>
#include <string>
#include <vector>

namespace velmo::macos {
namespace {

using doubles::member;
using doubles::numberMember;

class NotingMenuItem : public MenuItem {
public:
    NotingMenuItem(std::string title, std::string key, std::vector<std::string>& chosen)
        : MenuItem(std::move(title), std::move(key)), chosen_(chosen) {}
    void performAction() override { chosen_.push_back(title()); }

private:
    std::vector<std::string>& chosen_;
};

class NotingTrackingOwner : public TrackingAreaOwner {
public:
    void mouseEnteredWith(const Event& event) override { entered.push_back(event); }
    void mouseExitedWith(const Event& event) override { exited.push_back(event); }

    std::vector<Event> entered;
    std::vector<Event> exited;
};

class MacosStatusItemTest : public MacosTest {
protected:
    MacosStatusItemTest() { system.screens = {doubles::makeScreen(screen)}; }

    std::string text(const char* name) const { return as<NSString>(member(shownButton, name)).text(); }

    const Screen screen{
        .frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 876}, .backingScaleFactor = 2};
    MacosStatusBar bar;
    std::unique_ptr<StatusItem> item = bar.makeStatusItem(12);
    StatusBarButton& button = *item->button();
    Object shownItem = system.statusItems.back();
    Object shownButton = member(shownItem, "button");
};

TEST_F(MacosStatusItemTest, StandsInTheBarUntilItGoes) {
    EXPECT_EQ(bar.thickness(), 24);
    EXPECT_EQ(item->length(), 12);
    item->setLength(10000);
    EXPECT_EQ(numberMember(shownItem, "length"), 10000);
    item->setAutosaveName("Velmo.Divider");
    EXPECT_EQ(as<NSString>(member(shownItem, "autosaveName")).text(), "Velmo.Divider");
    EXPECT_TRUE(item->isVisible());
    item->setVisible(false);
    EXPECT_FALSE(item->isVisible());
    item.reset();
    EXPECT_TRUE(system.statusItems.empty());
}

class KeptPositionTest : public MacosStatusItemTest {
protected:
    KeptPositionTest() { item->setAutosaveName("Velmo.Test"); }
    ~KeptPositionTest() override {
        defaults.removeObject(key);
        defaults.removeObject(NSString::from("keptPosition Velmo.Test"));
    }

    double place() const { return numberMember(system.statusItems.back(), "position"); }

    const NSUserDefaults defaults = NSUserDefaults::standard();
    const NSString key = NSString::from("NSStatusItem Preferred Position Velmo.Test");
};

TEST_F(KeptPositionTest, AnItemThatWasHiddenComesBackToItsPlace) {
    defaults.setDouble(417, key);
    item->setVisible(false);
    EXPECT_TRUE(runUntil([&] { return !defaults.objectForKey(key); }));
    item->setVisible(true);
    EXPECT_EQ(place(), 417);
}

TEST_F(KeptPositionTest, AnItemThatWasRemovedComesBackToItsPlace) {
    {
        const AutoreleasePool inner;
        const auto other = bar.makeStatusItem(12);
        other->setAutosaveName("Velmo.Test");
        defaults.setDouble(417, key);
    }
    EXPECT_FALSE(defaults.objectForKey(key));
    const auto again = bar.makeStatusItem(12);
    again->setAutosaveName("Velmo.Test");
    EXPECT_EQ(place(), 417);
}

TEST_F(KeptPositionTest, AnItemThatIsRemovedWhileItIsHiddenComesBackToItsPlace) {
    defaults.setDouble(417, key);
    item->setVisible(false);
    EXPECT_TRUE(runUntil([&] { return !defaults.objectForKey(key); }));
    item.reset();
    const auto again = bar.makeStatusItem(12);
    again->setAutosaveName("Velmo.Test");
    EXPECT_EQ(place(), 417);
}

TEST_F(KeptPositionTest, NoPlaceIsMadeUpAndTheSystemsOwnStays) {
    item->setVisible(false);
    item->setVisible(true);
    EXPECT_FALSE(defaults.objectForKey(key));
    defaults.setDouble(417, key);
    item->setVisible(false);
    defaults.setDouble(30, key);
    item->setVisible(true);
    EXPECT_EQ(place(), 30);
}

TEST_F(MacosStatusItemTest, HasNoButtonWhereTheSystemGivesNone) {
    system.givesButtons = false;
    EXPECT_EQ(bar.makeStatusItem(StatusItem::variableLength)->button(), nullptr);
}

TEST_F(MacosStatusItemTest, ShowsWhatItIsGiven) {
    button.setTitle("12:00 ⌘");
    button.setToolTip("velmo clock");
    button.setEnabled(false);
    button.sendActionOn(maskOf(EventType::leftMouseUp) | maskOf(EventType::rightMouseUp));
    EXPECT_EQ(text("title"), "12:00 ⌘");
    EXPECT_EQ(text("toolTip"), "velmo clock");
    EXPECT_EQ(numberMember(shownButton, "isEnabled"), 0);
    EXPECT_EQ(numberMember(shownButton, "mask"), 20);
    button.setFont({.size = 13, .weight = FontWeight::regular, .hasMonospacedDigits = true});
    EXPECT_EQ(as<NSString>(member(member(shownButton, "font"), "kind")).text(), "digits");
    EXPECT_EQ(numberMember(member(shownButton, "font"), "size"), 13);
    button.setImage(Image{.content = Symbol{"chevron.left", 12, FontWeight::semibold}});
    EXPECT_EQ(as<NSString>(member(member(shownButton, "image"), "symbol")).text(), "chevron.left");
    button.setImage(std::nullopt);
    EXPECT_EQ(text("image"), "none");
}

TEST_F(MacosStatusItemTest, RunsItsActionWhenItIsClickedUntilItGoes) {
    doubles::click(shownButton, {.type = EventType::leftMouseUp});
    int clicks = 0;
    button.setAction([&] { ++clicks; });
    EXPECT_EQ(clicks, 0);
    doubles::click(shownButton, {.type = EventType::leftMouseUp});
    EXPECT_EQ(clicks, 1);
    item.reset();
    doubles::click(shownButton, {.type = EventType::leftMouseUp});
    EXPECT_EQ(clicks, 1);
}

TEST_F(MacosStatusItemTest, LetsAnActionReplaceItself) {
    std::vector<int> done;
    button.setAction([&] {
        button.setAction([&] { done.push_back(2); });
        done.push_back(1);
    });
    doubles::click(shownButton, {.type = EventType::leftMouseUp});
    doubles::click(shownButton, {.type = EventType::leftMouseUp});
    EXPECT_EQ(done, (std::vector{1, 2}));
}

TEST_F(MacosStatusItemTest, KnowsWhereItStands) {
    EXPECT_EQ(button.size(), (Size{30, 22}));
    EXPECT_EQ(button.frameOnScreen(), (Rect{1001, 802, 30, 22}));
    EXPECT_EQ(button.windowNumber(), 77);
    EXPECT_EQ(button.screen(), screen);
}

TEST_F(MacosStatusItemTest, StandsNowhereWithoutAWindow) {
    system.buttonsHaveWindows = false;
    EXPECT_EQ(button.frameOnScreen(), std::nullopt);
    EXPECT_EQ(button.windowNumber(), 0);
    EXPECT_EQ(button.screen(), std::nullopt);
}

TEST_F(MacosStatusItemTest, ShowsAMenuAndPerformsWhatIsChosen) {
    std::vector<std::string> chosen;
    const Menu menu{{std::make_shared<NotingMenuItem>("Hide Items", "", chosen), nullptr,
                     std::make_shared<NotingMenuItem>("Quit Velmo", "q", chosen)}};
    system.whileMenuIsOpen = [&] { doubles::choose(system.shownMenus.back().items[2]); };
    button.popUp(menu, {0, 26});
    ASSERT_EQ(system.shownMenus.size(), 1U);
    const auto& shown = system.shownMenus.back();
    EXPECT_EQ(shown.location, (Point{0, 26}));
    EXPECT_TRUE(shown.view == shownButton);
    ASSERT_EQ(shown.items.size(), 3U);
    const auto title = [&](std::size_t index) {
        return Message<"NSMenuItem", false, "title", NSString>::send(shown.items[index].get()).text();
    };
    const auto key = [&](std::size_t index) {
        return Message<"NSMenuItem", false, "keyEquivalent", NSString>::send(shown.items[index].get()).text();
    };
    EXPECT_EQ(title(0), "Hide Items");
    EXPECT_EQ(key(0), "");
    EXPECT_TRUE((Message<"NSMenuItem", false, "isSeparatorItem", bool>::send(shown.items[1].get())));
    EXPECT_EQ(title(2), "Quit Velmo");
    EXPECT_EQ(key(2), "q");
    EXPECT_EQ(chosen, std::vector<std::string>{"Quit Velmo"});
}

TEST_F(MacosStatusItemTest, PerformsWhatTheSystemSaysOnlyAfterTheMenuHasClosed) {
    std::vector<std::string> chosen;
    button.popUp(Menu{{std::make_shared<NotingMenuItem>("Hide Items", "", chosen)}}, {0, 26});
    doubles::choose(system.shownMenus.back().items[0]);
    EXPECT_EQ(chosen, std::vector<std::string>{"Hide Items"});
}

TEST_F(MacosStatusItemTest, LetsAMenuItemTakeTheStatusItemAway) {
    class Removing : public MenuItem {
    public:
        explicit Removing(std::unique_ptr<StatusItem>& removed) : MenuItem("Hide", ""), removed_(removed) {}
        void performAction() override { removed_.reset(); }

    private:
        std::unique_ptr<StatusItem>& removed_;
    };
    const auto removing = std::make_shared<Removing>(item);
    system.whileMenuIsOpen = [&] {
        const auto holders = removing.use_count();
        doubles::choose(system.shownMenus.back().items[0]);
        // The menu itself is there until it has closed.
        EXPECT_EQ(removing.use_count(), holders);
    };
    button.popUp(Menu{{removing}}, {0, 26});
    EXPECT_EQ(item, nullptr);
    EXPECT_TRUE(system.statusItems.empty());
    EXPECT_EQ(removing.use_count(), 1);
}

TEST_F(MacosStatusItemTest, CountsFromTheTopAlsoWhereTheSystemCountsFromTheBottom) {
    system.buttonsAreFlipped = false;
    button.popUp(Menu{}, {3, 26});
    EXPECT_EQ(system.shownMenus.back().location, (Point{3, -4}));
}

TEST_F(MacosStatusItemTest, TracksThePointerUntilTheAreaGoes) {
    NotingTrackingOwner owner;
    auto area = button.addTrackingArea(
        {}, tracking::mouseEnteredAndExited | tracking::activeAlways | tracking::inVisibleRect, &owner);
    ASSERT_EQ(system.trackingAreas.size(), 1U);
    const Object shownArea = system.trackingAreas.front();
    EXPECT_EQ((Message<"NSTrackingArea", false, "options", std::uint64_t>::send(shownArea.get())), 641U);
    const auto shownOwner = Message<"NSTrackingArea", false, "owner", Object>::send(shownArea.get());
    const NSEvent enters = doubles::makeEvent({.type = EventType::mouseEntered, .windowNumber = 77});
    Message<"NSResponder", false, "mouseEntered:", void, NSEvent>::send(shownOwner.get(), enters);
    ASSERT_EQ(owner.entered.size(), 1U);
    EXPECT_EQ(owner.entered[0].type, EventType::mouseEntered);
    EXPECT_EQ(owner.entered[0].windowNumber, 77);
    EXPECT_TRUE(owner.exited.empty());
    Message<"NSResponder", false, "mouseExited:", void, NSEvent>::send(
        shownOwner.get(), doubles::makeEvent({.type = EventType::mouseExited}));
    EXPECT_EQ(owner.exited.size(), 1U);
    area.reset();
    EXPECT_TRUE(system.trackingAreas.empty());
    Message<"NSResponder", false, "mouseEntered:", void, NSEvent>::send(shownOwner.get(), enters);
    EXPECT_EQ(owner.entered.size(), 1U);
}

}  // namespace
}  // namespace velmo::macos
