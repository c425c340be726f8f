#include "view_node.h"

#include "linux/qt/views/background_widget.h"

#include <algorithm>

namespace velmo {

namespace {

QSizeF extentOf(const Insets& insets) {
    return {insets.leading + insets.trailing, insets.top + insets.bottom};
}

/// Where a view lies inside of a frame.
QRectF aligned(const QRectF& area, const QSizeF& size, HorizontalAlignment alignment) {
    qreal x = area.x();
    if (alignment == HorizontalAlignment::center)
        x += (area.width() - size.width()) / 2;
    else if (alignment == HorizontalAlignment::trailing)
        x += area.width() - size.width();
    return {{x, area.y() + (area.height() - size.height()) / 2}, size};
}

QSizeF offerInside(const Frame& frame, const QSizeF& offer) {
    return {frame.width.value_or(std::min(offer.width(), frame.maxWidth.value_or(unlimited))),
            frame.height.value_or(offer.height())};
}

}  // namespace

ViewNode::ViewNode(QWidget& surface) : surface_(surface) {}

ViewNode::~ViewNode() = default;

void ViewNode::update(const View& view, const ViewContext& context) {
    view_ = view;
    applyBackgrounds();
    apply(context.with(view.modifiers));
}

void ViewNode::applyBackgrounds() {
    std::size_t count = 0;
    bool isMade = false;
    for (const auto& modifier : view_.modifiers) {
        const auto* background = std::get_if<Background>(&modifier);
        if (!background)
            continue;
        if (++count > backgrounds_.size())
            backgrounds_.emplace_back();
        auto& widget = backgrounds_[count - 1];
        if (background->color.role == ColorRole::clear) {
            widget.reset();
        } else if (!widget) {
            widget = std::make_unique<BackgroundWidget>(surface_);
            isMade = true;
        }
        if (widget)
            static_cast<BackgroundWidget&>(*widget).display(*background);
    }
    backgrounds_.resize(count);
    // Each below the one inside of it, also where that one is the newer.
    for (std::size_t index = 0; isMade && index < count; ++index) {
        if (backgrounds_[index])
            backgrounds_[index]->lower();
    }
}

QSizeF ViewNode::sizeThatFits(const QSizeF& offer) const {
    return size(view_.modifiers.size(), offer);
}

QSizeF ViewNode::size(std::size_t modifierCount, const QSizeF& offer) const {
    if (modifierCount == 0)
        return contentSize(offer);
    const auto& modifier = view_.modifiers[modifierCount - 1];
    if (const auto* padding = std::get_if<Padding>(&modifier)) {
        const QSizeF room = extentOf(padding->insets);
        return size(modifierCount - 1, (offer - room).expandedTo({0, 0})) + room;
    }
    if (const auto* frame = std::get_if<Frame>(&modifier)) {
        const QSizeF inner = size(modifierCount - 1, offerInside(*frame, offer));
        return {frame->width.value_or(std::max(inner.width(), frame->minWidth.value_or(0))),
                frame->height.value_or(inner.height())};
    }
    return size(modifierCount - 1, offer);
}

void ViewNode::place(const QRectF& area) {
    place(view_.modifiers.size(), area);
}

void ViewNode::place(std::size_t modifierCount, const QRectF& area) {
    if (modifierCount == 0) {
        placeContent(area);
        return;
    }
    const auto& modifier = view_.modifiers[modifierCount - 1];
    if (const auto* padding = std::get_if<Padding>(&modifier)) {
        const Insets& insets = padding->insets;
        place(modifierCount - 1, area.adjusted(insets.leading, insets.top, -insets.trailing, -insets.bottom));
        return;
    }
    if (const auto* frame = std::get_if<Frame>(&modifier)) {
        QSizeF inner = size(modifierCount - 1, area.size());
        if (contentExpands(Qt::Horizontal) && !hasFixed(modifierCount - 1, Qt::Horizontal))
            inner.setWidth(area.width());
        if (contentExpands(Qt::Vertical) && !hasFixed(modifierCount - 1, Qt::Vertical))
            inner.setHeight(area.height());
        place(modifierCount - 1, aligned(area, inner, frame->alignment));
        return;
    }
    if (std::holds_alternative<Background>(modifier)) {
        const auto index = std::count_if(
            view_.modifiers.begin(), view_.modifiers.begin() + static_cast<std::ptrdiff_t>(modifierCount - 1),
            [](const auto& earlier) { return std::holds_alternative<Background>(earlier); });
        if (const auto& widget = backgrounds_[static_cast<std::size_t>(index)])
            widget->setGeometry(area.toAlignedRect());
    }
    place(modifierCount - 1, area);
}

qreal ViewNode::firstBaseline(const QSizeF& size) const {
    return baseline(view_.modifiers.size(), size);
}

qreal ViewNode::baseline(std::size_t modifierCount, const QSizeF& offer) const {
    if (modifierCount == 0)
        return contentBaseline(offer);
    const auto& modifier = view_.modifiers[modifierCount - 1];
    if (const auto* padding = std::get_if<Padding>(&modifier))
        return padding->insets.top + baseline(modifierCount - 1, offer - extentOf(padding->insets));
    if (const auto* frame = std::get_if<Frame>(&modifier)) {
        const QSizeF inner = size(modifierCount - 1, offerInside(*frame, offer));
        return (offer.height() - inner.height()) / 2 + baseline(modifierCount - 1, inner);
    }
    return baseline(modifierCount - 1, offer);
}

bool ViewNode::hasFixed(std::size_t modifierCount, Qt::Orientation direction) const {
    const auto end = view_.modifiers.begin() + static_cast<std::ptrdiff_t>(modifierCount);
    return std::any_of(view_.modifiers.begin(), end, [&](const auto& modifier) {
        const auto* frame = std::get_if<Frame>(&modifier);
        return frame && (direction == Qt::Horizontal ? frame->width : frame->height);
    });
}

bool ViewNode::expands(Qt::Orientation direction) const {
    return contentExpands(direction) && !hasFixed(view_.modifiers.size(), direction);
}

void ViewNodes::update(const Views& views, const ViewContext& context, QWidget& surface) {
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

}  // namespace velmo
