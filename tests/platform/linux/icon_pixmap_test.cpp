#include "linux/status_notifier/icon_pixmap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>

namespace velmo::status_notifier {

namespace {

IconPixmap pixmapOf(int width, int height, const std::vector<std::uint8_t>& bytes = {}) {
    return {width, height, bytes};
}

std::vector<std::uint8_t> filled(int side, std::array<std::uint8_t, 4> argb) {
    std::vector<std::uint8_t> bytes;
    for (int count = 0; count < side * side; ++count)
        bytes.insert(bytes.end(), argb.begin(), argb.end());
    return bytes;
}

TEST(IconPixmap, BestIsTheSmallestThatIsLargeEnough) {
    const std::vector<IconPixmap> pixmaps = {pixmapOf(64, 64), pixmapOf(16, 16), pixmapOf(22, 22),
                                             pixmapOf(32, 32)};
    EXPECT_EQ(bestIconPixmap(pixmaps, 20)->width, 22);
    EXPECT_EQ(bestIconPixmap(pixmaps, 22)->width, 22);
    EXPECT_EQ(bestIconPixmap(pixmaps, 23)->width, 32);
    EXPECT_EQ(bestIconPixmap(pixmaps, 40)->width, 64);
    EXPECT_EQ(bestIconPixmap(pixmaps, 80)->width, 64) << "the largest where none is large enough";
    EXPECT_EQ(bestIconPixmap(pixmaps, 16)->width, 16);
    EXPECT_EQ(bestIconPixmap({}, 20), nullptr);
}

TEST(IconPixmap, ReadsNetworkByteOrderAndPremultiplies) {
    const std::vector<std::uint8_t> bytes = {0x80, 0xff, 0x40, 0x00};
    const auto bitmap = scaledIcon(pixmapOf(1, 1, bytes), 1);
    EXPECT_EQ(*bitmap.pixels, (std::vector<std::uint8_t>{0x00, 0x20, 0x80, 0x80}));
}

TEST(IconPixmap, KeepsASizeThatNearlyFits) {
    for (const int side : {14, 16, 20, 22}) {
        const auto bytes = filled(side, {255, 1, 2, 3});
        EXPECT_EQ(scaledIcon(pixmapOf(side, side, bytes), 20).width, side);
    }
    for (const int side : {8, 13, 23, 24, 64}) {
        const auto bytes = filled(side, {255, 1, 2, 3});
        EXPECT_EQ(scaledIcon(pixmapOf(side, side, bytes), 20).width, 20) << side;
    }
}

TEST(IconPixmap, KeepsColoursAndProportionsWhenItScales) {
    for (const int side : {3, 64, 333, 512}) {
        const auto bytes = filled(side, {255, 10, 20, 30});
        const auto bitmap = scaledIcon(pixmapOf(side, side, bytes), 20);
        for (std::size_t index = 0; index < bitmap.pixels->size(); index += 4) {
            ASSERT_EQ((*bitmap.pixels)[index], 30);
            ASSERT_EQ((*bitmap.pixels)[index + 1], 20);
            ASSERT_EQ((*bitmap.pixels)[index + 2], 10);
            ASSERT_EQ((*bitmap.pixels)[index + 3], 255);
        }
    }
    const auto wide = filled(64, {255, 1, 2, 3});
    const auto bitmap = scaledIcon(pixmapOf(256, 16, wide), 20);
    EXPECT_EQ(bitmap.width, 20);
    EXPECT_EQ(bitmap.height, 1);
    EXPECT_EQ(bitmap.pixels->size(), 80U);
}

TEST(IconPixmap, AHugeOneIsScaledFromEndToEndAtTheCostOfALargeOne) {
    const auto cost = [](int side) {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(side) * side * 4, 0);
        // Only the right half shows anything.
        for (std::size_t index = 0; index < bytes.size(); ++index)
            bytes[index] = index / 4 % side >= static_cast<std::size_t>(side) / 2 ? 255 : 0;
        auto shortest = std::chrono::steady_clock::duration::max();
        for (int count = 0; count < 3; ++count) {
            const auto start = std::chrono::steady_clock::now();
            const auto bitmap = scaledIcon(pixmapOf(side, side, bytes), 20);
            shortest = std::min(shortest, std::chrono::steady_clock::now() - start);
            EXPECT_EQ(bitmap.width, 20);
            for (std::size_t index = 0; index < bitmap.pixels->size(); index += 4)
                EXPECT_EQ((*bitmap.pixels)[index + 3], index / 4 % 20 >= 10 ? 255 : 0);
        }
        return shortest;
    };
    EXPECT_LT(cost(4096), 10 * cost(512)) << "64 times as many pixels";
}

TEST(IconPixmap, AveragesWhatItScalesDown) {
    // Black and transparent columns take turns.
    std::vector<std::uint8_t> bytes;
    for (int count = 0; count < 40 * 40; ++count)
        bytes.insert(bytes.end(), {static_cast<std::uint8_t>(count % 2 ? 255 : 0), 0, 0, 0});
    const auto bitmap = scaledIcon(pixmapOf(40, 40, bytes), 20);
    for (std::size_t index = 3; index < bitmap.pixels->size(); index += 4)
        ASSERT_EQ((*bitmap.pixels)[index], 128);
}

}  // namespace

}  // namespace velmo::status_notifier
