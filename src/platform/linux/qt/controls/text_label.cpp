#include "text_label.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmo {

namespace {

QTextLayout::FormatRange boldRange(int start, int length, const QFont& font) {
    QTextLayout::FormatRange range;
    range.start = start;
    range.length = length;
    QFont bold = font;
    bold.setWeight(QFont::DemiBold);
    range.format.setFont(bold);
    return range;
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

qreal TextLabel::digitSpacing(QChar digit) const {
    const QFontMetricsF metrics(look_.font);
    qreal widest = 0;
    // The ten digits of whatever script this one belongs to.
    const auto zero = static_cast<char16_t>(digit.unicode() - digit.digitValue());
    for (char16_t value = 0; value < 10; ++value)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(static_cast<char16_t>(zero + value))));
    return widest - metrics.horizontalAdvance(digit);
}

/// Spacing stands behind a character. A digit that is narrower than others gets half of what it lacks, and
/// the character before it the other half, so that it stands in the middle of its place.
QList<QTextLayout::FormatRange> TextLabel::digitFormats(const QString& paragraph) const {
    QList<qreal> spacing(paragraph.size(), 0);
    for (qsizetype index = 0; index < paragraph.size(); ++index) {
        if (!paragraph[index].isDigit())
            continue;
        const qreal lack = digitSpacing(paragraph[index]);
        spacing[index] += index > 0 ? lack / 2 : lack;
        if (index > 0)
            spacing[index - 1] += lack / 2;
    }
    QList<QTextLayout::FormatRange> formats;
    for (qsizetype index = 0; index < paragraph.size(); ++index) {
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(index);
        range.length = 1;
        QFont spaced = look_.font;
        spaced.setLetterSpacing(QFont::AbsoluteSpacing, spacing[index]);
        range.format.setFont(spaced);
        if (spacing[index] != 0)
            formats.append(range);
    }
    return formats;
}

/// The first character has nobody before it: it stands in the middle of its place when the line is moved.
qreal TextLabel::leadingShift(const QString& paragraph) const {
    const bool isDigit = look_.hasMonospacedDigits && !paragraph.isEmpty() && paragraph[0].isDigit();
    return isDigit ? digitSpacing(paragraph[0]) / 2 : 0;
}

/// One layout for each paragraph.
QList<std::shared_ptr<QTextLayout>> TextLabel::lines(qreal width) const {
    QList<QTextLayout::FormatRange> bold;
    int position = 0;
    for (const auto& run : text_.runs) {
        const auto length = static_cast<int>(QString::fromStdString(run.text).size());
        if (run.isBold)
            bold.append(boldRange(position, length, look_.font));
        position += length;
    }
    QList<std::shared_ptr<QTextLayout>> layouts;
    int start = 0;
    for (const QString& paragraph : text().split(QLatin1Char('\n'))) {
        auto layout = std::make_shared<QTextLayout>(paragraph, look_.font);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        option.setAlignment(look_.alignment);
        layout->setTextOption(option);
        QList<QTextLayout::FormatRange> formats;
        for (auto range : bold) {
            range.start -= start;
            formats.append(range);
        }
        if (look_.hasMonospacedDigits)
            formats += digitFormats(paragraph);
        layout->setFormats(formats);
        layout->beginLayout();
        for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine())
            line.setLineWidth(std::min(width, qreal(QWIDGETSIZE_MAX)));
        layout->endLayout();
        layouts.append(layout);
        start += static_cast<int>(paragraph.size()) + 1;
    }
    return layouts;
}

QSizeF TextLabel::sizeThatFits(qreal width) const {
    QSizeF size(0, 0);
    for (const auto& layout : lines(width)) {
        for (int index = 0; index < layout->lineCount(); ++index) {
            const QTextLine line = layout->lineAt(index);
            size.setWidth(std::max(size.width(), line.naturalTextWidth()));
            size.rheight() += line.height();
        }
    }
    return {std::ceil(size.width()), std::ceil(size.height())};
}

qreal TextLabel::firstBaseline() const {
    return QFontMetricsF(look_.font).ascent();
}

void TextLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(look_.color);
    qreal y = 0;
    for (const auto& layout : lines(width())) {
        qreal height = 0;
        for (int index = 0; index < layout->lineCount(); ++index) {
            QTextLine line = layout->lineAt(index);
            line.setPosition({0, height});
            height += line.height();
        }
        layout->draw(&painter, {leadingShift(layout->text()), y});
        y += height;
    }
}

}  // namespace velmo
