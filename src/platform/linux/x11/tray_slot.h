#pragma once

#include "linux/bar/item_spacing.h"
#include "linux/drawing/appearance.h"
#include "linux/x11/pixel_rect.h"

namespace velmo::x11 {

/// Pixels that another program's icon takes in the bar, with the room on either side of it.
int traySlotWidth(const Appearance& appearance, const ItemSpacing& spacing);

/// The square in that slot that the icon fills, in pixels of the slot.
PixelRect trayIconArea(const Appearance& appearance, const ItemSpacing& spacing);

}  // namespace velmo::x11
