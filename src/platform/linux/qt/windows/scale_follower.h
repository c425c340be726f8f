#pragma once

#include <QWidget>

#include <functional>
#include <utility>

namespace velmo {

/// Gives a window its size where that may be in another scale than before.
class ScaleFollower {
public:
    /// `ratio` has the pixels for one of the toolkit's units before the first time.
    explicit ScaleFollower(qreal ratio = 0) : ratio_(ratio) {}

    /// `resize` gives the widget its size, and so many units more. Returns the former ratio over the present
    /// one.
    qreal resize(QWidget& widget, const std::function<void(int more)>& resize) {
        const qreal formerRatio = std::exchange(ratio_, widget.devicePixelRatioF());
        if (ratio_ != formerRatio) {
            // In another scale the same size is one of other pixels, of which the toolkit takes no notice.
            resize(1);
            widget.repaint();
        }
        resize(0);
        return formerRatio / ratio_;
    }

private:
    qreal ratio_;
};

}  // namespace velmo
