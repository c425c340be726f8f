#include "tray_slot.h"

namespace velmo::x11 {

int traySlotWidth(const Appearance& appearance, const ItemSpacing& spacing) {
    return appearance.pixels(spacing.iconWidth());
}

PixelRect trayIconArea(const Appearance& appearance, const ItemSpacing& spacing) {
    const int side = appearance.pixels(bar_metrics::trayIconSide);
    const int height = appearance.pixels(bar_metrics::thickness);
    return {(traySlotWidth(appearance, spacing) - side) / 2, (height - side) / 2, side, side};
}

}  // namespace velmo::x11
