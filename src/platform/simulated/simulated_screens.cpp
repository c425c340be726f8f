#include "simulated/simulated_screens.h"

#include <utility>

namespace velmo {

SimulatedScreens::SimulatedScreens() : asSet_{withMenuBar({0, 0, 1440, 900})} {
    refresh();
}

std::optional<Screen> SimulatedScreens::main() const {
    return main_ < screens_.size() ? std::optional(screens_[main_]) : std::nullopt;
}

Screen SimulatedScreens::withMenuBar(const Rect& frame, double menuBarHeight) {
    return {frame, {frame.x, frame.y, frame.width, frame.height - menuBarHeight}, 1};
}

void SimulatedScreens::set(std::vector<Screen> screens) {
    asSet_ = std::move(screens);
    main_ = 0;
    refresh();
}

void SimulatedScreens::setMenuBarHidden(bool hidden) {
    menuBarHidden_ = hidden;
    refresh();
}

void SimulatedScreens::refresh() {
    screens_ = asSet_;
    if (menuBarHidden_) {
        for (Screen& screen : screens_)
            screen.visibleFrame.height = screen.frame.maxY() - screen.visibleFrame.minY();
    }
    ++generation_;
}

}  // namespace velmo
