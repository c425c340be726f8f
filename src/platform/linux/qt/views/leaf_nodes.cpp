#include "leaf_nodes.h"

#include "linux/qt/style.h"
#include "linux/qt/views/describe.h"

#include <QAccessible>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace velmo {

namespace {

class HairlineWidget : public QWidget {
public:
    explicit HairlineWidget(QWidget& surface) : QWidget(&surface) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), style::hairline()); }
};

}  // namespace

Image imageIn(const Image& image, const ViewContext& context) {
    Image result = image;
    if (auto* symbol = std::get_if<Symbol>(&result.content); symbol && symbol->pointSize <= 0) {
        const QFont font = style::font(context.font);
        symbol->pointSize = context.font.size.value_or(std::round(QFontInfo(font).pixelSize()));
        symbol->weight = context.font.weight.value_or(symbol->weight);
    }
    return result;
}

QColor colorIn(const ViewContext& context) {
    const auto& [role, opacity] = context.color;
    return style::color({role, opacity * context.opacity});
}

TextLabel::Look lookIn(const ViewContext& context) {
    TextLabel::Look look{style::font(context.font), colorIn(context), context.font.hasMonospacedDigits};
    if (context.singleLine)
        look.minimumScale = context.singleLine->minimumScale;
    return look;
}

DividerNode::DividerNode(QWidget& surface)
    : ViewNode(surface), line_(std::make_unique<HairlineWidget>(surface)) {
    line_->show();
}

void DividerNode::apply(const ViewContext& context) {
    axis_ = orientationOf(context.axis);
}

QSizeF DividerNode::contentSize(const QSizeF& offer) const {
    if (axis_ == Qt::Horizontal)
        return {1, std::isfinite(offer.height()) ? offer.height() : 0};
    return {std::isfinite(offer.width()) ? offer.width() : 0, 1};
}

void DividerNode::placeContent(const QRectF& area) {
    line_->setGeometry(area.toRect());
}

TextNode::TextNode(QWidget& surface) : ViewNode(surface), label_(std::make_unique<TextLabel>(&surface)) {
    label_->show();
}

void TextNode::apply(const ViewContext& context) {
    label_->display(content<Text>(), lookIn(context));
    describe(*label_, context.accessibilityLabel, context.help);
    label_->setEnabled(context.isEnabled);
}

ImageNode::ImageNode(QWidget& surface) : ViewNode(surface), label_(std::make_unique<ImageLabel>(&surface)) {
    label_->setProperty("accessibleRole", QAccessible::Graphic);
    label_->show();
}

void ImageNode::apply(const ViewContext& context) {
    const auto& view = content<ImageView>();
    label_->display(imageIn(view.image, context), colorIn(context), view.isResizable);
    describe(
        *label_,
        context.accessibilityLabel.empty() ? view.image.accessibilityDescription : context.accessibilityLabel,
        context.help);
    font_ = context.font;
}

QSizeF ImageNode::contentSize(const QSizeF& offer) const {
    QSizeF size = label_->naturalSize();
    if (content<ImageView>().isResizable) {
        if (std::isfinite(offer.width()))
            size.setWidth(offer.width());
        if (std::isfinite(offer.height()))
            size.setHeight(offer.height());
    }
    return size;
}

qreal ImageNode::contentBaseline(const QSizeF& size) const {
    // Beside a text, a symbol stands around the middle of the capitals.
    return (size.height() + QFontMetricsF(style::font(font_)).capHeight()) / 2;
}

}  // namespace velmo
