#pragma once

#include "geometry.h"
#include "macos/appkit/ns_view.h"
#include "shape_view.h"
#include "view.h"
#include "view_context.h"

#include <limits>
#include <memory>
#include <vector>

namespace velmo::macos {

inline constexpr double unlimited = std::numeric_limits<double>::infinity();

/// One described view and the system's views that show it. Places are in points on the surface, on which all
/// of the node's views lie; its origin is at the top left.
class ViewNode {
public:
    explicit ViewNode(NSView surface);
    virtual ~ViewNode();
    ViewNode(const ViewNode&) = delete;
    ViewNode& operator=(const ViewNode&) = delete;

    /// Shows a description with the same kind of content as before.
    void update(const View& view, const ViewContext& context);
    /// What the view wants where that much is offered, which may be unlimited.
    Size sizeThatFits(const Size& offer) const;
    void place(const Rect& area);
    /// True where the view takes all the width or height that it can get.
    bool expands(Axis direction) const;
    /// True where the view can do with less width than it wants.
    bool canShrink() const {
        return contentCanShrink() && !hasFixed(view_.modifiers.size(), Axis::horizontal);
    }
    /// From the top of a view of that size to the baseline of its first text.
    double firstBaseline(const Size& size) const;

    /// Below it lies nothing else of the node. None where the node shows nothing.
    NSView lowest() const;

    const View& view() const { return view_; }

protected:
    /// Brings the system's views up to date with the new description.
    virtual void apply(const ViewContext& context) = 0;
    virtual Size contentSize(const Size& offer) const = 0;
    virtual void placeContent(const Rect& area) = 0;
    virtual bool contentExpands(Axis /*direction*/) const { return false; }
    virtual bool contentCanShrink() const { return false; }
    virtual double contentBaseline(const Size& size) const { return size.height; }
    virtual NSView lowestContent() const { return {}; }

    template <typename Content>
    const Content& content() const {
        return std::get<Content>(view_.content);
    }
    const NSView& surface() const { return surface_; }

private:
    // Of the content with the first modifiers.

    Size size(std::size_t modifierCount, const Size& offer) const;
    void place(std::size_t modifierCount, const Rect& area);
    void placeInFrame(std::size_t modifierCount, const Frame& frame, const Rect& area);
    double baseline(std::size_t modifierCount, const Size& offer) const;
    /// True where one of the modifiers fixes that extent.
    bool hasFixed(std::size_t modifierCount, Axis direction) const;
    void applyBackgrounds();

    NSView surface_;
    View view_;
    /// One for each modifier; none where it is no background, or a clear one.
    std::vector<std::unique_ptr<ShapeView>> backgrounds_;
};

/// A node for this kind of content.
std::unique_ptr<ViewNode> makeViewNode(const ViewContent& content, const NSView& surface);

/// The nodes of a view's children. Those that stay themselves keep the system's views.
class ViewNodes {
public:
    void update(const Views& views, const ViewContext& context, const NSView& surface);

    std::size_t size() const { return nodes_.size(); }
    bool empty() const { return nodes_.empty(); }
    ViewNode& operator[](std::size_t index) const { return *nodes_[index]; }
    auto begin() const { return nodes_.begin(); }
    auto end() const { return nodes_.end(); }
    NSView lowest() const;

private:
    std::vector<std::unique_ptr<ViewNode>> nodes_;
};

}  // namespace velmo::macos
