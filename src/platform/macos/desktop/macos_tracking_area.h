#pragma once

#include "macos/appkit/ns_event.h"
#include "macos/appkit/ns_view.h"
#include "macos/objc/instance.h"
#include "tracking_area.h"

namespace velmo::macos {

class MacosTrackingArea : public TrackingArea {
public:
    MacosTrackingArea(NSView view, const CGRect& rect, TrackingAreaOptions options, TrackingAreaOwner* owner);
    ~MacosTrackingArea() override;
    MacosTrackingArea(const MacosTrackingArea&) = delete;
    MacosTrackingArea& operator=(const MacosTrackingArea&) = delete;

private:
    void mouseEntered(const NSEvent& event);
    void mouseExited(const NSEvent& event);

    using Class = Subclass<MacosTrackingArea, "VelmoTrackingOwner", NSObject,
                           Method<"mouseEntered:", &MacosTrackingArea::mouseEntered, "NSResponder">,
                           Method<"mouseExited:", &MacosTrackingArea::mouseExited, "NSResponder">>;

    NSView view_;
    TrackingAreaOwner* owner_;
    Instance<MacosTrackingArea, Class, NSObject> instance_{*this};
    NSTrackingArea area_;
};

}  // namespace velmo::macos
