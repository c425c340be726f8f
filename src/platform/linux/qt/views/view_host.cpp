#include "view_host.h"

#include "linux/qt/style.h"

#include <QEvent>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace velmo {

ViewHost::ViewHost(HostedLoop& loop, QWidget* parent) : QWidget(parent), loop_(loop) {}

ViewHost::~ViewHost() = default;

void ViewHost::setContent(const View& content) {
    const bool looksTheSame = content == content_ && !root_.empty();
    content_ = content;
    const QPointer<QWidget> neighbour = beforeKeyboard();
    apply();
    // A control that goes while the keyboard is at it hands it on.
    if (neighbour && window()->focusWidget() == nullptr)
        neighbour->setFocus();
    if (looksTheSame)
        return;
    layOut();
    chainFocus();
}

QWidget* ViewHost::beforeKeyboard() const {
    const QWidget* focused = window()->focusWidget();
    if (focused == nullptr || !isAncestorOf(focused))
        return nullptr;
    QWidget* before = focused->previousInFocusChain();
    while (before != focused && !(isAncestorOf(before) && before->isVisible() && before->isEnabled() &&
                                  (before->focusPolicy() & Qt::TabFocus)))
        before = before->previousInFocusChain();
    return before != focused ? before : nullptr;
}

void ViewHost::apply() {
    ViewContext context;
    context.reassert = [this] {
        // Once for all that the user's action has led to, and behind what the action has posted: that may
        // well describe what the user did, or end what it came from.
        if (std::exchange(isStale_, true))
            return;
        loop_.post([host = QPointer<ViewHost>(this)] {
            if (!host)
                return;
            host->isStale_ = false;
            host->apply();
        });
    };
    root_.update({content_}, context, *this);
}

QSizeF ViewHost::fittingSize() const {
    return root_.empty() ? QSizeF(0, 0) : root_[0].sizeThatFits({unlimited, unlimited});
}

void ViewHost::layOut() {
    if (root_.empty())
        return;
    QSizeF size = root_[0].sizeThatFits(this->size());
    if (root_[0].expands(Qt::Horizontal))
        size.setWidth(width());
    if (root_[0].expands(Qt::Vertical))
        size.setHeight(height());
    root_[0].place({QPointF(0, 0), size});
}

/// The keyboard goes through the controls as they lie: from top to bottom, and along a line.
void ViewHost::chainFocus() {
    QList<QWidget*> controls;
    for (auto* widget : findChildren<QWidget*>()) {
        // Not the list of a pop-up button, which is a window of its own.
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->window() == window())
            controls.append(widget);
    }
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const auto place = [&](const QWidget* widget) {
        const QPoint middle = widget->mapTo(this, widget->rect().center());
        return std::pair(middle.y(), isMirrored ? -middle.x() : middle.x());
    };
    std::stable_sort(controls.begin(), controls.end(),
                     [&](const auto* one, const auto* other) { return place(one) < place(other); });
    for (qsizetype index = 1; index < controls.size(); ++index)
        setTabOrder(controls[index - 1], controls[index]);
}

void ViewHost::resizeEvent(QResizeEvent* /*event*/) {
    layOut();
}

void ViewHost::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    const auto type = event->type();
    if (root_.empty() || (type != QEvent::PaletteChange && type != QEvent::FontChange &&
                          type != QEvent::StyleChange && type != QEvent::LayoutDirectionChange))
        return;
    apply();
    layOut();
    update();
}

}  // namespace velmo
