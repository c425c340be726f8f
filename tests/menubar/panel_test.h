#pragma once

#include "menubar/manager_test.h"
#include "views/view_search.h"

namespace velmo {

/// The manager with access to pictures, and with items of other applications: "shown" right of the divider,
/// "h1" and "h2" left of it, and "a1", "a2" and "a3" left of the always-hidden divider. All are 24 points
/// wide, and their names are their titles.
class PanelTest : public ManagerTest {
protected:
    PanelTest() {
        desktop_.screenCapture().setGranted(true);
        desktop_.userDefaults().setBool(true, "alwaysHiddenEnabled");
        // Only the user's own actions are to hide.
        desktop_.userDefaults().setBool(false, "autoRehide");
    }

    void start() {
        ManagerTest::start();
        auto& bar = desktop_.statusBar();
        for (const char* name : {"shown", "h2", "h1", "a3", "a2", "a1"})
            bar.addOther({name, 7, "Other", name, 24});
        bar.moveRightOf(hiddenDivider, "shown");
        bar.moveRightOf(alwaysHiddenDivider, "h2");
        bar.moveRightOf(alwaysHiddenDivider, "h1");
        manager_->onOpenSettings = [this](std::optional<SettingsTab> tab) { settings_.push_back(tab); };
        shareAll();
    }
    /// Lets every item be pictured.
    void shareAll() {
        ScreenCapture::WindowNumbers numbers;
        for (const auto& slot : desktop_.statusBar().slots())
            numbers.push_back(static_cast<std::uint32_t>(slot->windowNumber));
        desktop_.screenCapture().setShareableWindows(numbers);
    }

    std::uint32_t windowOf(const char* name) {
        return static_cast<std::uint32_t>(desktop_.statusBar().slot(name)->windowNumber);
    }
    Rect frameOf(const char* name) { return *desktop_.statusBar().slot(name)->frame; }

    using Names = std::vector<std::string>;
    static Names namesOf(const std::vector<MenuBarItemInfo>& items) {
        Names names;
        for (const MenuBarItemInfo& item : items)
            names.push_back(item.title.value_or(""));
        return names;
    }
    Names hiddenNames() { return namesOf(manager_->snapshot().hidden); }
    Names alwaysHiddenNames() { return namesOf(manager_->snapshot().alwaysHidden); }
    std::size_t pictureCount() { return desktop_.screenCapture().requests().size(); }

    bool isPanelVisible() { return desktop_.windows().visiblePanel() != nullptr; }
    const View& panelContent() { return desktop_.windows().panels().front()->content(); }
    /// Brings about a snapshot of both sections, with everything hidden again.
    void takeSnapshot() {
        manager_->toggleAlwaysHidden();
        desktop_.advance(0.4);
        manager_->toggleAlwaysHidden();
        ASSERT_EQ(hiddenNames(), (Names{"h1", "h2"}));
        ASSERT_EQ(alwaysHiddenNames(), (Names{"a1", "a2", "a3"}));
    }
    /// Opens the panel from a fresh snapshot.
    void openPanel() {
        takeSnapshot();
        manager_->togglePanel();
        desktop_.runLoop().runPosted();
        ASSERT_TRUE(isPanelVisible());
    }

    std::vector<std::optional<SettingsTab>> settings_;
};

}  // namespace velmo
