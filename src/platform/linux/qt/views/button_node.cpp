#include "button_node.h"

#include "linux/qt/style.h"
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
    for (auto& face : faces_) {
        face = std::make_unique<QWidget>(button_.get());
        face->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    QObject::connect(button_.get(), &QAbstractButton::pressed, button_.get(), [this] { showLabel(); });
    QObject::connect(button_.get(), &QAbstractButton::released, button_.get(), [this] { showLabel(); });
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
    ViewContext inner = context.forChildren(Qt::Horizontal);
    if (style == ButtonStyle::borderless)
        inner.color = {ColorRole::accent};
    else if (style == ButtonStyle::automatic && !context.isEnabled)
        inner.color = {ColorRole::secondary};
    const Views& labels = view().children;
    // A button with a label for each state says by them what it is; a push button has a face that gets paler.
    if (!context.isEnabled && style != ButtonStyle::automatic && labels.size() < 2)
        inner.opacity *= style::disabledOpacity;
    for (std::size_t index = 0; index < 2; ++index) {
        const Views label = index < labels.size() ? Views{labels[index]} : Views{};
        labels_[index].update(label, inner, *faces_[index]);
    }
    button_->setStyle(style);
    button_->setEnabled(context.isEnabled);
    button_->setToolTip(context.help);
    button_->setAccessibleName(context.accessibilityLabel.isEmpty() ? describedText(view())
                                                                    : context.accessibilityLabel);
    // Asked for only where it has changed: the button takes each one for a new shortcut.
    const QKeySequence shortcut = context.shortcut ? sequenceOf(*context.shortcut) : QKeySequence();
    if (button_->shortcut() != shortcut)
        button_->setShortcut(shortcut);
    reassert_ = context.reassert;
    showLabel();
}

void ButtonNode::showLabel() {
    const bool hasPressedLabel = !labels_[1].empty();
    faces_[0]->setVisible(!hasPressedLabel || !button_->isDown());
    faces_[1]->setVisible(hasPressedLabel && button_->isDown());
}

QSizeF ButtonNode::padding() const {
    return content<Button>().style == ButtonStyle::automatic ? pushButtonPadding : QSizeF(0, 0);
}

QSizeF ButtonNode::contentSize(const QSizeF& offer) const {
    const QSizeF label = labels_[0].empty() ? QSizeF(0, 0) : labels_[0][0].sizeThatFits(offer - padding());
    return label + padding();
}

void ButtonNode::placeContent(const QRectF& area) {
    button_->setGeometry(area.toAlignedRect());
    const QPointF corner(padding().width() / 2, padding().height() / 2);
    for (std::size_t index = 0; index < 2; ++index) {
        faces_[index]->setGeometry(button_->rect());
        if (!labels_[index].empty())
            labels_[index][0].place({corner, area.size() - padding()});
    }
}

qreal ButtonNode::contentBaseline(const QSizeF& size) const {
    if (labels_[0].empty())
        return size.height();
    return padding().height() / 2 + labels_[0][0].firstBaseline(size - padding());
}

}  // namespace velmo
