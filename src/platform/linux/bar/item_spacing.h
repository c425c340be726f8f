#pragma once

#include "global_preferences.h"
#include "linux/drawing/appearance.h"

namespace velmo {

/// How densely the bar is filled, as an item takes it when it appears. All in points.
class ItemSpacing {
public:
    /// The bar's own spacing.
    ItemSpacing() = default;
    /// As the user wants it. What is absent or no number is as the bar has it.
    explicit ItemSpacing(const GlobalPreferences& preferences);

    /// Width of the place that another program's icon gets. Where the spacing is small, icons touch.
    double iconWidth() const;
    /// Width of the highlight behind such an icon.
    double iconHighlightWidth() const;
    /// Width of an item of ours whose length follows its content.
    double itemWidth(double content) const;
    /// Width of the highlight behind such an item.
    double highlightWidth(double content) const;

private:
    /// How much closer the user wants items, and the edges of highlights, than the bar has them; negative for
    /// farther.
    double narrowing_ = 0;
    double highlightNarrowing_ = 0;
};

}  // namespace velmo
