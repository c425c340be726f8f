#include "stack_nodes.h"

#include "linux/qt/style.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

qreal gaps(std::size_t count, qreal spacing) {
    return count > 1 ? spacing * static_cast<qreal>(count - 1) : 0;
}

}  // namespace

void HStackNode::apply(const ViewContext& context) {
    children_.update(view().children, context.forChildren(Axis::horizontal), surface());
}

qreal HStackNode::spacing() const {
    return content<HStack>().spacing.value_or(style::stackSpacing);
}

std::vector<QSizeF> HStackNode::sizes(const QSizeF& offer) const {
    std::vector<QSizeF> result;
    qreal wanted = gaps(children_.size(), spacing());
    qreal shrinkable = 0;
    std::size_t expanding = 0;
    for (const auto& child : children_) {
        result.push_back(child->sizeThatFits({unlimited, offer.height()}));
        wanted += result.back().width();
        if (child->expands(Qt::Horizontal))
            ++expanding;
        else if (child->canShrink())
            shrinkable += result.back().width();
    }
    const qreal rest = offer.width() - wanted;
    if (!std::isfinite(rest) || (rest >= 0 && expanding == 0))
        return result;
    for (std::size_t index = 0; index < children_.size(); ++index) {
        const ViewNode& child = children_[index];
        qreal width = result[index].width();
        if (rest >= 0 && child.expands(Qt::Horizontal))
            width += rest / static_cast<qreal>(expanding);
        else if (rest < 0 && !child.expands(Qt::Horizontal) && child.canShrink())
            width = std::max(0.0, width + rest * width / shrinkable);
        else if (rest < 0 && child.expands(Qt::Horizontal) && shrinkable == 0)
            width = std::max(0.0, width + rest / static_cast<qreal>(expanding));
        else
            continue;
        result[index] = {width, child.sizeThatFits({width, offer.height()}).height()};
    }
    return result;
}

qreal HStackNode::tallest(const std::vector<QSizeF>& sizes) const {
    qreal height = 0;
    if (content<HStack>().alignment != VerticalAlignment::firstTextBaseline) {
        for (const auto& size : sizes)
            height = std::max(height, size.height());
        return height;
    }
    qreal above = 0;
    qreal below = 0;
    for (std::size_t index = 0; index < sizes.size(); ++index) {
        const qreal baseline = children_[index].firstBaseline(sizes[index]);
        above = std::max(above, baseline);
        below = std::max(below, sizes[index].height() - baseline);
    }
    return above + below;
}

QSizeF HStackNode::contentSize(const QSizeF& offer) const {
    const auto all = sizes(offer);
    qreal width = gaps(all.size(), spacing());
    for (const auto& size : all)
        width += size.width();
    return {width, tallest(all)};
}

void HStackNode::placeContent(const QRectF& area) {
    const auto all = sizes(area.size());
    const auto alignment = content<HStack>().alignment;
    const bool sharesBaseline = alignment == VerticalAlignment::firstTextBaseline;
    qreal above = 0;
    for (std::size_t index = 0; sharesBaseline && index < all.size(); ++index)
        above = std::max(above, children_[index].firstBaseline(all[index]));
    const bool isMirrored = surface().layoutDirection() == Qt::RightToLeft;
    qreal x = isMirrored ? area.right() : area.left();
    for (std::size_t index = 0; index < all.size(); ++index) {
        QSizeF size = all[index];
        if (children_[index].expands(Qt::Vertical))
            size.setHeight(area.height());
        qreal y = area.top();
        if (alignment == VerticalAlignment::center)
            y += (area.height() - size.height()) / 2;
        else if (alignment == VerticalAlignment::bottom)
            y += area.height() - size.height();
        else if (sharesBaseline)
            y += above - children_[index].firstBaseline(size);
        if (isMirrored)
            x -= size.width();
        children_[index].place({{x, y}, size});
        x += isMirrored ? -spacing() : size.width() + spacing();
    }
}

bool HStackNode::contentExpands(Qt::Orientation direction) const {
    return direction == Qt::Horizontal &&
           std::any_of(children_.begin(), children_.end(),
                       [](const auto& child) { return child->expands(Qt::Horizontal); });
}

bool HStackNode::contentCanShrink() const {
    return std::any_of(children_.begin(), children_.end(),
                       [](const auto& child) { return child->canShrink(); });
}

