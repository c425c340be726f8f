#include "bar_strut.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace velmo::x11 {

namespace {

using Upper = StrutReader::Upper;

constexpr StrutReader readers[] = {
    {"Fluxbox", Upper::fromMonitor, true},
    {"IceWM", Upper::fromMonitor},
    {"i3", Upper::fromMonitor},
    {"Metacity", Upper::fromRootInRows},
    {"Openbox", Upper::fromRootByColumn},
    {"Xfwm4", Upper::fromRootSparing},
};
constexpr StrutReader standard;

constexpr int farthest = std::numeric_limits<int>::max() / 4;

std::uint32_t number(int pixels) {
    return static_cast<std::uint32_t>(std::max(pixels, 0));
}

Strut upperStrut(const PixelRect& bar, int depth) {
    return {0, 0, number(depth), 0, 0, 0, 0, 0, number(bar.x), number(bar.x + bar.width - 1), 0, 0};
}

bool areFree(const PixelRect& area, const std::vector<PixelRect>& monitors) {
    return std::none_of(monitors.begin(), monitors.end(),
                        [&](const auto& monitor) { return monitor.overlaps(area); });
}

/// Of the bar's columns, the first ones above which nothing lies. None where the width is not positive.
PixelRect freeColumns(const PixelRect& bar, const std::vector<PixelRect>& monitors) {
    std::vector<PixelRect> above;
    std::copy_if(monitors.begin(), monitors.end(), std::back_inserter(above), [&](const auto& monitor) {
        return monitor.overlaps({bar.x, 0, bar.width, bar.y});
    });
    std::sort(above.begin(), above.end(), [](const auto& one, const auto& other) { return one.x < other.x; });
    int begin = bar.x;
    for (const auto& monitor : above) {
        if (monitor.x > begin)
            return {begin, bar.y, monitor.x - begin, bar.height};
        begin = std::max(begin, monitor.x + monitor.width);
    }
    return {begin, bar.y, bar.x + bar.width - begin, bar.height};
}

/// From the side on which no monitor is in the way.
Strut sideStrut(const PixelRect& bar, const std::vector<PixelRect>& monitors, int rootWidth) {
    const auto begin = number(bar.y);
    const auto end = number(bar.y + bar.height - 1);
    const int right = bar.x + bar.width;
    if (areFree({0, bar.y, bar.x, bar.height}, monitors))
        return {number(right), 0, 0, 0, begin, end, 0, 0, 0, 0, 0, 0};
    if (areFree({right, bar.y, farthest, bar.height}, monitors))
        return {0, number(rootWidth - bar.x), 0, 0, 0, 0, begin, end, 0, 0, 0, 0};
    return {};
}

}  // namespace

const StrutReader& StrutReader::named(const std::string& name) {
    const auto* found = std::find_if(std::begin(readers), std::end(readers),
                                     [&](const auto& reader) { return name.starts_with(reader.name); });
    return found == std::end(readers) ? standard : *found;
}

Strut StrutReader::strutFor(const PixelRect& bar, const std::vector<PixelRect>& monitors,
                            int rootWidth) const {
    const int bottom = bar.y + bar.height;
    if (upper == Upper::fromMonitor)
        return upperStrut(bar, bar.height);
    const auto columns = freeColumns(bar, monitors);
    if (upper == Upper::fromRootSparing || columns.width == bar.width)
        return upperStrut(bar, bottom);
    if (upper == Upper::fromRootInRows)
        return sideStrut(bar, monitors, rootWidth);
    if (upper == Upper::fromRootByColumn && columns.width > 0)
        return upperStrut(columns, bottom);
    return {};
}

}  // namespace velmo::x11
