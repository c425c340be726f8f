#pragma once

#include "lifetime.h"
#include "run_loop.h"
#include "surface_view.h"
#include "view_node.h"

namespace velmo::macos {

/// Shows a described view with the system's own views. A new description changes only what differs.
class ViewHost {
public:
    explicit ViewHost(RunLoop& loop) : loop_(loop) {}

    void setContent(const View& content);
    /// Points that the content wants.
    Size fittingSize() const;
    /// Points, in the view around it.
    void place(const Rect& area);

    const NSView& view() const { return surface_.view(); }

private:
    void apply();
    void reassert();
    void layOut();

    RunLoop& loop_;
    SurfaceView surface_;
    View content_;
    // Ends before the surface, on which its views lie.
    ViewNodes root_;
    bool isStale_ = false;
    Lifetime lifetime_;
};

}  // namespace velmo::macos
