#include "text_label.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmo {

namespace {

constexpr qreal anyWidth = std::numeric_limits<qreal>::infinity();

qreal digitSpacing(const QFont& font, QChar digit) {
    const QFontMetricsF metrics(font);
    qreal widest = 0;
    // The ten digits of whatever script this one belongs to.
    const auto zero = static_cast<char16_t>(digit.unicode() - digit.digitValue());
    for (char16_t value = 0; value < 10; ++value)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(static_cast<char16_t>(zero + value))));
    return widest - metrics.horizontalAdvance(digit);
}

/// Spacing stands behind a character. A digit that is narrower than others gets half of what it lacks, and
/// the character before it the other half, so that it stands in the middle of its place.
QList<QTextLayout::FormatRange> digitFormats(const QFont& font, const QString& paragraph) {
    QList<qreal> spacing(paragraph.size(), 0);
    for (qsizetype index = 0; index < paragraph.size(); ++index) {
        if (!paragraph[index].isDigit())
            continue;
        const qreal half = digitSpacing(font, paragraph[index]) / 2;
        spacing[index] += half;
        if (index > 0)
            spacing[index - 1] += half;
    }
    QList<QTextLayout::FormatRange> formats;
    for (qsizetype index = 0; index < paragraph.size(); ++index) {
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(index);
        range.length = 1;
        QFont spaced = font;
        spaced.setLetterSpacing(QFont::AbsoluteSpacing, spacing[index]);
        range.format.setFont(spaced);
        if (spacing[index] != 0)
            formats.append(range);
    }
    return formats;
}

}  // namespace

TextLabel::TextLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

TextLabel::~TextLabel() = default;

void TextLabel::display(const Text& text, const Look& look) {
    if (text == text_ && look == look_)
        return;
    text_ = text;
    look_ = look;
    QString whole;
    for (const auto& run : text.runs)
        whole += QString::fromStdString(run.text);
    // Assistive programs read the label's own text.
    setText(whole);
    update();
}

/// The first character has nobody before it: it stands in the middle of its place when the line is moved.
qreal TextLabel::leadingShift(const QFont& font, const QString& paragraph) const {
    const bool isDigit = look_.hasMonospacedDigits && !paragraph.isEmpty() && paragraph[0].isDigit();
    return isDigit ? digitSpacing(font, paragraph[0]) / 2 : 0;
}

/// Of a paragraph that begins at that character of the text.
QList<QTextLayout::FormatRange> TextLabel::formats(const QFont& font, const QString& paragraph,
                                                   int start) const {
    QList<QTextLayout::FormatRange> result;
    int position = 0;
    for (const auto& run : text_.runs) {
        QTextLayout::FormatRange range;
        range.start = position - start;
        range.length = static_cast<int>(QString::fromStdString(run.text).size());
        QFont bold = font;
        bold.setWeight(QFont::DemiBold);
        range.format.setFont(bold);
        if (run.isBold)
            result.append(range);
        position += range.length;
    }
    if (look_.hasMonospacedDigits)
        result += digitFormats(font, paragraph);
    return result;
}

/// The label's own, or a smaller one where one line has no room for it.
QFont TextLabel::fontWithin(qreal width) const {
    // Letters may advance by whole pixels: a smaller font need not be narrower in proportion.
    constexpr qreal step = 0.25;
    QFont font = look_.font;
    if (!look_.minimumScale)
        return font;
    const qreal least = font.pointSizeF() * *look_.minimumScale;
    while (font.pointSizeF() > least && naturalWidth(font) > width)
        font.setPointSizeF(std::max(least, font.pointSizeF() - step));
    return font;
}

/// A paragraph that begins at that character of the text.
TextLabel::Layout TextLabel::linesOf(const QString& paragraph, int start, const QFont& font,
                                     qreal width) const {
    auto layout = std::make_shared<QTextLayout>(paragraph, font);
    QTextOption option;
    option.setWrapMode(look_.minimumScale ? QTextOption::NoWrap : QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setAlignment(look_.alignment);
    layout->setTextOption(option);
    layout->setFormats(formats(font, paragraph, start));
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine())
        line.setLineWidth(std::min(width, qreal(QWIDGETSIZE_MAX)));
    layout->endLayout();
    return layout;
}

/// One layout for each paragraph.
TextLabel::Layouts TextLabel::lines(const QFont& font, qreal width) const {
    Layouts layouts;
    int start = 0;
    for (const QString& paragraph : text().split(QLatin1Char('\n'))) {
        layouts.append(linesOf(paragraph, start, font, width));
        if (look_.minimumScale && std::isfinite(width))
            cut(layouts.back(), paragraph, start, width);
        start += static_cast<int>(paragraph.size()) + 1;
    }
    return layouts;
}

/// Until the layout fits: bold letters and digits of one width are wider than the font by itself has them.
void TextLabel::cut(Layout& layout, const QString& paragraph, int start, qreal width) const {
    const QFont font = layout->font();
    qreal room = width;
    qreal excess = widthOf(*layout) - width;
    while (excess > 0 && room > 0) {
        layout = linesOf(QFontMetricsF(font).elidedText(paragraph, Qt::ElideRight, room), start, font, width);
        excess = widthOf(*layout) - width;
        room -= std::max(excess, 1.0);
    }
}

qreal TextLabel::widthOf(const QTextLayout& layout) const {
    qreal width = 0;
    for (int index = 0; index < layout.lineCount(); ++index)
        width = std::max(width, layout.lineAt(index).naturalTextWidth());
    return leadingShift(layout.font(), layout.text()) + width;
}

QSizeF TextLabel::extentOf(const Layouts& layouts) const {
    QSizeF size(0, 0);
    for (const auto& layout : layouts) {
        size.setWidth(std::max(size.width(), widthOf(*layout)));
        for (int index = 0; index < layout->lineCount(); ++index)
            size.rheight() += layout->lineAt(index).height();
    }
    return size;
}

/// Without any line's end but the text's own.
qreal TextLabel::naturalWidth(const QFont& font) const {
    return extentOf(lines(font, anyWidth)).width();
}

QSizeF TextLabel::sizeThatFits(qreal width) const {
    QSizeF size = extentOf(lines(look_.font, look_.minimumScale ? anyWidth : width));
    if (look_.minimumScale)
        size.setWidth(std::min(size.width(), width));
    return {std::ceil(size.width()), std::ceil(size.height())};
}

qreal TextLabel::firstBaseline() const {
    return QFontMetricsF(look_.font).ascent();
}

QString TextLabel::shownText() const {
    QStringList paragraphs;
    for (const auto& layout : lines(fontWithin(width()), width()))
        paragraphs += layout->text();
    return paragraphs.join(QLatin1Char('\n'));
}

void TextLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(look_.color);
    const QFont font = fontWithin(width());
    // A text that got smaller keeps its baseline.
    qreal y = firstBaseline() - QFontMetricsF(font).ascent();
    for (const auto& layout : lines(font, width())) {
        qreal height = 0;
        for (int index = 0; index < layout->lineCount(); ++index) {
            QTextLine line = layout->lineAt(index);
            line.setPosition({0, height});
            height += line.height();
        }
        layout->draw(&painter, {leadingShift(font, layout->text()), y});
        y += height;
    }
}

}  // namespace velmo
