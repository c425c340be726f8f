#include "image_file.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

namespace velmo {

namespace {

constexpr qsizetype largestFile = 8 << 20;
constexpr int longestImageSide = 4096;

/// Opening a file has effects of its own where it is a pipe, whose writer goes on, or a device: it is looked
/// at first, and it is that file which is opened. Negative where it is none of moderate size, which is told
/// otherwise.
int openImageFile(const QString& file, qsizetype& size) {
    const int found = open(QFile::encodeName(file).constData(), O_PATH | O_CLOEXEC);
    if (found < 0)
        return -1;
    struct stat facts {};
    int opened = -1;
    if (fstat(found, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_size > 0 &&
        facts.st_size <= largestFile) {
        size = facts.st_size;
        opened = open(("/proc/self/fd/" + std::to_string(found)).c_str(), O_RDONLY | O_CLOEXEC);
    }
    close(found);
    return opened;
}

}  // namespace

int shownSide(int available, int side) {
    return available > side * 11 / 10 ? side : available;
}

QByteArray readWhole(int descriptor, qsizetype size) {
    // One byte more shows whether it has become longer meanwhile.
    QByteArray content(size + 1, Qt::Uninitialized);
    qsizetype length = 0;
    while (length < content.size()) {
        const ssize_t count =
            read(descriptor, content.data() + length, static_cast<std::size_t>(content.size() - length));
        if (count <= 0)
            break;
        length += count;
    }
    content.truncate(length);
    return length > size ? QByteArray() : content;
}

QByteArray readImageFile(const QString& file) {
    qsizetype size = 0;
    const int descriptor = openImageFile(file, size);
    if (descriptor < 0)
        return {};
    QByteArray content = readWhole(descriptor, size);
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
