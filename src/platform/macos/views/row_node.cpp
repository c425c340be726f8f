#include "row_node.h"

#include "leaf_nodes.h"

#include <algorithm>
#include <cmath>

namespace velmo::macos {
namespace {

constexpr double titleGap = 12;
/// Of a row's width, what a control leaves to a long title at least.
constexpr double titleShare = 0.4;

}  // namespace

void RowNode::showTitle(const std::string& title, const ViewContext& context) {
    title_.display(title, lookIn(context));
}

void RowNode::showTitleOfNamed(const std::string& title, const ViewContext& context) {
    showTitle(title, context);
    setAccessibilityElement(title_.view(), false);
}

RowNode::Parts RowNode::parts(double width) const {
    const Size whole = title_.isEmpty() ? Size{-titleGap, 0} : title_.sizeThatFits(unlimited);
    if (!std::isfinite(width))
        return {whole, controlSize(unlimited)};
    const double titleLeast = std::min(whole.width, std::floor(width * titleShare));
    Size control = controlSize(width - titleLeast - titleGap);
    control.width = std::min(control.width, width - titleLeast - titleGap);
    const double room = width - control.width - titleGap;
    return {room < whole.width ? title_.sizeThatFits(room) : whole, control};
}

Size RowNode::contentSize(const Size& offer) const {
    const auto [title, control] = parts(offer.width);
    const double wanted = title.width + titleGap + control.width;
    return {std::isfinite(offer.width) ? offer.width : wanted, std::max(title.height, control.height)};
}

void RowNode::placeContent(const Rect& area) {
    const auto [title, control] = parts(area.width);
    // A title stands beside the first line of a control of several.
    const bool hasLines = control.height > 2 * title.height;
    const double titleTop = hasLines ? area.y : area.y + (area.height - title.height) / 2;
    title_.place({area.x, titleTop, std::max(title.width, 0.0), title.height});
    placeControl({area.maxX() - control.width, area.y + (area.height - control.height) / 2, control.width,
                  control.height});
}

double RowNode::contentBaseline(const Size& size) const {
    return (size.height - parts(size.width).title.height) / 2 + title_.firstBaseline();
}

}  // namespace velmo::macos
