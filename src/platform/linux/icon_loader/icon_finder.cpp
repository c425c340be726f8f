#include "icon_finder.h"

#include "linux/icon_loader/image_file.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>
#include <QPixmapCache>

#include <algorithm>

namespace velmo {

namespace {

constexpr const char* lastTheme = "Adwaita";
/// Symbols are drawn on a grid of 16 where other icons have 20 pixels.
constexpr int symbolParts = 4;
constexpr int iconParts = 5;

bool isSymbolName(const QString& name) {
    return name.endsWith(QLatin1String("-symbolic")) || name.endsWith(QLatin1String(".symbolic"));
}

int symbolSide(int side) {
    return std::max(side * symbolParts / iconParts, 1);
}

/// Where icon themes lie: the user's first. None depends on where the program was started.
QStringList themeFolders() {
    const QString home = QDir::homePath();
    QString own = qEnvironmentVariable("XDG_DATA_HOME");
    if (!own.startsWith(QLatin1Char('/')))
        own = home + QLatin1String("/.local/share");
    QStringList folders = {home + QLatin1String("/.icons"), own + QLatin1String("/icons")};
    QString shared = qEnvironmentVariable("XDG_DATA_DIRS");
    if (shared.isEmpty())
        shared = QStringLiteral("/usr/local/share:/usr/share");
    for (const auto& folder : shared.split(QLatin1Char(':'))) {
        if (folder.startsWith(QLatin1Char('/')))
            folders << folder + QLatin1String("/icons");
    }
    return folders;
}

}  // namespace

FoundIcon IconFinder::find(const IconRequest& request) {
    if (!request.data.empty())
        return {decodeImage(QByteArray::fromStdString(request.data), request.side), false};
    const QString name = QString::fromStdString(request.name);
    if (name.isEmpty())
        return {};
    if (name.startsWith(QLatin1Char('/'))) {
        const bool isSymbol = isSymbolName(QFileInfo(name).completeBaseName());
        return {decodeImage(readImageFile(name), isSymbol ? symbolSide(request.side) : request.side),
                isSymbol};
    }
    // Names are names: none leads out of the folders that are looked in.
    if (name.contains(QLatin1Char('/')))
        return {};
    const QString folder = QString::fromStdString(request.folder);
    FoundIcon found;
    if (folder.startsWith(QLatin1Char('/'))) {
        found.isTemplate = isSymbolName(name);
        found.image = fromFolder(folder, name, found.isTemplate ? symbolSide(request.side) : request.side);
    }
    if (found.image.isNull()) {
        useTheme(QString::fromStdString(request.theme), folder);
        found.image = fromTheme(name, request.side, found.isTemplate);
    }
    return found;
}

void IconFinder::useTheme(const QString& theme, const QString& folder) {
    const bool isPrivate = folder.startsWith(QLatin1Char('/'));
    // A program's own files may have changed since they were looked at.
    if (isPrivate)
        QPixmapCache::clear();
    if (theme == theme_ && folder == folder_ && !isPrivate)
        return;
    theme_ = theme;
    folder_ = folder;
    QStringList folders = themeFolders();
    if (isPrivate)
        folders.prepend(folder);
    QIcon::setThemeSearchPaths(folders);
    QIcon::setFallbackSearchPaths({QStringLiteral("/usr/share/pixmaps")});
    QIcon::setFallbackThemeName(QLatin1String(lastTheme));
    QIcon::setThemeName(theme.isEmpty() ? QString::fromLatin1(lastTheme) : theme);
}

QImage IconFinder::fromFolder(const QString& folder, const QString& name, int side) {
    for (const auto* ending : {".svg", ".png", ".xpm"}) {
        QImage image =
            decodeImage(readImageFile(folder + QLatin1Char('/') + name + QLatin1String(ending)), side);
        if (!image.isNull())
            return image;
    }
    return {};
}

QImage IconFinder::fromTheme(const QString& name, int side, bool& isTemplate) {
    const QIcon icon = QIcon::fromTheme(name);
    // A symbol that the theme lacks may have been replaced by a picture.
    isTemplate = isSymbolName(icon.name());
    const int wanted = isTemplate ? symbolSide(side) : side;
    int shown = wanted;
    for (const auto& size : icon.availableSizes()) {
        if (size.width() > wanted && shownSide(size.width(), wanted) == size.width())
            shown = size.width();
    }
    return icon.pixmap(QSize(shown, shown), 1.0).toImage();
}

}  // namespace velmo
