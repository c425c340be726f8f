#pragma once

#include "macos/appkit/ns_tab_view.h"
#include "macos/objc/instance.h"
#include "surface_view.h"
#include "view_node.h"

namespace velmo::macos {

/// A row of tabs above the content of the chosen one. The others' contents are made once they are seen.
class TabViewNode : public ViewNode {
public:
    explicit TabViewNode(const NSView& surface);
    ~TabViewNode() override;

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    bool contentExpands(Axis /*direction*/) const override { return true; }
    NSView lowestContent() const override { return tabs_; }

private:
    struct Page;

    std::size_t chosen() const;
    void matchPages();
    void selected(const NSTabView& tabs, const NSTabViewItem& item);

    using Class =
        Subclass<TabViewNode, "VelmoTabViewDelegate", NSObject,
                 Method<"tabView:didSelectTabViewItem:", &TabViewNode::selected, "NSTabViewDelegate">>;

    NSTabView tabs_ = NSTabView::create();
    std::vector<std::unique_ptr<Page>> pages_;
    /// It is told of what is chosen by ourselves, too.
    bool isApplying_ = false;
    std::function<void()> reassert_;
    Instance<TabViewNode, Class, NSObject> delegate_{*this};
};

}  // namespace velmo::macos
