#include "accessible_tree.h"
#include "built_files.h"
#include "bus_program.h"
#include "panel_window_session.h"

#include <map>
#include <optional>
#include <set>

namespace velmo::desktop {

namespace {

/// With the bus that assistive programs use, on which is what they would be told.
class AccessibleWindows : public PanelWindowSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startDesktop();
        tree_.emplace(environment_);
    }
    void TearDown() override {
        tree_.reset();
        PanelWindowSession::TearDown();
    }

    std::vector<std::string> namesIn(const std::string& windowName) const {
        return tree_->namesIn(windowName);
    }
    void activate(const std::string& name) const { tree_->activate(name); }

    std::optional<AccessibleTree> tree_;
};

TEST_F(AccessibleWindows, PanelNamesEachItemAndIsWorkedByAssistivePrograms) {
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
    openPanelWindow();
    const std::vector<std::string> expected = {"frame: Hidden items", "push button: Network",
                                               "push button: Velmo Settings"};
    EXPECT_EQ(namesIn("Hidden items"), expected);

    activate("Network");
    EXPECT_TRUE(eventually([&] { return !panelWindow() && isOnScreen(icon); }));
    EXPECT_TRUE(eventually([&] { return program.callsOf("Activate") == 1; }));
    movePointer(farLeft, 300);
    openPanelWindow();
    activate("Velmo Settings");
    EXPECT_TRUE(eventually([&] { return shown("Velmo Settings").has_value(); }));
    const auto names = namesIn("Velmo Settings");
    ASSERT_FALSE(names.empty());
    EXPECT_EQ(names.front(), "frame: Velmo Settings");
    EXPECT_TRUE(tree_->element("Velmo Settings", "page tab: General"));
}

TEST_F(AccessibleWindows, PanelSaysWhereNothingIsHidden) {
    startVelmoForPanels();
    openPanelWindow();
    const std::vector<std::string> expected = {
        "frame: Hidden items",
        "label: No hidden items yet. ⌘-drag icons to the left of the divider to hide them."};
    EXPECT_EQ(namesIn("Hidden items"), expected);
}

TEST_F(AccessibleWindows, CalendarHasAName) {
    startVelmoForPanels(
        {{"clockEnabled", true}, {"statusItemOrder", {"Velmo.Clock", "Velmo.Toggle", "Velmo.Divider"}}});
    ASSERT_TRUE(eventually([&] {
        const auto clock = x().windowTitled("Velmo.Clock");
        return clock && x().area(*clock)->width > 40;
    }));
    click(*x().windowTitled("Velmo.Clock"));
    ASSERT_TRUE(eventually([&] { return shown("Velmo.Popover").has_value(); }));
    const auto names = namesIn("Calendar");
    ASSERT_FALSE(names.empty());
    EXPECT_EQ(names.front(), "frame: Calendar");
}

TEST_F(AccessibleWindows, EachControlOfTheSettingsHasANameOfItsOwn) {
    startVelmoForPanels({{"hotkey", {{"data", R"({"keyCode":40,"modifiers":1179648,"display":"⇧⌘K"})"}}}});
    outputOf({velmoProgram}, environment_);
    ASSERT_TRUE(eventually([&] { return shown("Velmo Settings").has_value(); }));
    const std::map<std::string, std::vector<std::string>> expected = {
        {"General",
         {"combo box: Icon", "radio button: Reveal items in the menu bar",
          "radio button: Open the hidden items panel", "check box: Launch at login"}},
        {"Hiding",
         {"check box: Hide items again automatically", "slider: After",
          "check box: Hide when clicking outside the menu bar",
          "check box: Show hidden items when hovering over the toggle",
          "check box: Show or hide by scrolling on the menu bar",
          "check box: Enable an always-hidden section", "push button: Show or hide items, ⇧⌘K",
          "push button: Show or hide items, Remove shortcut",
          "push button: Open the hidden items panel, Record Shortcut"}},
        {"Clock",
         {"check box: Show a clock and calendar in the menu bar", "combo box: Preset", "text: Pattern",
          "push button: System Clock Options…"}},
        {"Panel",
         {"push button: Open the panel now", "check box: Refresh the pictures when opening the panel",
          "push button: Screen Recording, Open Settings", "push button: Accessibility, Open Settings"}},
        {"Spacing",
         {"radio button: System default", "radio button: Compact", "radio button: Tight",
          "push button: Log Out…"}}};
    std::set<std::string> known;
    for (const char* tab : {"General", "Hiding", "Clock", "Panel", "Spacing"}) {
        activate(tab);
        std::vector<std::string> controls;
        ASSERT_TRUE(eventually([&] {
            controls.clear();
            for (const auto& control : tree_->controlsOf("Velmo Settings"))
                controls.push_back(control.roleAndName());
            // Those of the tabs that were open before are still told of, as hidden ones.
            std::erase_if(controls, [&](const auto& control) { return known.contains(control); });
            return !controls.empty();
        })) << tab;
        EXPECT_EQ(controls, expected.at(tab)) << tab;
        known.insert(controls.begin(), controls.end());
    }
}

}  // namespace

}  // namespace velmo::desktop
