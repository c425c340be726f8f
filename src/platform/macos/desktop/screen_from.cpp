#include "screen_from.h"

namespace velmo::macos {

std::optional<Screen> screenFrom(const NSScreen& screen) {
    if (!screen)
        return std::nullopt;
    return Screen{.frame = rectOf(screen.frame()),
                  .visibleFrame = rectOf(screen.visibleFrame()),
                  .backingScaleFactor = screen.backingScaleFactor()};
}

}  // namespace velmo::macos
