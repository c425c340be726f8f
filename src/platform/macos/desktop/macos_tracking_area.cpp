#include "macos_tracking_area.h"

#include "event_from.h"

#include <utility>

namespace velmo::macos {

MacosTrackingArea::MacosTrackingArea(NSView view, const CGRect& rect, TrackingAreaOptions options,
                                     TrackingAreaOwner* owner)
    : view_(std::move(view)),
      owner_(owner),
      area_(NSTrackingArea::with(rect, static_cast<NSTrackingAreaOptions>(options), instance_.object())) {
    view_.addTrackingArea(area_);
}

MacosTrackingArea::~MacosTrackingArea() {
    view_.removeTrackingArea(area_);
}

void MacosTrackingArea::mouseEntered(const NSEvent& event) {
    owner_->mouseEnteredWith(eventFrom(event));
}

void MacosTrackingArea::mouseExited(const NSEvent& event) {
    owner_->mouseExitedWith(eventFrom(event));
}

}  // namespace velmo::macos
