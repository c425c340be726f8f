#include "tab_button.h"

#include "linux/qt/controls/painting.h"
#include "linux/qt/image_painting.h"
#include "linux/qt/style.h"

#include <QAccessible>
#include <QFontMetrics>

#include <algorithm>

namespace velmo {

namespace {

constexpr double symbolSize = 16;
constexpr int leastWidth = 76;
constexpr int tabSidePadding = 12;
constexpr int leastSidePadding = 4;
constexpr int tabVerticalPadding = 6;
constexpr int gap = 3;
constexpr double chosenOpacity = 0.16;

QFont titleFont() {
    return style::font(Font{.style = TextStyle::caption});
}

}  // namespace

TabButton::TabButton(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::TabFocus);
    setProperty("accessibleRole", QAccessible::PageTab);
}

void TabButton::display(const QString& title, const Image& image) {
    setText(title);
    setAccessibleName(title);
    image_ = image;
    if (auto* symbol = std::get_if<Symbol>(&image_.content); symbol && symbol->pointSize <= 0)
        symbol->pointSize = symbolSize;
    update();
}

QSize TabButton::sizeHint() const {
    const QFontMetrics metrics(titleFont());
    const int height =
        2 * tabVerticalPadding + static_cast<int>(sizeOf(image_).height()) + gap + metrics.height();
    return {std::max(leastWidth, metrics.horizontalAdvance(text()) + 2 * tabSidePadding), height};
}

QSize TabButton::minimumSizeHint() const {
    const int title = QFontMetrics(titleFont()).horizontalAdvance(text());
    return {std::min(title + 2 * leastSidePadding, sizeHint().width()), sizeHint().height()};
}

void TabButton::paintEvent(QPaintEvent* /*event*/) {
    ControlPainter painter(*this);
    const QRectF area = rect();
    if (isChecked())
        painter.fillRounded(area, style::color({ColorRole::accent, chosenOpacity}), style::controlRadius);
    else if (isDown())
        painter.fillRounded(area, style::color({ColorRole::primary, 0.08}), style::controlRadius);
    const QColor color = style::color({isChecked() ? ColorRole::accent : ColorRole::secondary});
    const QSizeF symbol = sizeOf(image_);
    paintImage(painter, image_, {{(area.width() - symbol.width()) / 2, tabVerticalPadding}, symbol}, color);
    painter.setFont(titleFont());
    painter.setPen(color);
    const QRectF room = area.adjusted(leastSidePadding, 0, -leastSidePadding, -tabVerticalPadding);
    painter.drawText(
        room, Qt::AlignHCenter | Qt::AlignBottom,
        painter.fontMetrics().elidedText(text(), Qt::ElideRight, static_cast<int>(room.width())));
    painter.focusRing(area, style::controlRadius);
}

}  // namespace velmo
