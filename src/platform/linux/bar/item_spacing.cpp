#include "item_spacing.h"

#include <algorithm>

namespace velmo {

namespace {

/// What the bar's own spacing is as a value of the preferences: from the middle 12 points of one icon, which
/// its picture takes at the least, to those of the next.
constexpr double ownSpacing = 18;
/// More would let no second item into the bar.
constexpr double widestSpacing = 200;
/// At the least on either side of what our items show.
constexpr double leastPadding = 2;

double narrowing(const GlobalPreferences& preferences, const char* key) {
    const auto value = preferences.value(key);
    const double* spacing = value ? std::get_if<double>(&*value) : nullptr;
    return spacing ? ownSpacing - std::clamp(*spacing, 0.0, widestSpacing) : 0;
}

double iconWithRoom(double narrowing) {
    return bar_metrics::trayIconSide + std::max(2 * bar_metrics::trayIconPadding - narrowing, 0.0);
}

double padded(double content, double narrowing) {
    return content + 2 * std::max(bar_metrics::itemPadding - narrowing / 2, leastPadding);
}

}  // namespace

ItemSpacing::ItemSpacing(const GlobalPreferences& preferences)
    : narrowing_(narrowing(preferences, statusItemSpacingKey)),
      highlightNarrowing_(narrowing(preferences, statusItemSelectionPaddingKey)) {}

double ItemSpacing::iconWidth() const {
    return iconWithRoom(narrowing_);
}

double ItemSpacing::iconHighlightWidth() const {
    return std::min(iconWithRoom(highlightNarrowing_), iconWidth());
}

double ItemSpacing::itemWidth(double content) const {
    return padded(content, narrowing_);
}

double ItemSpacing::highlightWidth(double content) const {
    return std::min(padded(content, highlightNarrowing_), itemWidth(content));
}

}  // namespace velmo
