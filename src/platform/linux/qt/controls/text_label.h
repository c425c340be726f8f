#pragma once

#include "view_content.h"

#include <QLabel>
#include <QTextLayout>

#include <memory>

namespace velmo {

/// A text that wraps, with runs in bold and digits of equal width where asked for.
class TextLabel : public QLabel {
public:
    explicit TextLabel(QWidget* parent);
    ~TextLabel() override;

    struct Look {
        QFont font;
        QColor color;
        bool hasMonospacedDigits = false;
        Qt::Alignment alignment = Qt::AlignLeft;

        bool operator==(const Look&) const = default;
    };
    void display(const Text& text, const Look& look);

    /// What the text takes within a width, which may be infinite.
    QSizeF sizeThatFits(qreal width) const;
    /// From the top to the baseline of the first line.
    qreal firstBaseline() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QList<std::shared_ptr<QTextLayout>> lines(qreal width) const;
    QList<QTextLayout::FormatRange> digitFormats(const QString& paragraph) const;
    qreal leadingShift(const QString& paragraph) const;
    qreal digitSpacing(QChar digit) const;

    Text text_;
    Look look_;
};

}  // namespace velmo
