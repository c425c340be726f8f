#include "row_scroller.h"

#include <QCoreApplication>
#include <QScrollBar>

#include <algorithm>

namespace velmo {

RowScroller::RowScroller(QWidget& parent, QWidget& row) : QScrollArea(&parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(&row);
    viewport()->setAutoFillBackground(false);
    row.setAutoFillBackground(false);
}

RowScroller::~RowScroller() {
    takeWidget();
}

QSize RowScroller::sizeFor(const QSize& row, int room) const {
    if (row.width() <= room)
        return row;
    return {std::max(room, 1), row.height() + horizontalScrollBar()->sizeHint().height()};
}

void RowScroller::wheelEvent(QWheelEvent* event) {
    QCoreApplication::sendEvent(horizontalScrollBar(), event);
}

}  // namespace velmo
