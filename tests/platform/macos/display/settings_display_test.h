#pragma once

#include "macos/appkit/ns_pop_up_button.h"
#include "macos/appkit/ns_toolbar.h"
#include "platform/macos/display/program_display_test.h"

#include <functional>
#include <string>
#include <vector>

namespace velmo::macos {

/// The settings, as the program opens them.
class SettingsDisplayStage : public ProgramDisplayStage {
public:
    /// Runs the program for the first time, which opens the settings, and the function.
    void runSettings(const std::function<void()>& function);

    static std::vector<NSToolbarItem> tabsOf(const NSWindow& window);
    static std::string titleOf(const NSToolbarItem& tab);
    /// Its identifier.
    static std::string chosenTabOf(const NSWindow& window);
    std::vector<NSToolbarItem> tabs() const { return tabsOf(window); }
    /// As a click on the tab does.
    NSView open(std::size_t tab) const;
    static void click(const NSToolbarItem& tab);
    NSView page() const { return contentOf(window); }
    /// With ⌘, as the main menu sees it. False where it has no such key.
    bool pressKey(const char* key) const;
    static void choose(const NSPopUpButton& button, int index);

    NSWindow window;
};

using SettingsDisplayTest = StageTest<SettingsDisplayStage>;

}  // namespace velmo::macos
