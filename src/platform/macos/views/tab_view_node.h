#pragma once

#include "surface_view.h"
#include "view_node.h"

namespace velmo::macos {

/// The content of the chosen tab; the tabs themselves are shown by whoever has a place for them. The others'
/// contents are made once they are seen.
class TabViewNode : public ViewNode {
public:
    explicit TabViewNode(const NSView& surface);
    ~TabViewNode() override;

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    bool contentExpands(Axis /*direction*/) const override { return true; }
    NSView lowestContent() const override;

private:
    struct Page;

    std::size_t chosen() const;
    void matchPages();

    std::vector<std::unique_ptr<Page>> pages_;
};

}  // namespace velmo::macos
