#include "row_node.h"

#include "linux/qt/plain_tool_tip.h"
#include "linux/qt/views/leaf_nodes.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr qreal gap = 12;
/// Of a row's width, what a control leaves to a long title at least.
constexpr qreal titleShare = 0.4;

}  // namespace

RowNode::RowNode(QWidget& surface) : ViewNode(surface), title_(std::make_unique<TextLabel>(&surface)) {
    title_->show();
}

void RowNode::showTitle(const std::string& title, const ViewContext& context) {
    title_->display(Text{{{title}}}, lookIn(context));
    title_->setVisible(!title.empty());
    title_->setToolTip(plainToolTip(context.help));
}

RowNode::Parts RowNode::parts(qreal width) const {
    const QSizeF whole = title_->text().isEmpty() ? QSizeF(-gap, 0) : title_->sizeThatFits(unlimited);
    if (!std::isfinite(width))
        return {whole, controlSize(unlimited)};
    const qreal titleLeast = std::min(whole.width(), width * titleShare);
    QSizeF control = controlSize(width - titleLeast - gap);
    if (controlExpands())
        control.setWidth(std::max(control.width(), width - whole.width() - gap));
    control.setWidth(std::min(control.width(), width - titleLeast - gap));
    const qreal room = width - control.width() - gap;
    return {room < whole.width() ? title_->sizeThatFits(room) : whole, control};
}

QSizeF RowNode::contentSize(const QSizeF& offer) const {
    const auto [title, control] = parts(offer.width());
    const qreal wanted = title.width() + gap + control.width();
    return {std::isfinite(offer.width()) ? offer.width() : wanted,
            std::max(title.height(), control.height())};
}

void RowNode::placeContent(const QRectF& area) {
    const auto [title, control] = parts(area.width());
    const bool isMirrored = surface().layoutDirection() == Qt::RightToLeft;
    // A title stands beside the first line of a control of several.
    const qreal titleTop = control.height() > 2 * title.height()
                               ? area.top()
                               : area.top() + (area.height() - title.height()) / 2;
    const qreal titleLeft = isMirrored ? area.right() - title.width() : area.left();
    const qreal controlLeft = isMirrored ? area.left() : area.right() - control.width();
    title_->setGeometry(QRectF({titleLeft, titleTop}, title).toAlignedRect());
    placeControl({{controlLeft, area.top() + (area.height() - control.height()) / 2}, control});
}

qreal RowNode::contentBaseline(const QSizeF& size) const {
    return (size.height() - parts(size.width()).title.height()) / 2 + title_->firstBaseline();
}

}  // namespace velmo
