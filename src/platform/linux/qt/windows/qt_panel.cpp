#include "qt_panel.h"

#include "linux/local_events.h"
#include "linux/qt/windows/hanging_frame.h"

namespace velmo {

QtPanel::QtPanel(ToolkitHost& host, const PanelConfiguration& configuration)
    : host_(host),
      window_(host, {.hasShadow = configuration.hasShadow, .cornerRadius = configuration.cornerRadius}) {
    window_.setWindowTitle(QStringLiteral("Velmo.Panel"));
    window_.setAccessibleName(
        QString::fromUtf8(configuration.accessibilityLabel.data(),
                          static_cast<qsizetype>(configuration.accessibilityLabel.size())));
    window_.setOnBarChange([this] { followBar(); });
}

void QtPanel::setFrame(const Rect& frame) {
    frame_ = frame;
    barEnd_ = host_.barEnd();
    if (window_.isVisible())
        show();
}

void QtPanel::show() {
    const Rect pixels = host_.toPixels(frame_);
    window_.showAt({pixels.x, pixels.y});
}

/// It hangs below the same item, in the size that its content has by now.
void QtPanel::followBar() {
    const Point end = host_.barEnd();
    const Point middle{frame_.midX() + end.x - barEnd_.x, frame_.maxY() + end.y - barEnd_.y};
    setFrame(hangingFrame(middle.x, middle.y, window_.fittingSize(), host_.visibleFrame(middle)));
}

void QtPanel::orderFrontRegardless() {
    show();
    shown_ = host_.localEvents().addPanel();
}

void QtPanel::orderOut() {
    shown_ = {};
    window_.hide();
}

}  // namespace velmo
