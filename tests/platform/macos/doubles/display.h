#pragma once

#include "macos/appkit/ns_font.h"
#include "macos/appkit/ns_image.h"
#include "macos/appkit/ns_view.h"

namespace velmo::macos::doubles {

/// Adds what GNUstep's windows, views and controls lack.
void addDisplay();

/// A button of GNUstep's for a status item, in a window at the top of the screen.
Object makeShownButton();

// Pictures and fonts that GNUstep can show. A symbol is a frame of the right size.

NSImage shownSymbol(const NSString& name, CGFloat pointSize);
NSImage shownDrawing(const CGSize& size, void* handler);
NSImage shownBitmap(const CGSize& size);
NSFont shownFont(const std::string& kind, CGFloat size, CGFloat weight);

/// An empty window.
NSWindow makeWindow(const CGRect& content, NSWindowStyleMask mask);

}  // namespace velmo::macos::doubles
