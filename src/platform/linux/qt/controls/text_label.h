#pragma once

#include "view_content.h"

#include <QLabel>
#include <QTextLayout>

#include <memory>
#include <optional>

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
        /// Absent: wraps. Otherwise stays in one line, as `SingleLine` tells.
        std::optional<qreal> minimumScale = {};

        bool operator==(const Look&) const = default;
    };
    void display(const Text& text, const Look& look);

    /// What the text takes within a width, which may be infinite.
    QSizeF sizeThatFits(qreal width) const;
    /// From the top to the baseline of the first line.
    qreal firstBaseline() const;
    /// The text, or what an ellipsis has left of it.
    QString shownText() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    using Layout = std::shared_ptr<QTextLayout>;
    using Layouts = QList<Layout>;

    QFont fontWithin(qreal width) const;
    Layouts lines(const QFont& font, qreal width) const;
    Layout linesOf(const QString& paragraph, int start, const QFont& font, qreal width) const;
    void cut(Layout& layout, const QString& paragraph, int start, qreal width) const;
    qreal naturalWidth(const QFont& font) const;
    qreal widthOf(const QTextLayout& layout) const;
    QSizeF extentOf(const Layouts& layouts) const;
    QList<QTextLayout::FormatRange> formats(const QFont& font, const QString& paragraph, int start) const;
    qreal leadingShift(const QFont& font, const QString& paragraph) const;

    Text text_;
    Look look_;
};

}  // namespace velmo
