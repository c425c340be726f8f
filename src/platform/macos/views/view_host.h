#pragma once

#include "lifetime.h"
#include "run_loop.h"
#include "surface_view.h"
#include "view_node.h"

namespace velmo::macos {

/// Shows a described view with the system's own views. A new description changes only what differs.
class ViewHost {
public:
    /// `showTabs` shows the tabs that the content has, of which the host itself shows the chosen one's
    /// content.
    explicit ViewHost(RunLoop& loop, std::function<void(const TabView&)> showTabs = {})
        : loop_(loop), showTabs_(std::move(showTabs)) {}

    void setContent(const View& content);
    /// Whole points that the content wants.
    Size fittingSize() const;
    /// Points, in the view around it.
    void place(const Rect& area);
    /// Lays the content out for a view of that size, which somebody else gives it.
    void layOutFor(const Size& size);

    const NSView& view() const { return surface_.view(); }

private:
    void apply();
    void reassert();
    void layOut();

    RunLoop& loop_;
    std::function<void(const TabView&)> showTabs_;
    SurfaceView surface_;
    View content_;
    /// What the content is laid out for.
    Size room_;
    // Ends before the surface, on which its views lie.
    ViewNodes root_;
    bool isStale_ = false;
    Lifetime lifetime_;
};

}  // namespace velmo::macos
