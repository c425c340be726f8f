#include "tab_view_node.h"

#include "linux/qt/style.h"

#include <QAccessible>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace velmo {

namespace {

constexpr int stripPadding = 8;
constexpr int tabGap = 4;

bool hasKeyboard(const QWidget& page) {
    const QWidget* focused = page.window()->focusWidget();
    return focused != nullptr && page.isAncestorOf(focused);
}

}  // namespace

/// What the tabs stand on, with a hairline below.
class TabViewNode::Strip : public QWidget {
public:
    explicit Strip(QWidget& surface) : QWidget(&surface) {
        setProperty("accessibleRole", QAccessible::PageTabList);
        show();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter(this).fillRect(0, height() - 1, width(), 1, style::hairline());
    }
};

struct TabViewNode::Page {
    explicit Page(QWidget& surface) : widget(&surface) {}

    QWidget widget;
    // Ends first: its widgets lie on that one.
    ViewNodes nodes;
};

TabViewNode::TabViewNode(QWidget& surface) : ViewNode(surface), strip_(std::make_unique<Strip>(surface)) {}

TabViewNode::~TabViewNode() {
    tabs_.clear();
}

std::size_t TabViewNode::chosen() const {
    const auto& tabView = content<TabView>();
    const auto found = std::find_if(tabView.tabs.begin(), tabView.tabs.end(),
                                    [&](const auto& tab) { return tab.tag == tabView.selection; });
    return static_cast<std::size_t>(found - tabView.tabs.begin());
}

void TabViewNode::choose(std::size_t index) {
    const auto& tabView = content<TabView>();
    if (index >= tabView.tabs.size())
        return;
    const auto onSelect = tabView.onSelect;
    const auto tag = tabView.tabs[index].tag;
    const auto reassert = reassert_;
    if (onSelect)
        onSelect(tag);
    reassert();
}

void TabViewNode::applyTabs() {
    const auto& tabView = content<TabView>();
    while (tabs_.size() < tabView.tabs.size()) {
        const auto index = tabs_.size();
        tabs_.push_back(std::make_unique<TabButton>(strip_.get()));
        QObject::connect(tabs_.back().get(), &QAbstractButton::clicked, strip_.get(),
                         [this, index] { choose(index); });
        tabs_.back()->show();
    }
    tabs_.resize(tabView.tabs.size());
    for (std::size_t index = 0; index < tabs_.size(); ++index) {
        tabs_[index]->display(QString::fromStdString(tabView.tabs[index].title), tabView.tabs[index].image);
        tabs_[index]->setChecked(index == chosen());
    }
}

void TabViewNode::apply(const ViewContext& context) {
    reassert_ = context.reassert;
    applyTabs();
    const Views& children = view().children;
    pages_.resize(children.size());
    for (std::size_t index = 0; index < pages_.size(); ++index) {
        const bool isChosen = index == chosen();
        if (isChosen && !pages_[index])
            pages_[index] = std::make_unique<Page>(surface());
        if (!pages_[index])
            continue;
        if (isChosen)
            pages_[index]->nodes.update({children[index]}, context.forChildren(Axis::vertical),
                                        pages_[index]->widget);
        else if (hasKeyboard(pages_[index]->widget) && chosen() < tabs_.size())
            // Left to itself the keyboard goes on to whichever control of the page is next in the chain.
            tabs_[chosen()]->setFocus();
        pages_[index]->widget.setVisible(isChosen);
    }
}

qreal TabViewNode::stripHeight() const {
    int height = 0;
    for (const auto& tab : tabs_)
        height = std::max(height, tab->sizeHint().height());
    return height + 2 * stripPadding;
}

QSizeF TabViewNode::contentSize(const QSizeF& offer) const {
    QSizeF size(0, stripHeight());
    if (chosen() < pages_.size()) {
        const QSizeF page = pages_[chosen()]->nodes[0].sizeThatFits(
            {offer.width(), std::max(offer.height() - stripHeight(), 0.0)});
        size = {page.width(), size.height() + page.height()};
    }
    return size;
}

std::vector<int> TabViewNode::tabWidths() const {
    std::vector<int> usual;
    std::vector<int> least;
    for (const auto& tab : tabs_) {
        usual.push_back(tab->sizeHint().width());
        least.push_back(tab->minimumSizeHint().width());
    }
    const int gaps = tabGap * (static_cast<int>(tabs_.size()) - 1);
    const int room = strip_->width() - 2 * stripPadding - gaps;
    const int usualSum = std::accumulate(usual.begin(), usual.end(), 0);
    const int leastSum = std::accumulate(least.begin(), least.end(), 0);
    if (usualSum <= room)
        return usual;
    std::vector<int> widths;
    for (std::size_t index = 0; index < usual.size(); ++index) {
        // The margins first, all by the same share, and then the titles.
        widths.push_back(room < leastSum ? least[index] * room / leastSum
                                         : least[index] + (usual[index] - least[index]) * (room - leastSum) /
                                                              (usualSum - leastSum));
    }
    return widths;
}

void TabViewNode::placeContent(const QRectF& area) {
    const QRectF strip(area.topLeft(), QSizeF(area.width(), stripHeight()));
    strip_->setGeometry(strip.toRect());
    const auto widths = tabWidths();
    const int gaps = tabGap * (static_cast<int>(tabs_.size()) - 1);
    const bool isMirrored = surface().layoutDirection() == Qt::RightToLeft;
    int x = (strip_->width() - std::accumulate(widths.begin(), widths.end(), gaps)) / 2;
    for (std::size_t place = 0; place < tabs_.size(); ++place) {
        const std::size_t index = isMirrored ? tabs_.size() - 1 - place : place;
        tabs_[index]->setGeometry(x, stripPadding, widths[index], tabs_[index]->sizeHint().height());
        x += widths[index] + tabGap;
    }
    if (chosen() >= pages_.size())
        return;
    const QRectF pageArea = area.adjusted(0, stripHeight(), 0, 0);
    Page& page = *pages_[chosen()];
    page.widget.setGeometry(pageArea.toRect());
    page.nodes[0].place({QPointF(0, 0), pageArea.size()});
}

}  // namespace velmo
