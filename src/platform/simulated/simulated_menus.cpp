#include "simulated/simulated_menus.h"

namespace velmo {

void SimulatedMenus::popUp(SimulatedOpenMenu menu) {
    ++shownCount_;
    ++openCount_;
    // A copy: the script may install another one.
    if (const auto script = script_)
        script(menu);
    --openCount_;
    if (menu.chosen())
        menu.chosen()->performAction();
}

}  // namespace velmo
