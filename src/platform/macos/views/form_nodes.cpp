#include "form_nodes.h"

#include "control_layout.h"
#include "leaf_nodes.h"
#include "macos/appkit/ns_accessibility.h"

#include <algorithm>
#include <cmath>

namespace velmo::macos {
namespace {

// Points, as the system's own settings have them.
constexpr double formMargin = 20;
constexpr double sectionGap = 18;
constexpr double rowSidePadding = 10;
constexpr double rowPadding = 8;
constexpr double leastRowHeight = 36;
constexpr double headerGap = 6;
constexpr double footerGap = 6;

}  // namespace

FormNode::FormNode(const NSView& surface) : ViewNode(surface), area_(surface, NSScrollView::create()) {
    area_->setDocumentView(document_.view());
}

void FormNode::apply(const ViewContext& context) {
    sections_.update(view().children, context.forChildren(Axis::vertical), document_.view());
}

double FormNode::heightFor(double width) const {
    double height = 2 * formMargin;
    for (const auto& section : sections_)
        height += section->sizeThatFits({width - 2 * formMargin, unlimited}).height;
    return height + (sections_.empty() ? 0 : sectionGap * static_cast<double>(sections_.size() - 1));
}

Size FormNode::contentSize(const Size& offer) const {
    constexpr double usualWidth = 480;
    const double width = std::isfinite(offer.width) ? offer.width : usualWidth;
    return {width, std::isfinite(offer.height) ? offer.height : heightFor(width)};
}

void FormNode::placeContent(const Rect& area) {
    macos::place(*area_, area);
    // Whether a scroll bar takes some of the width shows once the height is known.
    macos::place(document_.view(), {0, 0, area.width, std::ceil(heightFor(area.width))});
    const double width = area_->contentSize().width;
    macos::place(document_.view(), {0, 0, width, std::ceil(heightFor(width))});
    double y = formMargin;
    for (const auto& section : sections_) {
        const double sectionWidth = width - 2 * formMargin;
        const double height = section->sizeThatFits({sectionWidth, unlimited}).height;
        section->place({formMargin, y, sectionWidth, height});
        y += height + sectionGap;
    }
}

SectionNode::SectionNode(const NSView& surface)
    : ViewNode(surface),
      box_(surface, NSBox::with(NSBoxType::primary)),
      header_(surface),
      footer_(surface),
      group_(surface) {}

void SectionNode::apply(const ViewContext& context) {
    const auto& section = content<Section>();
    describeGroup(group_.view(), groupRole.value(), section.header);
    header_.display(section.header, {{.style = TextStyle::headline}, {ColorRole::primary}});
    footer_.display(section.footer, {{.style = TextStyle::caption}, {ColorRole::secondary}});
    rows_.update(view().children, context.forChildren(Axis::vertical), group_.view());
    matchLines();
}

void SectionNode::matchLines() {
    const std::size_t count = rows_.empty() ? 0 : rows_.size() - 1;
    while (lines_.size() > count)
        lines_.pop_back();
    while (lines_.size() < count)
        lines_.emplace_back(group_.view(), NSBox::with(NSBoxType::separator));
}

double SectionNode::rowHeight(const ViewNode& row, double width) const {
    const double inner = row.sizeThatFits({width - 2 * rowSidePadding, unlimited}).height;
    return std::max(std::ceil(inner) + 2 * rowPadding, leastRowHeight);
}

Size SectionNode::contentSize(const Size& offer) const {
    double height = 0;
    const double textWidth = offer.width - 2 * rowSidePadding;
    if (!header_.isEmpty())
        height += header_.sizeThatFits(textWidth).height + headerGap;
    for (const auto& row : rows_)
        height += rowHeight(*row, offer.width);
    if (!footer_.isEmpty())
        height += footerGap + footer_.sizeThatFits(textWidth).height;
    return {offer.width, height};
}

void SectionNode::placeContent(const Rect& area) {
    const double textLeft = area.x + rowSidePadding;
    const double textWidth = area.width - 2 * rowSidePadding;
    const double headerHeight = header_.isEmpty() ? 0 : header_.sizeThatFits(textWidth).height;
    const double footerHeight = footer_.isEmpty() ? 0 : footer_.sizeThatFits(textWidth).height;
    header_.place({textLeft, area.y, textWidth, headerHeight});
    footer_.place({textLeft, area.maxY() - footerHeight, textWidth, footerHeight});
    const double top = area.y + headerHeight + (header_.isEmpty() ? 0 : headerGap);
    const double bottom = area.maxY() - footerHeight - (footer_.isEmpty() ? 0 : footerGap);
    placeRows({area.x, top, area.width, bottom - top});
}

void SectionNode::placeRows(const Rect& area) {
    placeAligned(*box_, area);
    macos::place(group_.view(), area);
    const double innerWidth = area.width - 2 * rowSidePadding;
    double y = 0;
    for (std::size_t index = 0; index < rows_.size(); ++index) {
        ViewNode& row = rows_[index];
        const double height = rowHeight(row, area.width);
        Size size = row.sizeThatFits({innerWidth, unlimited});
        if (row.expands(Axis::horizontal))
            size.width = innerWidth;
        row.place({rowSidePadding, y + (height - size.height) / 2, size.width, size.height});
        y += height;
        if (index < lines_.size())
            placeAligned(*lines_[index], {rowSidePadding, y, innerWidth, 1});
    }
}

}  // namespace velmo::macos
