#include "dock_strut.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace velmo::x11 {

namespace {

/// Depths from the left, right, upper and lower edge, then begin and end along each of them.
constexpr std::size_t depthCount = 4;
constexpr std::size_t partialCount = 12;
using Numbers = std::array<std::uint32_t, partialCount>;

bool readNumbers(const std::vector<std::uint32_t>& values, std::size_t count, Numbers& numbers) {
    if (values.size() < count)
        return false;
    std::copy_n(values.begin(), count, numbers.begin());
    return true;
}

bool isInside(std::int64_t place, int begin, int length) {
    return place > begin && place < std::int64_t{begin} + length;
}

}  // namespace

std::optional<DockStrut> DockStrut::from(const std::vector<std::uint32_t>& partial,
                                         const std::vector<std::uint32_t>& whole) {
    constexpr auto unbounded = std::numeric_limits<std::uint32_t>::max();
    Numbers numbers = {0, 0, 0, 0, 0, unbounded, 0, unbounded, 0, unbounded, 0, unbounded};
    const bool hasWhole = readNumbers(whole, depthCount, numbers);
    const bool hasPartial = readNumbers(partial, partialCount, numbers);
    if (!hasWhole && !hasPartial)
        return std::nullopt;
    const auto& [left, right, top, bottom, leftBegin, leftEnd, rightBegin, rightEnd, topBegin, topEnd,
                 bottomBegin, bottomEnd] = numbers;
    return DockStrut{
        {left, leftBegin, leftEnd}, {right, rightBegin, rightEnd}, {bottom, bottomBegin, bottomEnd}};
}

PixelRect spaceLeftBy(const std::vector<DockStrut>& docks, const PixelRect& monitor, const PixelRect& root) {
    const auto& [x, y, width, height] = monitor;
    std::int64_t leftEnd = x;
    std::int64_t rightEnd = std::int64_t{x} + width;
    std::int64_t bottomEnd = std::int64_t{y} + height;
    for (const auto& [left, right, bottom] : docks) {
        // What ends on another monitor is reserved there, and merely reaches across this one.
        if (left.meets(y, height) && isInside(left.depth, x, width))
            leftEnd = std::max(leftEnd, left.depth);
        if (right.meets(y, height) && isInside(root.width - right.depth, x, width))
            rightEnd = std::min(rightEnd, root.width - right.depth);
        if (bottom.meets(x, width) && isInside(root.height - bottom.depth, y, height))
            bottomEnd = std::min(bottomEnd, root.height - bottom.depth);
    }
    // Nobody leaves nothing.
    if (leftEnd >= rightEnd) {
        leftEnd = x;
        rightEnd = std::int64_t{x} + width;
    }
    return {static_cast<int>(leftEnd), y, static_cast<int>(rightEnd - leftEnd),
            static_cast<int>(bottomEnd - y)};
}

}  // namespace velmo::x11
