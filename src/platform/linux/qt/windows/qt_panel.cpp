#include "qt_panel.h"

#include "linux/local_events.h"

namespace velmo {

QtPanel::QtPanel(ToolkitHost& host, const PanelConfiguration& configuration)
    : host_(host),
      window_(host, {.hasShadow = configuration.hasShadow, .cornerRadius = configuration.cornerRadius}) {
    window_.setWindowTitle(QStringLiteral("Velmo.Panel"));
    window_.setAccessibleName(
        QString::fromUtf8(configuration.accessibilityLabel.data(),
                          static_cast<qsizetype>(configuration.accessibilityLabel.size())));
}

void QtPanel::setFrame(const Rect& frame) {
    const Rect pixels = host_.toPixels(frame);
    corner_ = {pixels.x, pixels.y};
    if (window_.isVisible())
        window_.showAt(corner_);
}

void QtPanel::orderFrontRegardless() {
    window_.showAt(corner_);
    shown_ = host_.localEvents().addPanel();
}

void QtPanel::orderOut() {
    shown_ = {};
    window_.hide();
}

}  // namespace velmo
