#include "icon_pixmap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <utility>

namespace velmo::status_notifier {

namespace {

constexpr std::size_t mostPixmaps = 64;
constexpr std::size_t bytesAPixel = 4;
/// Relative to the wanted side: sizes in between are shown as they are.
constexpr double smallestUnscaled = 0.7;
constexpr double largestUnscaled = 1.1;

/// Opacity, red, green and blue, each from 0 to 255; colours premultiplied.
using Channels = std::array<double, 4>;

int longerSide(const IconPixmap& pixmap) {
    return std::max(pixmap.width, pixmap.height);
}

Channels channelsAt(const IconPixmap& pixmap, int column, int row) {
    const auto* bytes =
        &pixmap.bytes[(static_cast<std::size_t>(row) * static_cast<std::size_t>(pixmap.width) +
                       static_cast<std::size_t>(column)) *
                      bytesAPixel];
    const double alpha = bytes[0];
    const double share = alpha / 255;
    return {alpha, bytes[1] * share, bytes[2] * share, bytes[3] * share};
}

void add(Channels& sum, const Channels& part, double weight) {
    for (std::size_t index = 0; index < sum.size(); ++index)
        sum.at(index) += part.at(index) * weight;
}

/// In the order of a `Bitmap`.
void append(std::vector<std::uint8_t>& bytes, const Channels& channels) {
    for (std::size_t index = channels.size(); index-- > 0;)
        bytes.push_back(static_cast<std::uint8_t>(std::lround(std::clamp(channels.at(index), 0.0, 255.0))));
}

/// What one pixel of the target covers of the source, along one axis.
struct Sample {
    int place = 0;
    double weight = 0;
};
using Cover = std::vector<Sample>;

/// A side of a source that is read as a whole. Of a longer one pixels are taken at equal distances, so that a
/// huge source costs what a large one does.
constexpr int longestWholeSide = 512;

/// The share of each pixel of the source between two places.
Cover coverOf(double from, double to, int sourceSize, int mostSamples) {
    Cover cover;
    const int first = static_cast<int>(from);
    const int end = std::min(static_cast<int>(std::ceil(to)), sourceSize);
    if (end - first > mostSamples) {
        for (int index = 0; index < mostSamples; ++index)
            cover.push_back(
                {static_cast<int>(from + (index + 0.5) * (to - from) / mostSamples), 1.0 / mostSamples});
        return cover;
    }
    for (int place = first; place < end; ++place) {
        const double share = std::min(to, place + 1.0) - std::max(from, static_cast<double>(place));
        cover.push_back({place, share / (to - from)});
    }
    return cover;
}

/// Where the source is larger, the share that the target's pixel covers of each of its pixels; where it is
/// smaller, the two nearest ones by their distance.
std::vector<Cover> covers(int sourceSize, int targetSize) {
    std::vector<Cover> result;
    const int mostSamples = longestWholeSide / targetSize + 2;
    const double ratio = static_cast<double>(sourceSize) / targetSize;
    for (int index = 0; index < targetSize; ++index) {
        const double width = std::max(ratio, 1.0);
        const double middle = (index + 0.5) * ratio;
        const double from = std::clamp(middle - width / 2, 0.0, sourceSize - 1.0);
        const double to = std::clamp(middle + width / 2, from + 1e-6, static_cast<double>(sourceSize));
        result.push_back(coverOf(from, to, sourceSize, mostSamples));
    }
    return result;
}

}  // namespace

std::vector<IconPixmap> readIconPixmaps(dbus::MessageReader& reader) {
    std::vector<IconPixmap> pixmaps;
    reader.array([&] {
        reader.structure([&] {
            const auto width = reader.integer();
            const auto height = reader.integer();
            const auto bytes = reader.bytes();
            if (!width || !height || !bytes || *width < 1 || *height < 1 || *width > largestPixmapSide ||
                *height > largestPixmapSide || pixmaps.size() >= mostPixmaps)
                return;
            if (bytes->size() == static_cast<std::size_t>(*width * *height) * bytesAPixel)
                pixmaps.push_back({static_cast<int>(*width), static_cast<int>(*height), *bytes});
        });
        return true;
    });
    return pixmaps;
}

const IconPixmap* bestIconPixmap(const std::vector<IconPixmap>& pixmaps, int side) {
    const IconPixmap* best = nullptr;
    for (const auto& pixmap : pixmaps) {
        const int own = longerSide(pixmap);
        const int other = best ? longerSide(*best) : 0;
        const bool isBetter = own >= side ? other < side || own < other : own > other;
        if (!best || isBetter)
            best = &pixmap;
    }
    return best;
}

Bitmap scaledIcon(const IconPixmap& pixmap, int side) {
    const int longest = longerSide(pixmap);
    const bool keepsSize = longest >= side * smallestUnscaled && longest <= side * largestUnscaled;
    const double scale = keepsSize ? 1 : static_cast<double>(side) / longest;
    const auto scaled = [scale](int size) {
        return std::max(static_cast<int>(std::lround(size * scale)), 1);
    };
    Bitmap bitmap;
    bitmap.width = scaled(pixmap.width);
    bitmap.height = scaled(pixmap.height);
    bitmap.size = {double(bitmap.width), double(bitmap.height)};
    const auto columns = covers(pixmap.width, bitmap.width);
    const auto rows = covers(pixmap.height, bitmap.height);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(columns.size() * rows.size() * bytesAPixel);
    for (const auto& row : rows) {
        for (const auto& column : columns) {
            Channels sum{};
            for (const auto& down : row) {
                for (const auto& across : column)
                    add(sum, channelsAt(pixmap, across.place, down.place), down.weight * across.weight);
            }
            append(bytes, sum);
        }
    }
    bitmap.pixels = std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes));
    return bitmap;
}

}  // namespace velmo::status_notifier
