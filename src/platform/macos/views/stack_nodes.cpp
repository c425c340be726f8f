#include "stack_nodes.h"

#include "leaf_nodes.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>

namespace velmo::macos {
namespace {

/// The distance that the system's own stacks keep.
constexpr double usualSpacing = 8;

double gaps(std::size_t count, double spacing) {
    return count > 1 ? spacing * static_cast<double>(count - 1) : 0;
}

bool anyExpands(const ViewNodes& nodes) {
    return std::any_of(nodes.begin(), nodes.end(),
                       [](const auto& node) { return node->expands(Axis::horizontal); });
}

/// True where one of the views bears these words as its name, alone or with what it does behind them.
bool isNamed(const Views& views, const std::string& words) {
    const auto bearsThem = [&](const Modifier& modifier) {
        const auto* name = std::get_if<AccessibilityLabel>(&modifier);
        return name != nullptr && (name->text == words || name->text.starts_with(words + ", "));
    };
    return std::any_of(views.begin(), views.end(), [&](const View& view) {
        return std::any_of(view.modifiers.begin(), view.modifiers.end(), bearsThem);
    });
}

/// What a view begins with; null where that is no text of one style.
const TextRun* leadingText(const View& view) {
    if (std::holds_alternative<VStack>(view.content) && !view.children.empty())
        return leadingText(view.children.front());
    const auto* text = std::get_if<Text>(&view.content);
    return text != nullptr && text->runs.size() == 1 ? &text->runs.front() : nullptr;
}

}  // namespace

void HStackNode::apply(const ViewContext& context) {
    const Views& views = view().children;
    children_.update(views, context.forChildren(Axis::horizontal), surface());
    // Nobody is to be told of a control's name once more.
    for (const auto& child : children_) {
        const auto* words = leadingText(child->view());
        if (const auto label = words != nullptr ? as<NSTextField>(child->lowest()) : NSTextField())
            setAccessibilityElement(label, !isNamed(views, words->text));
    }
}

double HStackNode::spacing() const {
    return content<HStack>().spacing.value_or(usualSpacing);
}

std::vector<Size> HStackNode::sizes(const Size& offer) const {
    std::vector<Size> result;
    double wanted = gaps(children_.size(), spacing());
    double shrinkable = 0;
    double expanding = 0;
    for (const auto& child : children_) {
        result.push_back(child->sizeThatFits({unlimited, offer.height}));
        wanted += result.back().width;
        if (child->expands(Axis::horizontal))
            ++expanding;
        else if (child->canShrink())
            shrinkable += result.back().width;
    }
    const double rest = offer.width - wanted;
    if (!std::isfinite(rest) || (rest >= 0 && expanding == 0))
        return result;
    for (std::size_t index = 0; index < children_.size(); ++index) {
        const ViewNode& child = children_[index];
        const bool isExpanding = child.expands(Axis::horizontal);
        double width = result[index].width;
        if (isExpanding && (rest >= 0 || shrinkable == 0))
            width += rest / expanding;
        else if (!isExpanding && rest < 0 && child.canShrink())
            width += rest * width / shrinkable;
        else
            continue;
        // A text that was measured in a fraction of a point more would not fit.
        width = std::max(std::floor(width), 0.0);
        result[index] = {width, child.sizeThatFits({width, offer.height}).height};
    }
    return result;
}

double HStackNode::sharedBaseline(const std::vector<Size>& sizes) const {
    double above = 0;
    if (content<HStack>().alignment == VerticalAlignment::firstTextBaseline) {
        for (std::size_t index = 0; index < sizes.size(); ++index)
            above = std::max(above, children_[index].firstBaseline(sizes[index]));
    }
    return above;
}

double HStackNode::heightOf(const std::vector<Size>& sizes) const {
    const double baseline = sharedBaseline(sizes);
    double height = 0;
    for (std::size_t index = 0; index < sizes.size(); ++index) {
        const double shift = baseline > 0 ? baseline - children_[index].firstBaseline(sizes[index]) : 0;
        height = std::max(height, shift + sizes[index].height);
    }
    return height;
}

Size HStackNode::contentSize(const Size& offer) const {
    const auto all = sizes(offer);
    const double width = std::accumulate(all.begin(), all.end(), gaps(all.size(), spacing()),
                                         [](double sum, const Size& size) { return sum + size.width; });
    return {width, heightOf(all)};
}

double HStackNode::top(std::size_t index, const Size& size, const Rect& area, double baseline) const {
    switch (content<HStack>().alignment) {
        case VerticalAlignment::center:
            return area.y + (area.height - size.height) / 2;
        case VerticalAlignment::bottom:
            return area.maxY() - size.height;
        case VerticalAlignment::firstTextBaseline:
            return area.y + baseline - children_[index].firstBaseline(size);
        case VerticalAlignment::top:
            break;
    }
    return area.y;
}

void HStackNode::placeContent(const Rect& area) {
    const auto all = sizes({area.width, area.height});
    const double baseline = sharedBaseline(all);
    double x = area.x;
    for (std::size_t index = 0; index < all.size(); ++index) {
        Size size = all[index];
        if (children_[index].expands(Axis::vertical))
            size.height = area.height;
        children_[index].place({x, top(index, size, area, baseline), size.width, size.height});
        x += size.width + spacing();
    }
}

bool HStackNode::contentExpands(Axis direction) const {
    return direction == Axis::horizontal && anyExpands(children_);
}

bool HStackNode::contentCanShrink() const {
    return std::any_of(children_.begin(), children_.end(),
                       [](const auto& child) { return child->canShrink(); });
}

double HStackNode::contentBaseline(const Size& size) const {
    if (children_.empty())
        return size.height;
    const auto all = sizes(size);
    return top(0, all[0], {0, 0, size.width, size.height}, sharedBaseline(all)) +
           children_[0].firstBaseline(all[0]);
}

void VStackNode::apply(const ViewContext& context) {
    children_.update(view().children, context.forChildren(Axis::vertical), surface());
}

double VStackNode::spacing() const {
    return content<VStack>().spacing.value_or(usualSpacing);
}

Size VStackNode::contentSize(const Size& offer) const {
    Size size{0, gaps(children_.size(), spacing())};
    for (const auto& child : children_) {
        const Size childSize = child->sizeThatFits({offer.width, unlimited});
        size.width = std::max(size.width, childSize.width);
        size.height += childSize.height;
    }
    return size;
}

void VStackNode::placeContent(const Rect& area) {
    const auto alignment = content<VStack>().alignment;
    double y = area.y;
    for (const auto& child : children_) {
        Size size = child->sizeThatFits({area.width, unlimited});
        if (child->expands(Axis::horizontal))
            size.width = area.width;
        double x = area.x;
        if (alignment == HorizontalAlignment::center)
            x += (area.width - size.width) / 2;
        else if (alignment == HorizontalAlignment::trailing)
            x += area.width - size.width;
        child->place({x, y, size.width, size.height});
        y += size.height + spacing();
    }
}

bool VStackNode::contentExpands(Axis direction) const {
    return direction == Axis::horizontal && anyExpands(children_);
}

double VStackNode::contentBaseline(const Size& size) const {
    if (children_.empty())
        return size.height;
    return children_[0].firstBaseline(children_[0].sizeThatFits({size.width, unlimited}));
}

void GridNode::apply(const ViewContext& context) {
    children_.update(view().children, context.forChildren(Axis::horizontal), surface());
}

std::size_t GridNode::columnCount() const {
    return static_cast<std::size_t>(std::max(content<Grid>().columnCount, 1));
}

std::vector<double> GridNode::rowHeights() const {
    const std::size_t columns = columnCount();
    std::vector<double> heights((children_.size() + columns - 1) / columns);
    for (std::size_t index = 0; index < children_.size(); ++index) {
        double& height = heights[index / columns];
        height =
            std::max(height, children_[index].sizeThatFits({content<Grid>().columnWidth, unlimited}).height);
    }
    return heights;
}

Size GridNode::contentSize(const Size& /*offer*/) const {
    const auto& grid = content<Grid>();
    const std::size_t columns = columnCount();
    const auto heights = rowHeights();
    return {grid.columnWidth * static_cast<double>(columns) + gaps(columns, grid.columnSpacing),
            std::accumulate(heights.begin(), heights.end(), gaps(heights.size(), grid.rowSpacing))};
}

void GridNode::placeContent(const Rect& area) {
    const auto& grid = content<Grid>();
    const std::size_t columns = columnCount();
    const auto heights = rowHeights();
    double y = area.y;
    for (std::size_t index = 0; index < children_.size(); ++index) {
        const std::size_t column = index % columns;
        const double height = heights[index / columns];
        const double x = area.x + static_cast<double>(column) * (grid.columnWidth + grid.columnSpacing);
        const Size size = children_[index].sizeThatFits({grid.columnWidth, height});
        children_[index].place({x + (grid.columnWidth - size.width) / 2, y + (height - size.height) / 2,
                                size.width, size.height});
        if (column + 1 == columns)
            y += height + grid.rowSpacing;
    }
}

}  // namespace velmo::macos
