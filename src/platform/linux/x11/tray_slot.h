#pragma once

#include "linux/bar/item_spacing.h"
#include "linux/drawing/appearance.h"
#include "linux/x11/pixel_rect.h"

namespace velmo::x11 {

/// Pixels that another program's icon takes in the bar, with the room on either side of it.
int traySlotWidth(const Appearance& appearance, const ItemSpacing& spacing);

/// What it can do with in a crowded bar, where its edges are not seen.
int leastTraySlotWidth(const Appearance& appearance, const ItemSpacing& spacing);

/// The square that the icon fills in a slot of that width, in pixels of the slot: beyond its edges, where it
/// is narrower.
PixelRect trayIconArea(const Appearance& appearance, int slotWidth);

}  // namespace velmo::x11
