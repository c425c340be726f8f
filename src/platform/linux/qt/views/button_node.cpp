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
    labelContext_ = context.forChildren(Qt::Horizontal);
    if (style == ButtonStyle::borderless)
        labelContext_.color = {ColorRole::accent};
    else if (style == ButtonStyle::automatic && !context.isEnabled)
        labelContext_.color = {ColorRole::secondary};
    // A button with a label for each state says by them what it is; a push button has a face that gets paler.
    if (!context.isEnabled && style != ButtonStyle::automatic && view().children.size() < 2)
        labelContext_.opacity *= style::disabledOpacity;
    updateLabel(0);
    if (faces_[1])
        updateLabel(1);
    button_->setStyle(style);
    button_->setEnabled(context.isEnabled);
    describe(*button_,
             context.accessibilityLabel.isEmpty() ? describedText(view()) : context.accessibilityLabel,
             context.help);
    // Asked for only where it has changed: the button takes each one for a new shortcut.
    const QKeySequence shortcut = context.shortcut ? sequenceOf(*context.shortcut) : QKeySequence();
    if (button_->shortcut() != shortcut)
        button_->setShortcut(shortcut);
    reassert_ = context.reassert;
    showLabel();
}

void ButtonNode::updateLabel(std::size_t index) {
    if (!faces_[index]) {
        faces_[index] = std::make_unique<QWidget>(button_.get());
        faces_[index]->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    const Views& labels = view().children;
    labels_[index].update(index < labels.size() ? Views{labels[index]} : Views{}, labelContext_,
                          *faces_[index]);
}

void ButtonNode::placeLabel(std::size_t index) {
    const QPointF corner(padding().width() / 2, padding().height() / 2);
    faces_[index]->setGeometry(button_->rect());
    if (!labels_[index].empty())
        labels_[index][0].place({corner, size_ - padding()});
}

void ButtonNode::showLabel() {
    const bool showsPressed = button_->isDown() && view().children.size() > 1;
    if (showsPressed && !faces_[1]) {
        updateLabel(1);
        placeLabel(1);
    }
    faces_[0]->setVisible(!showsPressed);
    if (faces_[1])
        faces_[1]->setVisible(showsPressed);
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
    size_ = area.size();
    for (std::size_t index = 0; index < 2; ++index) {
        if (faces_[index])
            placeLabel(index);
    }
}

qreal ButtonNode::contentBaseline(const QSizeF& size) const {
    if (labels_[0].empty())
        return size.height();
    return padding().height() / 2 + labels_[0][0].firstBaseline(size - padding());
}

}  // namespace velmo
