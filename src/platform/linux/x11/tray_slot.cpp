#include "tray_slot.h"

namespace velmo::x11 {

int traySlotWidth(const Appearance& appearance) {
    return appearance.pixels(bar_metrics::trayIconSide + 2 * bar_metrics::trayIconPadding);
}

PixelRect trayIconArea(const Appearance& appearance) {
    const int side = appearance.pixels(bar_metrics::trayIconSide);
    const int height = appearance.pixels(bar_metrics::thickness);
    return {(traySlotWidth(appearance) - side) / 2, (height - side) / 2, side, side};
}

}  // namespace velmo::x11
