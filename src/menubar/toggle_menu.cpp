#include "menubar/closure_menu_item.h"
#include "menubar/menu_bar_manager.h"

namespace velmo {

namespace {

/// Points between the button and the menu under it.
constexpr double menuDistance = 4;

}  // namespace

void MenuBarManager::showToggleMenu(ControlItem& item) {
    StatusBarButton* button = item.statusItem().button();
    if (button == nullptr)
        return;
    const Menu menu = toggleMenu();
    if (rehideTimer_)
        rehideTimer_->invalidate();
    ++openMenus_;
    // The manager may go away while the menu is open.
    auto menuClosed = lifetime_.guard([this] {
        --openMenus_;
        restartRehideTimer();
    });
    button->popUp(menu, {0, button->size().height + menuDistance});
    menuClosed();
}

Menu MenuBarManager::toggleMenu() {
    Menu menu;
    const auto add = [&menu](const char* title, const char* keyEquivalent, std::function<void()> handler) {
        menu.items.push_back(std::make_shared<ClosureMenuItem>(title, keyEquivalent, std::move(handler)));
    };
    const auto addSeparator = [&menu] { menu.items.push_back(nullptr); };
    add(revealLevel_ == RevealLevel::none ? "Show Hidden Items" : "Hide Items", "",
        lifetime_.guard([this] { toggleHidden(); }));
    if (preferences_->alwaysHiddenEnabled.value())
        add(revealLevel_ == RevealLevel::all ? "Hide Always-Hidden Items" : "Show Always-Hidden Items", "",
            lifetime_.guard([this] { toggleAlwaysHidden(); }));
    add("Open Hidden Items Panel", "", lifetime_.guard([this] { togglePanel(); }));
    addSeparator();
    add("Settings…", ",", lifetime_.guard([this] { openSettings(); }));
    addSeparator();
    add("Quit Velmo", "q", [&application = platform_.application] { application.terminate(); });
    return menu;
}

}  // namespace velmo
