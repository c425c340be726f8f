#pragma once

#include "linux/icons/icon_request.h"

#include <QImage>
#include <QString>

#include <optional>

namespace velmo {

struct FoundIcon {
    /// Null where there is none. No side is longer than the one that was asked for, but for icons that are
    /// little larger: those are sharper as they are.
    QImage image;
    bool isTemplate = false;
};

/// Finds icons in the theme, in folders of programs and in files.
class IconFinder {
public:
    FoundIcon find(const IconRequest& request);

private:
    void useTheme(const QString& theme, const QString& folder);
    static QImage fromFolder(const QString& folder, const QString& name, int side);
    static QImage fromTheme(const QString& name, int side, bool& isTemplate);

    /// What was used last, if anything.
    std::optional<QString> theme_;
    QString folder_;
};

}  // namespace velmo
