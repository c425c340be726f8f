#include "style.h"

#include "linux/text/style_size.h"

#include <QFontDatabase>
#include <QFontInfo>

#include <algorithm>
#include <cmath>

namespace velmo::style {

namespace {

/// Points; a size beyond is a mistake.
constexpr double smallestFont = 5;
constexpr double largestFont = 40;
constexpr double pixelsPerPoint = 96.0 / 72.0;

struct Colors {
    QColor window;
    QColor floating;
    QColor group;
    QColor control;
    QColor hairline;
    QColor border;
    QColor track;
    QColor text;
    QColor secondary;
    QColor accent;
    QColor red;
    QColor green;
    QColor orange;
};

Colors colorsOf(const Appearance& appearance) {
    if (appearance.dark) {
        return {QColor(0x23, 0x23, 0x26), QColor(0x2c, 0x2c, 0x30),  QColor(0x2c, 0x2c, 0x30),
                QColor(0x3a, 0x3a, 0x3f), QColor(255, 255, 255, 23), QColor(255, 255, 255, 41),
                QColor(0x56, 0x56, 0x5c), QColor(0xf1, 0xf1, 0xf3),  QColor(0xa0, 0xa0, 0xa8),
                QColor(0x4d, 0x8d, 0xff), QColor(0xff, 0x6b, 0x61),  QColor(0x3d, 0xc9, 0x5f),
                QColor(0xff, 0x9f, 0x2e)};
    }
    return {QColor(0xf3, 0xf3, 0xf5), QColor(0xfa, 0xfa, 0xfc), QColor(0xff, 0xff, 0xff),
            QColor(0xff, 0xff, 0xff), QColor(0, 0, 0, 23),      QColor(0, 0, 0, 46),
            QColor(0xd9, 0xd9, 0xdd), QColor(0x1d, 0x1d, 0x20), QColor(0x6b, 0x6b, 0x73),
            QColor(0x34, 0x78, 0xf6), QColor(0xd7, 0x2c, 0x20), QColor(0x27, 0xa1, 0x48),
            QColor(0xd9, 0x7c, 0x06)};
}

struct Current {
    Appearance appearance;
    Colors colors = colorsOf({});
    QColor platformAccent;
};

Current& current() {
    static Current value;
    return value;
}

/// As the eye takes it, from 0 to 1.
double luminance(const QColor& color) {
    constexpr double gamma = 2.2;
    return 0.2126 * std::pow(color.redF(), gamma) + 0.7152 * std::pow(color.greenF(), gamma) +
           0.0722 * std::pow(color.blueF(), gamma);
}

/// White text can be read on it, and it can be read on our backgrounds.
QColor readableAccent(QColor color, bool dark) {
    constexpr double lightest = 0.35;
    constexpr double darkest = 0.12;
    constexpr int step = 105;
    constexpr int mostSteps = 60;
    for (int count = 0; count < mostSteps && luminance(color) > lightest; ++count)
        color = color.darker(step);
    if (dark && luminance(color) < darkest) {
        // Black has no brightness that could grow.
        color = color.toHsl();
        for (int count = 0; count < mostSteps && luminance(color) < darkest; ++count)
            color.setHslF(color.hslHueF(), color.hslSaturationF(),
                          std::min(color.lightnessF() + 0.02F, 1.0F));
        color = color.toRgb();
    }
    return color;
}

/// As style sheets write it.
QString css(const QColor& color) {
    return QStringLiteral("rgba(%1,%2,%3,%4)")
        .arg(color.red())
        .arg(color.green())
        .arg(color.blue())
        .arg(color.alphaF());
}

QFont::Weight weightOf(FontWeight weight) {
    switch (weight) {
        case FontWeight::regular:
            return QFont::Normal;
        case FontWeight::medium:
            return QFont::Medium;
        case FontWeight::semibold:
            return QFont::DemiBold;
        case FontWeight::bold:
            return QFont::Bold;
    }
    return QFont::Normal;
}

}  // namespace

void setPlatformPalette(const QPalette& palette, const QPalette& usual) {
    const QColor highlight = palette.color(QPalette::Highlight);
    // A desktop without a palette of its own has the toolkit's, which is nobody's choice.
    current().platformAccent = highlight == usual.color(QPalette::Highlight) ? QColor() : highlight;
}

void setAppearance(const Appearance& appearance) {
    current().appearance = appearance;
    current().colors = colorsOf(appearance);
    QColor accent = current().platformAccent;
    if (const auto& wanted = appearance.accent)
        accent = QColor::fromRgbF(static_cast<float>(wanted->red), static_cast<float>(wanted->green),
                                  static_cast<float>(wanted->blue));
    if (accent.isValid())
        current().colors.accent = readableAccent(accent, appearance.dark);
}

const Appearance& appearance() {
    return current().appearance;
}

QFont font() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    const QString description = QString::fromStdString(appearance().font).trimmed();
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

QFont font(const Font& wanted) {
    QFont result = font();
    const double body =
        result.pointSizeF() > 0 ? result.pointSizeF() * pixelsPerPoint : QFontInfo(result).pixelSize();
    if (wanted.isMonospaced)
        result.setFamily(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    const bool isHeadline = wanted.style == TextStyle::headline;
    result.setWeight(
        weightOf(wanted.weight.value_or(isHeadline ? FontWeight::semibold : FontWeight::regular)));
    const double pixels = wanted.size.value_or(body * styleSize(wanted.style));
    // Sizes in points of the screen's scale; a font's own points would take the resolution's way.
    result.setPointSizeF(pixels / pixelsPerPoint);
    return result;
}

QColor color(const SemanticColor& wanted) {
    const Colors& colors = current().colors;
    QColor result;
    switch (wanted.role) {
        case ColorRole::clear:
            return Qt::transparent;
        case ColorRole::primary:
            result = colors.text;
            break;
        case ColorRole::secondary:
            result = colors.secondary;
            break;
        case ColorRole::accent:
            result = colors.accent;
            break;
        case ColorRole::white:
            result = Qt::white;
            break;
        case ColorRole::red:
            result = colors.red;
            break;
        case ColorRole::green:
            result = colors.green;
            break;
        case ColorRole::orange:
            result = colors.orange;
            break;
    }
    result.setAlphaF(static_cast<float>(result.alphaF() * std::clamp(wanted.opacity, 0.0, 1.0)));
    return result;
}

QPalette palette() {
    const Colors& colors = current().colors;
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

QString sheet() {
    const Colors& colors = current().colors;
    return QStringLiteral(
               "QMenu { background: %1; color: %2; border: 1px solid %3; padding: 5px; menu-scrollable: 1; }"
               "QMenu::item { padding: 4px 14px 4px 12px; border-radius: 5px; }"
               "QMenu::item:selected { background: %4; color: white; }"
               "QMenu::item:disabled { color: %5; }"
               "QMenu::icon { left: 8px; }"
               "QMenu::separator { height: 1px; background: %6; margin: 5px 10px; }"
               "QScrollBar:vertical { background: transparent; width: 10px; margin: 2px; }"
               "QScrollBar::handle:vertical { background: %7; border-radius: 3px; min-height: 30px; }"
               "QScrollBar:horizontal { background: transparent; height: 10px; margin: 2px; }"
               "QScrollBar::handle:horizontal { background: %7; border-radius: 3px; min-width: 30px; }"
               "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
               "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }"
               "QLineEdit#field { background: %8; color: %2; border: 1px solid %3; border-radius: 6px;"
               " padding: 3px 7px; selection-background-color: %4; }"
               "QLineEdit#field:focus { border: 2px solid %4; padding: 2px 6px; }"
               "QComboBox QAbstractItemView { background: %1; color: %2; border: 1px solid %3;"
               " padding: 4px; outline: 0; selection-background-color: %4; selection-color: white; }"
               "QScrollArea { background: transparent; border: 0; }"
               "QToolTip { background: %1; color: %2; border: 1px solid %3; padding: 3px 6px; }"
               "QMessageBox { background: %9; }"
               "QMessageBox QLabel { color: %2; min-width: 280px; }"
               "QMessageBox QLabel#qt_msgbox_label { font-weight: bold; }"
               "QMessageBox QPushButton { background: %8; color: %2; border: 1px solid %3; border-radius: "
               "6px;"
               " padding: 4px 15px; min-width: 60px; }"
               "QMessageBox QPushButton:focus { border: 2px solid %4; padding: 3px 14px; }"
               "QMessageBox QPushButton:pressed { background: %7; }")
        .arg(css(colors.floating), css(colors.text), css(colors.border), css(colors.accent),
             css(colors.secondary), css(colors.hairline), css(colors.track), css(colors.control),
             css(colors.window));
}

QColor window() {
    return current().colors.window;
}

QColor floating() {
    return current().colors.floating;
}

QColor group() {
    return current().colors.group;
}

QColor control() {
    return current().colors.control;
}

QColor hairline() {
    return current().colors.hairline;
}

QColor border() {
    return current().colors.border;
}

QColor track() {
    return current().colors.track;
}

}  // namespace velmo::style
