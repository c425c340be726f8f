#include "view_node.h"

#include <algorithm>
#include <utility>

namespace velmo::macos {
namespace {

Size extentOf(const Insets& insets) {
    return {insets.leading + insets.trailing, insets.top + insets.bottom};
}

Size less(const Size& size, const Size& room) {
    return {std::max(size.width - room.width, 0.0), std::max(size.height - room.height, 0.0)};
}

/// Where a view lies inside of a frame.
Rect aligned(const Rect& area, const Size& size, HorizontalAlignment alignment) {
    double x = area.x;
    if (alignment == HorizontalAlignment::center)
        x += (area.width - size.width) / 2;
    else if (alignment == HorizontalAlignment::trailing)
        x += area.width - size.width;
    return {x, area.y + (area.height - size.height) / 2, size.width, size.height};
}

Size offerInside(const Frame& frame, const Size& offer) {
    return {frame.width.value_or(std::min(offer.width, frame.maxWidth.value_or(unlimited))),
            frame.height.value_or(offer.height)};
}

}  // namespace

ViewNode::ViewNode(NSView surface) : surface_(std::move(surface)) {}

ViewNode::~ViewNode() = default;

void ViewNode::update(const View& view, const ViewContext& context) {
    view_ = view;
    apply(context.with(view.modifiers));
    applyBackgrounds();
}

void ViewNode::applyBackgrounds() {
    backgrounds_.resize(view_.modifiers.size());
    // From the inside out: each lies below the one inside of it.
    NSView above = lowestContent();
    bool isMade = false;
    for (std::size_t index = 0; index < backgrounds_.size(); ++index) {
        const auto* background = std::get_if<Background>(&view_.modifiers[index]);
        auto& shape = backgrounds_[index];
        if (background == nullptr || background->color.role == ColorRole::clear) {
            shape.reset();
            continue;
        }
        if (!shape || isMade) {
            shape = std::make_unique<ShapeView>(surface_, above);
            isMade = true;
        }
        shape->display(*background);
        above = shape->view();
    }
}

NSView ViewNode::lowest() const {
    const auto found = std::find_if(backgrounds_.rbegin(), backgrounds_.rend(),
                                    [](const auto& shape) { return shape != nullptr; });
    return found == backgrounds_.rend() ? lowestContent() : (*found)->view();
}

Size ViewNode::sizeThatFits(const Size& offer) const {
    return size(view_.modifiers.size(), offer);
}

Size ViewNode::size(std::size_t modifierCount, const Size& offer) const {
    if (modifierCount == 0)
        return contentSize(offer);
    const auto& modifier = view_.modifiers[modifierCount - 1];
    if (const auto* padding = std::get_if<Padding>(&modifier)) {
        const Size room = extentOf(padding->insets);
        const Size inner = size(modifierCount - 1, less(offer, room));
        return {inner.width + room.width, inner.height + room.height};
    }
    if (const auto* frame = std::get_if<Frame>(&modifier)) {
        const Size inner = size(modifierCount - 1, offerInside(*frame, offer));
        return {frame->width.value_or(std::max(inner.width, frame->minWidth.value_or(0))),
                frame->height.value_or(inner.height)};
    }
    return size(modifierCount - 1, offer);
}

void ViewNode::place(const Rect& area) {
    place(view_.modifiers.size(), area);
}

void ViewNode::place(std::size_t modifierCount, const Rect& area) {
    if (modifierCount == 0) {
        placeContent(area);
        return;
    }
    const std::size_t index = modifierCount - 1;
    const auto& modifier = view_.modifiers[index];
    if (const auto* padding = std::get_if<Padding>(&modifier)) {
        const Insets& insets = padding->insets;
        const Size room = extentOf(insets);
        place(index, {area.x + insets.leading, area.y + insets.top, area.width - room.width,
                      area.height - room.height});
    } else if (const auto* frame = std::get_if<Frame>(&modifier)) {
        placeInFrame(index, *frame, area);
    } else {
        if (backgrounds_[index])
            backgrounds_[index]->place(area);
        place(index, area);
    }
}

void ViewNode::placeInFrame(std::size_t modifierCount, const Frame& frame, const Rect& area) {
    Size inner = size(modifierCount, {area.width, area.height});
    if (contentExpands(Axis::horizontal) && !hasFixed(modifierCount, Axis::horizontal))
        inner.width = area.width;
    if (contentExpands(Axis::vertical) && !hasFixed(modifierCount, Axis::vertical))
        inner.height = area.height;
    place(modifierCount, aligned(area, inner, frame.alignment));
}

double ViewNode::firstBaseline(const Size& size) const {
    return baseline(view_.modifiers.size(), size);
}

double ViewNode::baseline(std::size_t modifierCount, const Size& offer) const {
    if (modifierCount == 0)
        return contentBaseline(offer);
    const auto& modifier = view_.modifiers[modifierCount - 1];
    if (const auto* padding = std::get_if<Padding>(&modifier))
        return padding->insets.top + baseline(modifierCount - 1, less(offer, extentOf(padding->insets)));
    if (const auto* frame = std::get_if<Frame>(&modifier)) {
        const Size inner = size(modifierCount - 1, offerInside(*frame, offer));
        return (offer.height - inner.height) / 2 + baseline(modifierCount - 1, inner);
    }
    return baseline(modifierCount - 1, offer);
}

bool ViewNode::hasFixed(std::size_t modifierCount, Axis direction) const {
    const auto end = view_.modifiers.begin() + static_cast<std::ptrdiff_t>(modifierCount);
    return std::any_of(view_.modifiers.begin(), end, [&](const Modifier& modifier) {
        const auto* frame = std::get_if<Frame>(&modifier);
        if (frame == nullptr)
            return false;
        return direction == Axis::horizontal ? frame->width.has_value() : frame->height.has_value();
    });
}

bool ViewNode::expands(Axis direction) const {
    return contentExpands(direction) && !hasFixed(view_.modifiers.size(), direction);
}

NSView ViewNodes::lowest() const {
    for (const auto& node : nodes_) {
        if (NSView found = node->lowest())
            return found;
    }
    return {};
}

void ViewNodes::update(const Views& views, const ViewContext& context, const NSView& surface) {
    auto former = std::move(nodes_);
    nodes_.clear();
    for (std::size_t index = 0; index < views.size(); ++index) {
        const View& view = views[index];
        const auto isSame = [&](const auto& node) {
            return node && node->view().content.index() == view.content.index() && node->view().id == view.id;
        };
        // A view without a name is the one that had its place; one with a name may have had another.
        auto found = former.end();
        if (!view.id.empty())
            found = std::find_if(former.begin(), former.end(), isSame);
        else if (index < former.size() && isSame(former[index]))
            found = former.begin() + static_cast<std::ptrdiff_t>(index);
        nodes_.push_back(found == former.end() ? makeViewNode(view.content, surface) : std::move(*found));
        nodes_.back()->update(view, context);
    }
}

}  // namespace velmo::macos
