#include "tab_view_node.h"

#include "control_layout.h"

#include <algorithm>

namespace velmo::macos {

struct TabViewNode::Page {
    explicit Page(const NSView& around) : surface(around) {}

    PlacedSurface surface;
    // Ends first: its views lie on that one.
    ViewNodes nodes;
};

TabViewNode::TabViewNode(const NSView& surface) : ViewNode(surface) {}

TabViewNode::~TabViewNode() = default;

std::size_t TabViewNode::chosen() const {
    const auto& tabView = content<TabView>();
    const auto found = std::find_if(tabView.tabs.begin(), tabView.tabs.end(),
                                    [&](const auto& tab) { return tab.tag == tabView.selection; });
    return static_cast<std::size_t>(found - tabView.tabs.begin());
}

void TabViewNode::matchPages() {
    const std::size_t count = content<TabView>().tabs.size();
    while (pages_.size() > count)
        pages_.pop_back();
    while (pages_.size() < count)
        pages_.push_back(std::make_unique<Page>(surface()));
}

void TabViewNode::apply(const ViewContext& context) {
    matchPages();
    const std::size_t index = chosen();
    if (index < pages_.size() && index < view().children.size())
        pages_[index]->nodes.update({view().children[index]}, context.forChildren(Axis::vertical),
                                    pages_[index]->surface.view());
    for (std::size_t page = 0; page < pages_.size(); ++page)
        pages_[page]->surface.view().setHidden(page != index);
    if (!context.showTabs)
        return;
    TabView shown = content<TabView>();
    shown.onSelect = [onSelect = shown.onSelect, reassert = context.reassert](const std::string& tag) {
        if (onSelect)
            onSelect(tag);
        reassert();
    };
    context.showTabs(shown);
}

Size TabViewNode::contentSize(const Size& offer) const {
    const std::size_t index = chosen();
    return index < pages_.size() && !pages_[index]->nodes.empty()
               ? pages_[index]->nodes[0].sizeThatFits(offer)
               : Size{};
}

void TabViewNode::placeContent(const Rect& area) {
    const std::size_t index = chosen();
    if (index >= pages_.size() || pages_[index]->nodes.empty())
        return;
    macos::place(pages_[index]->surface.view(), area);
    pages_[index]->nodes[0].place({0, 0, area.width, area.height});
}

NSView TabViewNode::lowestContent() const {
    return pages_.empty() ? NSView() : pages_.front()->surface.view();
}

}  // namespace velmo::macos
