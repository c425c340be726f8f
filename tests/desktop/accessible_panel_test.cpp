#include "bus_program.h"
#include "panel_window_session.h"

#include <algorithm>
#include <sstream>

namespace velmo::desktop {

namespace {

/// With the bus that assistive programs use, on which is what they would be told.
class AccessiblePanel : public PanelWindowSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
        startSessionBus();
        startBeside({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately", "--a11y=1"});
        BusProgram bystander(busAddress());
        ASSERT_TRUE(eventually([&] { return bystander.isTaken("org.a11y.Bus"); }));
    }

    xcb_window_t itemTitled(const std::string& title) const {
        for (const auto window : x().children(bar())) {
            if (x().property(window, "_NET_WM_NAME") == title)
                return window;
        }
        return XCB_WINDOW_NONE;
    }
    std::string client(const std::vector<std::string>& arguments) const {
        std::vector<std::string> command = {"/usr/bin/python3",
                                            std::string(VELMO_CLIENTS) + "/accessible_tree.py", "velmo"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return outputOf(command, environment_);
    }
    /// "role: name" of everything in the window of that name that has a name, in the order of reading.
    std::vector<std::string> elementsOf(const std::string& windowName) const {
        std::vector<std::string> elements;
        std::istringstream lines(client({}));
        bool isInside = false;
        for (std::string line; std::getline(lines, line);) {
            const auto first = line.find('\t');
            const auto second = line.find('\t', first + 1);
            const std::string role = line.substr(first + 1, second - first - 1);
            const std::string name = line.substr(second + 1);
            if (line.starts_with("1\t"))
                isInside = name == windowName;
            if (isInside && !name.empty())
                elements.push_back(role + ": " + name);
        }
        return elements;
    }
    bool contains(const std::string& windowName, const std::string& element) const {
        const auto elements = elementsOf(windowName);
        return std::find(elements.begin(), elements.end(), element) != elements.end();
    }
    void activate(const std::string& name) const { client({name}); }
};

TEST_F(AccessiblePanel, NamesEachItemAndIsWorkedByAssistivePrograms) {
    startVelmoForPanels({{"rehideDelay", 30.0}});
    BusProgram program(busAddress());
    ASSERT_TRUE(eventually([&] { return program.isTaken("org.freedesktop.StatusNotifierWatcher"); }));
    program.addItem("/StatusNotifierItem", "network");
    program.setText("/StatusNotifierItem", "Title", "Network");
    program.registerItem("/StatusNotifierItem");
    ASSERT_TRUE(eventually([&] { return isOnScreen(itemTitled("Network")); }));
    const auto icon = itemTitled("Network");
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    openPanel();
    const std::vector<std::string> expected = {"frame: Hidden items", "push button: Network",
                                               "push button: Velmo Settings"};
    EXPECT_EQ(elementsOf("Hidden items"), expected);

    activate("Network");
    EXPECT_TRUE(eventually([&] { return !panel() && isOnScreen(icon); }));
    movePointer(farLeft, 300);
    openPanel();
    activate("Velmo Settings");
    EXPECT_TRUE(eventually([&] { return shown("Velmo Settings").has_value(); }));
    EXPECT_EQ(elementsOf("Velmo Settings").front(), "frame: Velmo Settings");
    EXPECT_TRUE(contains("Velmo Settings", "page tab: General"));
}

TEST_F(AccessiblePanel, SaysWhereNothingIsHidden) {
    startVelmoForPanels();
    openPanel();
    const std::vector<std::string> expected = {
        "frame: Hidden items",
        "label: No hidden items yet. ⌘-drag icons to the left of the divider to hide them."};
    EXPECT_EQ(elementsOf("Hidden items"), expected);
}

TEST_F(AccessiblePanel, CalendarHasAName) {
    startVelmoForPanels(
        {{"clockEnabled", true}, {"statusItemOrder", {"Velmo.Clock", "Velmo.Toggle", "Velmo.Divider"}}});
    ASSERT_TRUE(eventually([&] {
        const auto clock = x().windowTitled("Velmo.Clock");
        return clock && x().area(*clock)->width > 40;
    }));
    click(*x().windowTitled("Velmo.Clock"));
    ASSERT_TRUE(eventually([&] { return shown("Velmo.Popover").has_value(); }));
    EXPECT_EQ(elementsOf("Calendar").front(), "frame: Calendar");
}

}  // namespace

}  // namespace velmo::desktop
