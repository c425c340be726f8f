#include "form_nodes.h"

#include "linux/qt/style.h"
#include "linux/qt/views/leaf_nodes.h"

#include <QAccessible>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr qreal formMargin = 20;
constexpr qreal sectionGap = 18;
constexpr qreal rowSidePadding = 12;
constexpr qreal rowPadding = 8;
constexpr qreal leastRowHeight = 36;
constexpr qreal headerGap = 6;
constexpr qreal footerGap = 6;

}  // namespace

FormNode::FormNode(QWidget& surface) : ViewNode(surface), area_(std::make_unique<QScrollArea>(&surface)) {
    area_->setFrameShape(QFrame::NoFrame);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area_->setFocusPolicy(Qt::NoFocus);
    auto* rows = new QWidget;
    rows->setAttribute(Qt::WA_StyledBackground, false);
    area_->setWidget(rows);
    area_->viewport()->setAutoFillBackground(false);
    rows->setAutoFillBackground(false);
    area_->show();
}

FormNode::~FormNode() {
    // The sections' widgets lie on the area's.
    sections_ = {};
}

void FormNode::apply(const ViewContext& context) {
    sections_.update(view().children, context.forChildren(Axis::vertical), *area_->widget());
}

qreal FormNode::heightFor(qreal width) const {
    qreal height = 2 * formMargin;
    for (const auto& section : sections_)
        height += section->sizeThatFits({width - 2 * formMargin, unlimited}).height();
    return height + (sections_.empty() ? 0 : sectionGap * static_cast<qreal>(sections_.size() - 1));
}

QSizeF FormNode::contentSize(const QSizeF& offer) const {
    constexpr qreal usualWidth = 480;
    const qreal width = std::isfinite(offer.width()) ? offer.width() : usualWidth;
    return {width, std::isfinite(offer.height()) ? offer.height() : heightFor(width)};
}

void FormNode::placeContent(const QRectF& area) {
    area_->setGeometry(area.toAlignedRect());
    const qreal height = std::ceil(heightFor(area.width()));
    // Not wider than what is seen of it, so that it never scrolls sideways. The scroll bar stands in the
    // margin. While it is hidden, the area does not know how much of it is seen.
    const qreal bar = height > area.height() ? area_->verticalScrollBar()->sizeHint().width() : 0;
    area_->widget()->resize(static_cast<int>(area.width() - bar), static_cast<int>(height));
    placeSections(area.width(), bar);
}

void FormNode::placeSections(qreal width, qreal bar) {
    const bool isMirrored = surface().layoutDirection() == Qt::RightToLeft;
    const qreal x = formMargin - (isMirrored ? bar : 0);
    qreal y = formMargin;
    for (const auto& section : sections_) {
        const qreal sectionWidth = width - 2 * formMargin;
        const qreal height = section->sizeThatFits({sectionWidth, unlimited}).height();
        section->place({x, y, sectionWidth, height});
        y += height + sectionGap;
    }
}

class SectionNode::Group : public QWidget {
public:
    explicit Group(QWidget& surface) : QWidget(&surface) {
        setProperty("accessibleRole", QAccessible::Grouping);
        lower();
        show();
    }

    /// Where rows meet, from the top of the group.
    void setSeparators(std::vector<qreal> separators) {
        separators_ = std::move(separators);
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(style::hairline(), 1));
        painter.setBrush(style::group());
        constexpr qreal half = 0.5;
        painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), style::groupRadius,
                                style::groupRadius);
        for (const qreal y : separators_) {
            painter.fillRect(QRectF(rowSidePadding, std::round(y), width() - rowSidePadding - 1, 1),
                             style::hairline());
        }
    }

private:
    std::vector<qreal> separators_;
};

SectionNode::SectionNode(QWidget& surface)
    : ViewNode(surface),
      header_(std::make_unique<TextLabel>(&surface)),
      group_(std::make_unique<Group>(surface)),
      footer_(std::make_unique<TextLabel>(&surface)) {}

SectionNode::~SectionNode() = default;

void SectionNode::apply(const ViewContext& context) {
    const auto& section = content<Section>();
    ViewContext header = context;
    header.font = {.style = TextStyle::headline};
    header_->display(Text{{{section.header}}}, lookIn(header));
    header_->setVisible(!section.header.empty());
    ViewContext footer = context;
    footer.font = {.style = TextStyle::caption};
    footer.color = {ColorRole::secondary};
    footer_->display(Text{{{section.footer}}}, lookIn(footer));
    footer_->setVisible(!section.footer.empty());
    group_->setAccessibleName(QString::fromStdString(section.header));
    rows_.update(view().children, context.forChildren(Axis::vertical), surface());
}

qreal SectionNode::rowHeight(const ViewNode& row, qreal width) const {
    const qreal inner = row.sizeThatFits({width - 2 * rowSidePadding, unlimited}).height();
    return std::max(std::ceil(inner) + 2 * rowPadding, leastRowHeight);
}

QSizeF SectionNode::contentSize(const QSizeF& offer) const {
    qreal height = 0;
    const qreal textWidth = offer.width() - 2 * rowSidePadding;
    if (!header_->text().isEmpty())
        height += header_->sizeThatFits(textWidth).height() + headerGap;
    for (const auto& row : rows_)
        height += rowHeight(*row, offer.width());
    if (!footer_->text().isEmpty())
        height += footerGap + footer_->sizeThatFits(textWidth).height();
    return {offer.width(), height};
}

void SectionNode::placeContent(const QRectF& area) {
    const QRectF inner = area.adjusted(rowSidePadding, 0, -rowSidePadding, 0);
    qreal y = area.top();
    if (!header_->text().isEmpty()) {
        const qreal height = header_->sizeThatFits(inner.width()).height();
        header_->setGeometry(QRectF(inner.left(), y, inner.width(), height).toAlignedRect());
        y += height + headerGap;
    }
    const qreal top = y;
    std::vector<qreal> separators;
    for (const auto& row : rows_) {
        const qreal height = rowHeight(*row, area.width());
        QSizeF size = row->sizeThatFits({inner.width(), unlimited});
        if (row->expands(Qt::Horizontal))
            size.setWidth(inner.width());
        const bool isMirrored = surface().layoutDirection() == Qt::RightToLeft;
        row->place(
            {{isMirrored ? inner.right() - size.width() : inner.left(), y + (height - size.height()) / 2},
             size});
        y += height;
        separators.push_back(y - top);
    }
    if (!separators.empty())
        separators.pop_back();
    group_->setSeparators(std::move(separators));
    group_->setGeometry(QRectF(area.left(), top, area.width(), y - top).toAlignedRect());
    if (!footer_->text().isEmpty()) {
        const qreal height = footer_->sizeThatFits(inner.width()).height();
        footer_->setGeometry(QRectF(inner.left(), y + footerGap, inner.width(), height).toAlignedRect());
    }
}

}  // namespace velmo
