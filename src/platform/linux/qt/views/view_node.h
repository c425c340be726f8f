#pragma once

#include "view.h"
#include "view_context.h"

#include <QRectF>
#include <QWidget>

#include <limits>
#include <memory>
#include <vector>

namespace velmo {

inline Qt::Orientation orientationOf(Axis axis) {
    return axis == Axis::horizontal ? Qt::Horizontal : Qt::Vertical;
}

inline constexpr qreal unlimited = std::numeric_limits<qreal>::infinity();

/// One described view and the widgets that show it. Places are in points on the surface, which is the widget
/// that all widgets of the node are made on.
class ViewNode {
public:
    explicit ViewNode(QWidget& surface);
    virtual ~ViewNode();
    ViewNode(const ViewNode&) = delete;
    ViewNode& operator=(const ViewNode&) = delete;

    /// Shows a description with the same kind of content as before.
    void update(const View& view, const ViewContext& context);
    /// What the view wants where that much is offered, which may be unlimited.
    QSizeF sizeThatFits(const QSizeF& offer) const;
    void place(const QRectF& area);
    /// True where the view takes all the width or height that it can get.
    bool expands(Qt::Orientation direction) const;
    /// True where the view can do with less width than it wants.
    bool canShrink() const { return contentCanShrink() && !hasFixed(view_.modifiers.size(), Qt::Horizontal); }
    /// From the top of a view of that size to the baseline of its first text.
    qreal firstBaseline(const QSizeF& size) const;

    const View& view() const { return view_; }

protected:
    /// Brings the widgets up to date with the new description.
    virtual void apply(const ViewContext& context) = 0;
    virtual QSizeF contentSize(const QSizeF& offer) const = 0;
    virtual void placeContent(const QRectF& area) = 0;
    virtual bool contentExpands(Qt::Orientation /*direction*/) const { return false; }
    virtual bool contentCanShrink() const { return false; }
    virtual qreal contentBaseline(const QSizeF& size) const { return size.height(); }

    template <typename Content>
    const Content& content() const {
        return std::get<Content>(view_.content);
    }
    QWidget& surface() const { return surface_; }

private:
    QSizeF size(std::size_t modifierCount, const QSizeF& offer) const;
    void place(std::size_t modifierCount, const QRectF& area);
    qreal baseline(std::size_t modifierCount, const QSizeF& offer) const;
    /// True where one of the first modifiers fixes that extent.
    bool hasFixed(std::size_t modifierCount, Qt::Orientation direction) const;
    void applyBackgrounds();

    QWidget& surface_;
    View view_;
    /// One for each background, in the order of the modifiers; none where it is clear.
    std::vector<std::unique_ptr<QWidget>> backgrounds_;
};

/// A node for this kind of content.
std::unique_ptr<ViewNode> makeViewNode(const ViewContent& content, QWidget& surface);

/// The nodes of a view's children. Those that stay themselves keep their widgets.
class ViewNodes {
public:
    void update(const Views& views, const ViewContext& context, QWidget& surface);

    std::size_t size() const { return nodes_.size(); }
    bool empty() const { return nodes_.empty(); }
    ViewNode& operator[](std::size_t index) const { return *nodes_[index]; }
    auto begin() const { return nodes_.begin(); }
    auto end() const { return nodes_.end(); }

private:
    std::vector<std::unique_ptr<ViewNode>> nodes_;
};

}  // namespace velmo
