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
struct Cover {
    int first = 0;
    std::vector<double> weights;
};

/// Where the source is larger, the share that the target's pixel covers of each of its pixels; where it is
/// smaller, the two nearest ones by their distance.
std::vector<Cover> covers(int sourceSize, int targetSize) {
    std::vector<Cover> result(static_cast<std::size_t>(targetSize));
    const double ratio = static_cast<double>(sourceSize) / targetSize;
    for (int index = 0; index < targetSize; ++index) {
        auto& cover = result[static_cast<std::size_t>(index)];
        const double width = std::max(ratio, 1.0);
        const double middle = (index + 0.5) * ratio;
        const double from = std::clamp(middle - width / 2, 0.0, sourceSize - 1.0);
        const double to = std::clamp(middle + width / 2, from + 1e-6, static_cast<double>(sourceSize));
        cover.first = static_cast<int>(from);
        const int last = std::min(static_cast<int>(std::ceil(to)), sourceSize) - 1;
        double sum = 0;
        for (int place = cover.first; place <= last; ++place) {
            const double share = std::min(to, place + 1.0) - std::max(from, static_cast<double>(place));
            cover.weights.push_back(share);
            sum += share;
        }
        for (double& weight : cover.weights)
            weight /= sum;
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
            for (std::size_t down = 0; down < row.weights.size(); ++down) {
                for (std::size_t across = 0; across < column.weights.size(); ++across) {
                    add(sum,
                        channelsAt(pixmap, column.first + static_cast<int>(across),
                                   row.first + static_cast<int>(down)),
                        row.weights[down] * column.weights[across]);
                }
            }
            append(bytes, sum);
        }
    }
    bitmap.pixels = std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes));
    return bitmap;
}

}  // namespace velmo::status_notifier
