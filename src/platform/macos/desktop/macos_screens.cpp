#include "macos_screens.h"

#include "screen_from.h"

namespace velmo::macos {

std::vector<Screen> MacosScreens::all() const {
    std::vector<Screen> screens;
    for (const NSScreen& screen : NSScreen::screens().all<NSScreen>())
        screens.push_back(*screenFrom(screen));
    return screens;
}

std::optional<Screen> MacosScreens::main() const {
    return screenFrom(NSScreen::main());
}

}  // namespace velmo::macos
