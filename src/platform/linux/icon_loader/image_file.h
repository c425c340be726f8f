#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace velmo {

/// The content of a regular file of moderate size. Empty for anything else: pipes and devices are not waited
/// for.
QByteArray readImageFile(const QString& file);

/// All that can be read from there, which is `size` bytes by what has been told of it. Empty where it turns
/// out to be more.
QByteArray readWhole(int descriptor, qsizetype size);

/// The picture in `content`, at most `side` pixels wide and high, but for those that are little larger. Null
/// where it is none, or an absurdly large one.
QImage decodeImage(const QByteArray& content, int side);

/// The side that an icon of `available` pixels is shown with where `side` are wanted: it is not blurred for
/// the sake of a pixel or two.
int shownSide(int available, int side);

}  // namespace velmo
