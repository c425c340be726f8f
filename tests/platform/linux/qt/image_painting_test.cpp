#include "linux/qt/image_painting.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include <cmath>
#include <memory>
#include <vector>

namespace velmo {

namespace {

constexpr int pixelSize = 4;

/// Opaque noise: whatever resamples it changes it.
Bitmap noise(int width, int height, double scale) {
    auto pixels = std::make_shared<std::vector<std::uint8_t>>();
    for (std::size_t index = 0; index < std::size_t(width) * height * pixelSize; ++index)
        pixels->push_back(index % pixelSize == 3 ? 0xff : std::uint8_t(index * 2654435761U >> 13));
    Bitmap bitmap{width, height, pixels, {}};
    bitmap.size = {width / scale, height / scale};
    return bitmap;
}

/// What is shown of a picture that a surface of a scale has at a place, cut out again.
QImage shownAt(const Bitmap& bitmap, const QRectF& place, double scale) {
    QImage surface(200, 200, QImage::Format_ARGB32_Premultiplied);
    surface.fill(Qt::white);
    surface.setDevicePixelRatio(scale);
    QPainter painter(&surface);
    Image image;
    image.content = bitmap;
    paintImage(painter, image, place, Qt::black);
    painter.end();
    const QPoint corner(static_cast<int>(std::lround(place.x() * scale)),
                        static_cast<int>(std::lround(place.y() * scale)));
    surface.setDevicePixelRatio(1);
    return surface.copy(QRect(corner, QSize(bitmap.width, bitmap.height)));
}

TEST(PaintedPictures, KeepTheirPixelsAtEveryScaleOfAScreen) {
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 2.25, 2.75}) {
        // As an icon of 30 × 22 points is pictured.
        const auto width = static_cast<int>(std::lround(30 * scale));
        const auto height = static_cast<int>(std::lround(22 * scale));
        const Bitmap bitmap = noise(width, height, scale);
        const QImage expected(bitmap.pixels->data(), width, height, qsizetype{width} * pixelSize,
                              QImage::Format_ARGB32_Premultiplied);
        const QRectF exact(8, 5, bitmap.size.width, bitmap.size.height);
        EXPECT_EQ(shownAt(bitmap, exact, scale), expected) << scale;
        const QRectF wholePoints(8, 5, std::ceil(exact.width()), std::ceil(exact.height()));
        EXPECT_EQ(shownAt(bitmap, wholePoints, scale), expected) << scale;
    }
}

TEST(PaintedPictures, FillAPlaceThatIsLargerByAPointOrMore) {
    const Bitmap bitmap = noise(30, 22, 1);
    const QRectF larger(8, 5, 31, 23);
    const QImage expected(bitmap.pixels->data(), 30, 22, qsizetype{30} * pixelSize,
                          QImage::Format_ARGB32_Premultiplied);
    EXPECT_NE(shownAt(bitmap, larger, 1), expected);
}

}  // namespace

}  // namespace velmo
