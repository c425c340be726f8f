#include "menubar/hover_target.h"

namespace velmo {

void HoverTarget::mouseEnteredWith(const Event& /*event*/) {
    if (onEnter)
        onEnter();
}

void HoverTarget::mouseExitedWith(const Event& /*event*/) {
    if (onExit)
        onExit();
}

}  // namespace velmo
