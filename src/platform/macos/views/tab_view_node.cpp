#include "tab_view_node.h"

#include "control_layout.h"

#include <algorithm>

namespace velmo::macos {
namespace {

/// Points that the tabs take above their content.
constexpr double stripHeight = 32;

}  // namespace

struct TabViewNode::Page {
    NSTabViewItem item;
    SurfaceView surface;
    // Ends first: its views lie on that one.
    ViewNodes nodes;
};

TabViewNode::TabViewNode(const NSView& surface) : ViewNode(surface) {
    tabs_.setDelegate(delegate_.object());
    surface.addSubview(tabs_);
}

TabViewNode::~TabViewNode() {
    tabs_.setDelegate(Object());
    tabs_.removeFromSuperview();
}

std::size_t TabViewNode::chosen() const {
    const auto& tabView = content<TabView>();
    const auto found = std::find_if(tabView.tabs.begin(), tabView.tabs.end(),
                                    [&](const auto& tab) { return tab.tag == tabView.selection; });
    return static_cast<std::size_t>(found - tabView.tabs.begin());
}

void TabViewNode::selected(const NSTabView& /*tabs*/, const NSTabViewItem& item) {
    const auto found =
        std::find_if(pages_.begin(), pages_.end(), [&](const auto& page) { return page->item == item; });
    if (isApplying_ || found == pages_.end())
        return;
    const auto& tabView = content<TabView>();
    // Copies: the handler may end this node.
    const auto onSelect = tabView.onSelect;
    const auto tag = tabView.tabs[static_cast<std::size_t>(found - pages_.begin())].tag;
    const auto reassert = reassert_;
    if (onSelect)
        onSelect(tag);
    reassert();
}

void TabViewNode::matchPages() {
    const auto& tabs = content<TabView>().tabs;
    while (pages_.size() > tabs.size()) {
        tabs_.removeTabViewItem(pages_.back()->item);
        pages_.pop_back();
    }
    while (pages_.size() < tabs.size()) {
        auto page = std::make_unique<Page>();
        page->item = NSTabViewItem::with(NSString::from(tabs[pages_.size()].tag));
        page->item.setView(page->surface.view());
        tabs_.addTabViewItem(page->item);
        pages_.push_back(std::move(page));
    }
    for (std::size_t index = 0; index < tabs.size(); ++index)
        pages_[index]->item.setLabel(NSString::from(tabs[index].title));
}

void TabViewNode::apply(const ViewContext& context) {
    reassert_ = context.reassert;
    isApplying_ = true;
    matchPages();
    const std::size_t index = chosen();
    if (index < pages_.size()) {
        Page& page = *pages_[index];
        if (index < view().children.size())
            page.nodes.update({view().children[index]}, context.forChildren(Axis::vertical),
                              page.surface.view());
        if (!(tabs_.selectedTabViewItem() == page.item))
            tabs_.selectTabViewItemAtIndex(static_cast<NSInteger>(index));
    }
    isApplying_ = false;
}

Size TabViewNode::contentSize(const Size& offer) const {
    Size size{0, stripHeight};
    if (const std::size_t index = chosen(); index < pages_.size() && !pages_[index]->nodes.empty()) {
        const Size page =
            pages_[index]->nodes[0].sizeThatFits({offer.width, std::max(offer.height - stripHeight, 0.0)});
        size = {page.width, size.height + page.height};
    }
    return size;
}

void TabViewNode::placeContent(const Rect& area) {
    macos::place(tabs_, area);
    const std::size_t index = chosen();
    if (index >= pages_.size() || pages_[index]->nodes.empty())
        return;
    const CGSize size = tabs_.contentRect().size;
    pages_[index]->nodes[0].place({0, 0, size.width, size.height});
}

}  // namespace velmo::macos
