#pragma once

#include <QScrollArea>

namespace velmo {

/// Shows a row that may be wider than there is room for. The wheel moves it, whichever way it is turned, and
/// so does the bar below it.
class RowScroller : public QScrollArea {
public:
    /// The row is the owner's.
    RowScroller(QWidget& parent, QWidget& row);
    ~RowScroller() override;

    /// What it takes to show a row of this size where there is that much room, all in the toolkit's units.
    QSize sizeFor(const QSize& row, int room) const;

protected:
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace velmo
