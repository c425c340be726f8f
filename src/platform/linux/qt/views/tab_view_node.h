#pragma once

#include "linux/qt/controls/tab_button.h"
#include "linux/qt/views/view_node.h"

namespace velmo {

/// A row of tabs above the content of the chosen one. The others' contents are made once they are seen.
class TabViewNode : public ViewNode {
public:
    explicit TabViewNode(QWidget& surface);
    ~TabViewNode() override;

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    bool contentExpands(Qt::Orientation /*direction*/) const override { return true; }

private:
    class Strip;
    struct Page;

    std::size_t chosen() const;
    qreal stripHeight() const;
    /// Of the tabs, in as much room as there is.
    std::vector<int> tabWidths() const;
    void applyTabs();
    void choose(std::size_t index);

    std::unique_ptr<Strip> strip_;
    std::vector<std::unique_ptr<TabButton>> tabs_;
    std::vector<std::unique_ptr<Page>> pages_;
    std::function<void()> reassert_;
};

}  // namespace velmo
