#include "qt_panel.h"

#include "hanging_frame.h"
#include "linux/local_events.h"

namespace velmo {

QtPanel::QtPanel(ToolkitHost& host, const PanelConfiguration& configuration)
    : host_(host),
      window_(
          host,
          {.hasShadow = configuration.hasShadow, .cornerRadius = configuration.cornerRadius, .isRow = true}) {
    window_.setWindowTitle(QStringLiteral("Velmo.Panel"));
    window_.setAccessibleName(
        QString::fromUtf8(configuration.accessibilityLabel.data(),
                          static_cast<qsizetype>(configuration.accessibilityLabel.size())));
    window_.setOnBarChange([this] { followBar(); });
    window_.setOnLeave([this] { leave(); });
}

void QtPanel::setFrame(const Rect& frame) {
    frame_ = frame;
    top_ = {frame.midX(), frame.maxY()};
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
    top_ = {top_.x + end.x - barEnd_.x, top_.y + end.y - barEnd_.y};
    barEnd_ = end;
    frame_ = hangingFrame(top_.x, top_.y, window_.fittingSize(), host_.visibleFrame(top_));
    show();
}

void QtPanel::leave() {
    orderOut();
    // A copy: the owner may end the panel.
    if (const auto handler = onClose_)
        handler();
}

void QtPanel::orderFrontRegardless() {
    show();
    window_.scrollToBegin();
    shown_ = host_.localEvents().addPanel();
}

void QtPanel::orderOut() {
    shown_ = {};
    window_.hide();
}

}  // namespace velmo
