#include "accessible_tree.h"
#include "built_files.h"
#include "bus_program.h"
#include "session_bus_desktop.h"
#include "tray_client.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

namespace velmo::desktop {

namespace {

constexpr const char* barName = "Velmo menu bar";

/// The bar as assistive programs have it.
class AccessibleBarItems : public SessionBusDesktop {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startDesktop();
        writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}});
    }
    void TearDown() override {
        tree_.reset();
        SessionBusDesktop::TearDown();
    }

    void assist() { tree_.emplace(environment_); }
    bool hasToolkit() {
        std::ifstream file("/proc/" + std::to_string(velmo().id()) + "/maps");
        return std::string(std::istreambuf_iterator<char>(file), {}).find("velmo-qt.so") != std::string::npos;
    }
    bool tellsOf(const std::vector<std::string>& names) const {
        return eventually([&] { return tree_->namesIn(barName) == names; }, milliseconds(8000));
    }

    /// Lines that the listener has written.
    std::ptrdiff_t eventsHeard() const {
        std::ifstream file(home_ / "events");
        return std::count(std::istreambuf_iterator<char>(file), {}, '\n');
    }

    std::optional<AccessibleTree> tree_;
};

TEST_F(AccessibleBarItems, AreToldWithNamesAndPlacesAndPressed) {
    assist();
    startVelmoOnBus();
    ASSERT_TRUE(tellsOf({"frame: Velmo menu bar", "push button: Velmo"}));
    const auto told = *tree_->element(barName, "push button: Velmo");
    EXPECT_EQ(told.place, x().area(toggle()));
    EXPECT_EQ(told.description.find("click to show or hide"), 0U) << told.description;
    EXPECT_EQ(tree_->elementsOf(barName).front().place, x().area(bar()));

    tree_->activate("Velmo");
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_TRUE(tellsOf({"frame: Velmo menu bar", "push button: Velmo divider", "push button: Velmo"}));
    tree_->activate("Velmo");
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    EXPECT_TRUE(tellsOf({"frame: Velmo menu bar", "push button: Velmo"}));
}

TEST_F(AccessibleBarItems, OfOtherProgramsAreToldAndPressed) {
    assist();
    startVelmoOnBus();
    const auto program = programWithItem("Network");
    untilShown("Network");
    TrayClient client(environment_.at("DISPLAY"));
    const auto icon = client.makeIcon("keyboard");
    const std::string title = "Keyboard layout";
    xcb_change_property(client.x().raw(), XCB_PROP_MODE_REPLACE, icon, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(title.size()), title.data());
    client.dock(icon);
    EXPECT_TRUE(tellsOf({"frame: Velmo menu bar", "push button: Keyboard layout", "push button: Network",
                         "push button: Velmo"}));
    EXPECT_EQ(tree_->element(barName, "push button: Network")->place, x().area(itemTitled("Network")));

    tree_->activate("Network");
    EXPECT_TRUE(eventually([&] { return program->callsOf("Activate") == 1; }));
    const auto calls = program->calls();
    const auto token = std::find_if(calls.begin(), calls.end(), [](const auto& call) {
        return call.starts_with("ProvideXdgActivationToken ");
    });
    ASSERT_NE(token, calls.end());
    EXPECT_EQ(token->find("_TIME0"), std::string::npos) << *token << ", which asks not to come to the front";
    tree_->activate("Keyboard layout");
    const auto place = *x().area(icon);
    EXPECT_TRUE(eventually([&] { return x().pointer() == std::pair(place.midX(), place.midY()); }))
        << "it is clicked as by hand";

    program->setText(itemPath, "Title", "No network");
    program->emit(itemPath, itemInterface, "NewTitle");
    client.destroy(icon);
    EXPECT_TRUE(tellsOf({"frame: Velmo menu bar", "push button: No network", "push button: Velmo"}));
}

TEST_F(AccessibleBarItems, AreToldAnewInAnotherOrder) {
    assist();
    startVelmoOnBus();
    TrayClient client(environment_.at("DISPLAY"));
    std::vector<xcb_window_t> icons;
    for (const auto* name : {"one", "two"}) {
        const auto icon = client.makeIcon(name);
        xcb_change_property(client.x().raw(), XCB_PROP_MODE_REPLACE, icon, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                            8, 3, name);
        client.dock(icon);
        ASSERT_TRUE(eventually([&] { return isOnScreen(icon); }));
        icons.push_back(icon);
    }
    const std::string bar = "frame: Velmo menu bar";
    const std::string toggle = "push button: Velmo";
    ASSERT_TRUE(tellsOf({bar, "push button: two", "push button: one", toggle}));
    const auto listener = run({"/usr/bin/python3", std::string(clientScripts) + "/accessible_events.py",
                               home_ / "events", barName});
    ASSERT_TRUE(eventually([&] { return eventsHeard() == 1; })) << "it listens";
    for (const bool isBack : {false, true}) {
        const auto place = *x().area(icons[0]);
        const auto heard = eventsHeard();
        movePointer(place.midX(), place.midY());
        xdotool({"keydown", "Super_L", "mousedown", "1"});
        for (const int by : {18, 36})
            movePointer(place.midX() + (isBack ? by : -by), place.midY());
        xdotool({"mouseup", "1", "keyup", "Super_L"});
        EXPECT_TRUE(eventually([&] { return eventsHeard() > heard; })) << isBack;
        const std::string first = isBack ? "two" : "one";
        const std::string second = isBack ? "one" : "two";
        EXPECT_TRUE(tellsOf({bar, "push button: " + first, "push button: " + second, toggle}));
    }
}

TEST_F(AccessibleBarItems, AreToldFromThenOnThatSomebodyAssists) {
    startVelmoOnBus();
    EXPECT_TRUE(stays([&] { return !hasToolkit(); }, milliseconds(1000))) << "nothing is loaded for nobody";
    assist();
    EXPECT_TRUE(eventually([&] { return hasToolkit(); }));
    EXPECT_TRUE(tellsOf({"frame: Velmo menu bar", "push button: Velmo"}));
}

}  // namespace

}  // namespace velmo::desktop
