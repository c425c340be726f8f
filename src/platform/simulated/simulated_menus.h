#pragma once

#include "simulated/simulated_open_menu.h"

#include <functional>

namespace velmo {

/// Opens the program's menus and plays the user who looks at them.
class SimulatedMenus {
public:
    using Script = std::function<void(SimulatedOpenMenu&)>;

    /// Runs while a menu is open, and may let time pass. The menu closes when the script returns, and what it
    /// chose is performed. Without a script every menu closes at once.
    void setScript(Script script) { script_ = std::move(script); }

    /// Returns once the menu has closed and the chosen item has been performed.
    void popUp(SimulatedOpenMenu menu);

    /// How many menus are open now.
    std::size_t openCount() const { return openCount_; }
    /// How many have ever been opened.
    std::size_t shownCount() const { return shownCount_; }

private:
    Script script_;
    std::size_t openCount_ = 0;
    std::size_t shownCount_ = 0;
};

}  // namespace velmo
