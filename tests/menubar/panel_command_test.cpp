#include "menubar/manager_test.h"

namespace velmo {
namespace {

class PanelCommand : public ManagerTest {
protected:
    PanelCommand() {
        desktop_.userDefaults().setBool(true, "showOnHover");
        start();
        desktop_.screenCapture().setGranted(false);
        manager_->onOpenSettings = [this](std::optional<SettingsTab> tab) {
            requests_.push_back(tab);
            accessRequestsSeen_ = desktop_.screenCapture().requestCount();
        };
    }

    /// True where the settings were opened once, on the panel tab, after one request for access.
    bool hasAsked() {
        const bool asked = requests_ == std::vector<std::optional<SettingsTab>>{SettingsTab::panel} &&
                           accessRequestsSeen_ == 1 && desktop_.screenCapture().requestCount() == 1;
        return asked && level() == RevealLevel::none;
    }

    std::vector<std::optional<SettingsTab>> requests_;
    std::size_t accessRequestsSeen_ = 0;
};

TEST_F(PanelCommand, AsksForAccessAndThenOpensThePanelTab) {
    manager_->togglePanel();
    EXPECT_TRUE(hasAsked());
}

TEST_F(PanelCommand, AsksForNothingWithAccess) {
    desktop_.screenCapture().setGranted(true);
    manager_->togglePanel();
    EXPECT_TRUE(requests_.empty());
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
}

TEST_F(PanelCommand, OpensTheSettingsEvenWhereAccessIsGivenOnAsking) {
    desktop_.screenCapture().setConsents(true);
    manager_->togglePanel();
    EXPECT_TRUE(hasAsked());
    manager_->togglePanel();
    EXPECT_TRUE(hasAsked());
}

TEST_F(PanelCommand, AsksAgainEachTime) {
    manager_->togglePanel();
    manager_->togglePanel();
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 2U);
    EXPECT_EQ(requests_.size(), 2U);
}

TEST_F(PanelCommand, AsksWhereNobodyOpensTheSettings) {
    manager_->onOpenSettings = nullptr;
    manager_->togglePanel();
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 1U);
}

TEST_F(PanelCommand, IsReachedFromTheMenu) {
    desktop_.menus().setScript([](SimulatedOpenMenu& menu) { menu.choose("Open Hidden Items Panel"); });
    desktop_.click(toggle, MouseButton::right);
    EXPECT_TRUE(hasAsked());
}

TEST_F(PanelCommand, IsReachedByAClickOnTheToggle) {
    clickToggle();
    reveal(RevealLevel::none);
    EXPECT_TRUE(requests_.empty());
    preferences_->clickAction.set(ClickAction::showPanel);
    clickToggle();
    EXPECT_TRUE(hasAsked());
}

TEST_F(PanelCommand, IsReachedByHovering) {
    preferences_->clickAction.set(ClickAction::showPanel);
    const Rect frame = *button(toggle).frameOnScreen();
    desktop_.movePointer({frame.midX(), frame.midY()});
    desktop_.advance(0.249);
    EXPECT_TRUE(requests_.empty());
    desktop_.advance(0.001);
    EXPECT_TRUE(hasAsked());
}

TEST_F(PanelCommand, IsReachedByItsShortcut) {
    preferences_->panelHotkey.set(HotkeyBinding{35, modifier::command, "⌘P"});
    desktop_.runLoop().runPosted();
    desktop_.hotKeys().press(35, 0x100);
    EXPECT_TRUE(requests_.empty());
    desktop_.runLoop().runPosted();
    EXPECT_TRUE(hasAsked());
}

TEST_F(PanelCommand, ToleratesThatTheSettingsEndTheManager) {
    manager_->onOpenSettings = [this](std::optional<SettingsTab>) { manager_.reset(); };
    preferences_->clickAction.set(ClickAction::showPanel);
    clickToggle();
    EXPECT_TRUE(desktop_.statusBar().items().empty());
}

}  // namespace
}  // namespace velmo
