#include "hidden_items/menu_bar_rect.h"
#include "menubar/menu_bar_manager.h"

#include <algorithm>

namespace velmo {

std::optional<Screen> MenuBarManager::menuBarScreen() {
    const StatusBarButton* button = toggle_.statusItem().button();
    const auto screen = button != nullptr ? button->screen() : std::nullopt;
    return screen ? screen : platform_.screens.main();
}

bool MenuBarManager::isPointerInMenuBar() const {
    const auto screens = platform_.screens.all();
    if (screens.empty())
        return false;
    const Point location = platform_.events.mouseLocation();
    const Point pointer{location.x, screens.front().frame.maxY() - location.y};
    return std::any_of(screens.begin(), screens.end(), [&](const Screen& screen) {
        return platform_.statusBar.isOn(screen) && menuBarRect(screen, platform_).contains(pointer);
    });
}

}  // namespace velmo
