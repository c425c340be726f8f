#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace velmo {

/// A screen of the walk: whole points, origin at the bottom left of the primary screen.
struct ArrangedScreen {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    /// 0: the screen has no menu bar.
    double menuBarHeight = 0;
};

inline constexpr std::array<ArrangedScreen, 1> oneScreen{{{0, 0, 1440, 900, 26}}};
inline constexpr std::array<ArrangedScreen, 2> secondAtRight{
    {{0, 0, 1440, 900, 26}, {1440, 0, 1920, 1080, 30}}};
inline constexpr std::array<ArrangedScreen, 1> smallScreen{{{0, 0, 1280, 800, 22}}};
inline constexpr std::array<ArrangedScreen, 2> barlessAtLeft{
    {{0, 0, 1440, 900, 26}, {-1920, 100, 1920, 1080, 0}}};
inline constexpr std::array<ArrangedScreen, 1> largeScreen{{{0, 0, 3000, 2000, 40}}};

/// The last has no screen at all.
inline constexpr std::array<std::span<const ArrangedScreen>, 6> screenArrangements{
    oneScreen, secondAtRight, smallScreen, barlessAtLeft, largeScreen, std::span<const ArrangedScreen>()};

}  // namespace velmo
