#include "tray_slot.h"

#include <algorithm>

namespace velmo::x11 {

int traySlotWidth(const Appearance& appearance, const ItemSpacing& spacing) {
    return appearance.pixels(spacing.iconWidth());
}

int leastTraySlotWidth(const Appearance& appearance, const ItemSpacing& spacing) {
    return std::min(appearance.pixels(bar_metrics::leastIconWidth), traySlotWidth(appearance, spacing));
}

PixelRect trayIconArea(const Appearance& appearance, int slotWidth) {
    const int side = appearance.pixels(bar_metrics::trayIconSide);
    const int height = appearance.pixels(bar_metrics::thickness);
    return {(slotWidth - side) / 2, (height - side) / 2, side, side};
}

}  // namespace velmo::x11
