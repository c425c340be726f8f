#include "settings/settings_window_controller.h"

#include "platform/window_factory.h"
#include "preferences/sandbox.h"

namespace velmo {

SettingsWindowController::SettingsWindowController(const std::shared_ptr<Preferences>& preferences,
                                                   std::function<void()> onOpenPanel,
                                                   const Platform& platform)
    : loginItem_(platform.loginService),
      view_(preferences, loginItem_, state_, std::move(onOpenPanel), !isSandboxed(platform.processInfo),
            platform),
      window_(platform.windows.makeWindow(view_.body())) {
    if (window_)
        setUpWindow();
    view_.onChange = lifetime_.guard([this] { viewChanged(); });
}

void SettingsWindowController::setUpWindow() {
    window_->setTitle("Velmo Settings");
    window_->setStyleMask(window_style::titled | window_style::closable | window_style::miniaturizable);
    window_->setReleasedWhenClosed(false);
    window_->setOnClose(lifetime_.guard([this] { view_.setShown(false); }));
    // A remembered place wins over the middle.
    window_->center();
    window_->setFrameAutosaveName("Velmo.SettingsWindow");
}

void SettingsWindowController::show(std::optional<SettingsTab> tab) {
    if (tab)
        state_.selectedTab.set(*tab);
    loginItem_.refresh();
    if (!window_)
        return;
    view_.setShown(true);
    describe();
    window_->makeKeyAndOrderFront();
}

void SettingsWindowController::viewChanged() {
    if (window_ && window_->isVisible())
        describe();
}

void SettingsWindowController::describe() {
    window_->setContent(view_.body());
}

}  // namespace velmo
