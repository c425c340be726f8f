// Uses a header with a slip in it, which the build makes.

#include "macos/foundation/ns_timer.h"

namespace velmo::macos {

void useSlip(const NSTimer& timer) {
    timer.setTolerance(0.1);
}

}  // namespace velmo::macos
