#include "async/sleep.h"
#include "hidden_items/capture_images.h"
#include "hidden_items/classify_hidden_items.h"
#include "hidden_items/menu_bar_items.h"
#include "menubar/menu_bar_manager.h"
#include "platform/screen_capture.h"
#include "platform/window_factory.h"

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

bool contains(const std::vector<MenuBarItemInfo>& items, const MenuBarItemInfo& wanted) {
    return std::any_of(items.begin(), items.end(),
                       [&wanted](const MenuBarItemInfo& item) { return item.windowID == wanted.windowID; });
}

}  // namespace

void MenuBarManager::scheduleSnapshot(Seconds delay) {
    if (!platform_.screenCapture.preflightAccess())
        return;
    snapshotTask_.cancel();
    snapshotTask_ = tasks_.start(takeSnapshotAfter(delay));
}

Task<> MenuBarManager::takeSnapshotAfter(Seconds delay) {
    const bool isWanted = co_await Sleep(platform_.runLoop, delay);
    if (!isWanted || revealLevel_ == RevealLevel::none)
        co_return;
    co_await takeSnapshot();
    // From now on the panel can be shown at once.
    if (isPanelInUse())
        platform_.windows.prepare();
}

Task<> MenuBarManager::takeSnapshot() {
    if (revealLevel_ == RevealLevel::none)
        co_return;
    const auto screen = menuBarScreen();
    const auto divider = frameOnScreen(hiddenDivider_);
    if (!screen || !divider)
        co_return;
    const auto items = currentMenuBarItems(*screen, ownItemRanges(), platform_);
    std::optional<Rect> alwaysHiddenDivider;
    if (preferences_->alwaysHiddenEnabled.value() && revealLevel_ == RevealLevel::all)
        alwaysHiddenDivider = frameOnScreen(alwaysHiddenDivider_);
    HiddenItems found = classifyHiddenItems(items, *divider, alwaysHiddenDivider);

    std::vector<MenuBarItemInfo> pictured = found.hidden;
    pictured.insert(pictured.end(), found.alwaysHidden.begin(), found.alwaysHidden.end());
    auto images =
        co_await captureImages(std::move(pictured), screen->backingScaleFactor, platform_.screenCapture);

    // Pictures of windows that were not pictured this time stay: one that comes back has its own at once. A
    // new window takes a few kilobytes more, for as long as the program runs.
    images.merge(std::exchange(snapshot_.images, {}));
    if (!alwaysHiddenDivider) {
        // That section is off the screen: what was known of it still holds, but for what the user has moved.
        found.alwaysHidden = std::exchange(snapshot_.alwaysHidden, {});
        std::erase_if(found.alwaysHidden, [&](const auto& item) { return contains(found.hidden, item); });
    }
    snapshot_ = {std::move(found.hidden), std::move(found.alwaysHidden), std::move(images),
                 platform_.runLoop.now()};
}

}  // namespace velmo
