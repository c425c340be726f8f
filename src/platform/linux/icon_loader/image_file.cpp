#include "image_file.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo {

namespace {

constexpr qint64 largestFile = 8 << 20;
constexpr int longestImageSide = 4096;

}  // namespace

int shownSide(int available, int side) {
    return available > side * 11 / 10 ? side : available;
}

QByteArray readImageFile(const QString& file) {
    const int descriptor =
        open(QFile::encodeName(file).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return {};
    QByteArray content;
    struct stat facts {};
    if (fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_size > 0 &&
        facts.st_size <= largestFile) {
        content.resize(facts.st_size);
        const ssize_t size = read(descriptor, content.data(), static_cast<std::size_t>(content.size()));
        content.resize(size > 0 ? size : 0);
    }
    close(descriptor);
    return content;
}

QImage decodeImage(const QByteArray& content, int side) {
    QBuffer buffer;
    buffer.setData(content);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty() || size.width() > longestImageSide ||
        size.height() > longestImageSide)
        return {};
    const int longest = std::max(size.width(), size.height());
    const bool isDrawing = reader.format().startsWith("svg");
    const int shown = isDrawing ? side : shownSide(longest, side);
    const QSize target = size.scaled(shown, shown, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    if (isDrawing)
        reader.setScaledSize(target);
    QImage image = reader.read();
    if (image.isNull() || image.size() == target)
        return image;
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace velmo
