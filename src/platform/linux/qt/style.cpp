#include "style.h"

#include <QColor>
#include <QFontDatabase>

#include <algorithm>

namespace velmo::style {

namespace {

/// Points; a size beyond is a mistake.
constexpr double smallestFont = 5;
constexpr double largestFont = 40;

struct Colors {
    QColor window;
    QColor popover;
    QColor control;
    QColor line;
    QColor border;
    QColor text;
    QColor secondary;
    QColor accent;
};

Colors colorsOf(const Appearance& appearance) {
    if (appearance.dark) {
        return {QColor(0x23, 0x23, 0x26),  QColor(0x2c, 0x2c, 0x30),  QColor(0x3a, 0x3a, 0x3f),
                QColor(255, 255, 255, 23), QColor(255, 255, 255, 41), QColor(0xf1, 0xf1, 0xf3),
                QColor(0xa0, 0xa0, 0xa8),  QColor(0x4d, 0x8d, 0xff)};
    }
    return {QColor(0xf3, 0xf3, 0xf5), QColor(0xfa, 0xfa, 0xfc), QColor(0xff, 0xff, 0xff),
            QColor(0, 0, 0, 23),      QColor(0, 0, 0, 46),      QColor(0x1d, 0x1d, 0x20),
            QColor(0x6b, 0x6b, 0x73), QColor(0x34, 0x78, 0xf6)};
}

/// As style sheets write it.
QString css(const QColor& color) {
    return QStringLiteral("rgba(%1,%2,%3,%4)")
        .arg(color.red())
        .arg(color.green())
        .arg(color.blue())
        .arg(color.alphaF());
}

}  // namespace

QFont font(const Appearance& appearance) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    const QString description = QString::fromStdString(appearance.font).trimmed();
    const auto space = description.lastIndexOf(QLatin1Char(' '));
    bool hasSize = false;
    const double size = description.mid(space + 1).toDouble(&hasSize);
    const QString family = hasSize ? description.left(std::max<qsizetype>(space, 0)) : description;
    if (!family.isEmpty())
        font.setFamily(family);
    if (hasSize && size >= smallestFont && size <= largestFont)
        font.setPointSizeF(size);
    return font;
}

QPalette palette(const Appearance& appearance) {
    const Colors colors = colorsOf(appearance);
    QPalette palette(colors.control, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::Base, colors.control);
    palette.setColor(QPalette::PlaceholderText, colors.secondary);
    palette.setColor(QPalette::Highlight, colors.accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QString sheet(const Appearance& appearance) {
    const Colors colors = colorsOf(appearance);
    return QStringLiteral(
               "QMenu { background: %1; color: %2; border: 1px solid %3; padding: 5px; }"
               "QMenu::item { padding: 4px 14px 4px 12px; border-radius: 5px; }"
               "QMenu::item:selected { background: %4; color: white; }"
               "QMenu::item:disabled { color: %5; }"
               "QMenu::separator { height: 1px; background: %6; margin: 5px 10px; }"
               "QToolTip { background: %1; color: %2; border: 1px solid %3; padding: 3px 6px; }")
        .arg(css(colors.popover), css(colors.text), css(colors.border), css(colors.accent),
             css(colors.secondary), css(colors.line));
}

}  // namespace velmo::style
