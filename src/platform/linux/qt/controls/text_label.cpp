#include "text_label.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

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
        for (int index = 0; look_.hasMonospacedDigits && index < paragraph.size(); ++index) {
            if (!paragraph[index].isDigit())
                continue;
            QTextLayout::FormatRange range;
            range.start = index;
            range.length = 1;
            QFont spaced = look_.font;
            spaced.setLetterSpacing(QFont::AbsoluteSpacing, digitSpacing(paragraph[index]));
            range.format.setFont(spaced);
            formats.append(range);
        }
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
        layout->draw(&painter, {0, y});
        y += height;
    }
}

}  // namespace velmo