qreal HStackNode::contentBaseline(const QSizeF& size) const {
    if (children_.empty())
        return size.height();
    const auto all = sizes(size);
    const qreal inner = children_[0].firstBaseline(all[0]);
    if (content<HStack>().alignment == VerticalAlignment::center)
        return (size.height() - all[0].height()) / 2 + inner;
    return inner;
}

void VStackNode::apply(const ViewContext& context) {
    children_.update(view().children, context.forChildren(Axis::vertical), surface());
}

qreal VStackNode::spacing() const {
    return content<VStack>().spacing.value_or(style::stackSpacing);
}

QSizeF VStackNode::contentSize(const QSizeF& offer) const {
    QSizeF size(0, gaps(children_.size(), spacing()));
    for (const auto& child : children_) {
        const QSizeF childSize = child->sizeThatFits({offer.width(), unlimited});
        size.setWidth(std::max(size.width(), childSize.width()));
        size.rheight() += childSize.height();
    }
    return size;
}

void VStackNode::placeContent(const QRectF& area) {
    const auto alignment = content<VStack>().alignment;
    const bool isMirrored = surface().layoutDirection() == Qt::RightToLeft;
    qreal y = area.top();
    for (const auto& child : children_) {
        QSizeF size = child->sizeThatFits({area.width(), unlimited});
        if (child->expands(Qt::Horizontal))
            size.setWidth(area.width());
        qreal x = area.left();
        if (alignment == HorizontalAlignment::center)
            x += (area.width() - size.width()) / 2;
        else if ((alignment == HorizontalAlignment::trailing) != isMirrored)
            x += area.width() - size.width();
        child->place({{x, y}, size});
        y += size.height() + spacing();
    }
}

bool VStackNode::contentExpands(Qt::Orientation direction) const {
    return direction == Qt::Horizontal &&
           std::any_of(children_.begin(), children_.end(),
                       [](const auto& child) { return child->expands(Qt::Horizontal); });
}

qreal VStackNode::contentBaseline(const QSizeF& size) const {
    if (children_.empty())
        return size.height();
    return children_[0].firstBaseline(children_[0].sizeThatFits({size.width(), unlimited}));
}

void GridNode::apply(const ViewContext& context) {
    children_.update(view().children, context.forChildren(Axis::horizontal), surface());
}

std::vector<qreal> GridNode::rowHeights() const {
    const auto& grid = content<Grid>();
    const auto columns = static_cast<std::size_t>(std::max(grid.columnCount, 1));
    std::vector<qreal> heights((children_.size() + columns - 1) / columns);
    for (std::size_t index = 0; index < children_.size(); ++index) {
        qreal& height = heights[index / columns];
        height = std::max(height, children_[index].sizeThatFits({grid.columnWidth, unlimited}).height());
    }
    return heights;
}

QSizeF GridNode::contentSize(const QSizeF& /*offer*/) const {
    const auto& grid = content<Grid>();
    const auto columns = static_cast<std::size_t>(std::max(grid.columnCount, 1));
    const auto heights = rowHeights();
    qreal height = gaps(heights.size(), grid.rowSpacing);
    for (const qreal row : heights)
        height += row;
    return {grid.columnWidth * static_cast<qreal>(columns) + gaps(columns, grid.columnSpacing), height};
}

void GridNode::placeContent(const QRectF& area) {
    const auto& grid = content<Grid>();
    const auto columns = static_cast<std::size_t>(std::max(grid.columnCount, 1));
    const auto heights = rowHeights();
    const bool isMirrored = surface().layoutDirection() == Qt::RightToLeft;
    qreal y = area.top();
    for (std::size_t index = 0; index < children_.size(); ++index) {
        const auto column = index % columns;
        const qreal height = heights[index / columns];
        const auto fromLeading = static_cast<qreal>(isMirrored ? columns - 1 - column : column);
        const qreal x = area.left() + fromLeading * (grid.columnWidth + grid.columnSpacing);
        const QSizeF size = children_[index].sizeThatFits({grid.columnWidth, height});
        children_[index].place({x + (grid.columnWidth - size.width()) / 2, y + (height - size.height()) / 2,
                                size.width(), size.height()});
        if (column + 1 == columns)
            y += height + grid.rowSpacing;
    }
}

}  // namespace velmo
