#include "button_node.h"

#include "linux/qt/style.h"
#include "linux/qt/views/describe.h"
#include "linux/qt/views/described_text.h"

#include <QKeySequence>

namespace velmo {

namespace {

constexpr QSizeF pushButtonPadding(24, 10);

QKeySequence sequenceOf(ShortcutKey key) {
    switch (key) {
        case ShortcutKey::pageUp:
            return Qt::Key_PageUp;
        case ShortcutKey::pageDown:
            return Qt::Key_PageDown;
        case ShortcutKey::home:
            return Qt::Key_Home;
    }
    return {};
}

}  // namespace

ButtonNode::ButtonNode(QWidget& surface) : ViewNode(surface), button_(std::make_unique<ViewButton>(surface)) {
    const auto changeLabel = [this] {
        updateLabel();
        placeLabel();
    };
    QObject::connect(button_.get(), &QAbstractButton::pressed, button_.get(), changeLabel);
    QObject::connect(button_.get(), &QAbstractButton::released, button_.get(), changeLabel);
    QObject::connect(button_.get(), &QAbstractButton::clicked, button_.get(), [this] {
        // Copies: the action may end this node.
        const auto action = content<Button>().action;
        const auto reassert = reassert_;
        if (action)
            action();
        reassert();
    });
    button_->show();
}

void ButtonNode::apply(const ViewContext& context) {
    const auto style = content<Button>().style;
    labelContext_ = context.forChildren(Axis::horizontal);
    if (style == ButtonStyle::borderless)
        labelContext_.color = {ColorRole::accent};
    else if (style == ButtonStyle::automatic && !context.isEnabled)
        labelContext_.color = {ColorRole::secondary};
    // A button with a label for each state says by them what it is; a push button has a face that gets paler.
    if (!context.isEnabled && style != ButtonStyle::automatic && view().children.size() < 2)
        labelContext_.opacity *= style::disabledOpacity;
    updateLabel();
    button_->setStyle(style);
    button_->setEnabled(context.isEnabled);
    describe(*button_,
             context.accessibilityLabel.empty() ? describedText(view()) : context.accessibilityLabel,
             context.help);
    // Asked for only where it has changed: the button takes each one for a new shortcut.
    const QKeySequence shortcut = context.shortcut ? sequenceOf(*context.shortcut) : QKeySequence();
    if (button_->shortcut() != shortcut)
        button_->setShortcut(shortcut);
    reassert_ = context.reassert;
}

void ButtonNode::updateLabel() {
    const Views& labels = view().children;
    const std::size_t index = button_->isDown() && labels.size() > 1 ? 1 : 0;
    label_.update(index < labels.size() ? Views{labels[index]} : Views{}, labelContext_, *button_);
}

void ButtonNode::placeLabel() {
    const QPointF corner(padding().width() / 2, padding().height() / 2);
    if (!label_.empty())
        label_[0].place({corner, size_ - padding()});
}

QSizeF ButtonNode::padding() const {
    return content<Button>().style == ButtonStyle::automatic ? pushButtonPadding : QSizeF(0, 0);
}

QSizeF ButtonNode::contentSize(const QSizeF& offer) const {
    const QSizeF label = label_.empty() ? QSizeF(0, 0) : label_[0].sizeThatFits(offer - padding());
    return label + padding();
}

void ButtonNode::placeContent(const QRectF& area) {
    button_->setGeometry(area.toAlignedRect());
    size_ = area.size();
    placeLabel();
}

qreal ButtonNode::contentBaseline(const QSizeF& size) const {
    if (label_.empty())
        return size.height();
    return padding().height() / 2 + label_[0].firstBaseline(size - padding());
}

}  // namespace velmo
