#include "macos_panel.h"

#include <cmath>
#include <string>

namespace velmo::macos {

MacosPanel::MacosPanel(RunLoop& loop, const PanelConfiguration& configuration)
    : panel_(NSPanel::with({}, NSWindowStyleMask{configuration.styleMask})), host_(loop) {
    // The reference that closing would give up is ours.
    panel_.setReleasedWhenClosed(false);
    panel_.setFloatingPanel(configuration.isFloating);
    // A floating panel has a level of its own.
    panel_.setLevel(configuration.level);
    panel_.setHidesOnDeactivate(configuration.hidesOnDeactivate);
    panel_.setCollectionBehavior(NSWindowCollectionBehavior{configuration.collectionBehavior});
    // Another application stays in front.
    panel_.setAllowsToolTipsWhenApplicationIsInactive(true);
    panel_.setAnimationBehavior(NSWindowAnimationBehavior{configuration.animationBehavior});
    panel_.setBackgroundColor(NSColor::clear());
    panel_.setOpaque(false);
    panel_.setHasShadow(configuration.hasShadow);
    panel_.setAccessibilityLabel(NSString::from(std::string(configuration.accessibilityLabel)));
    background_.setMaterial(NSVisualEffectMaterial{configuration.material});
    background_.setBlendingMode(NSVisualEffectBlendingMode{configuration.blendingMode});
    background_.setState(NSVisualEffectState{configuration.materialState});
    background_.setWantsLayer(true);
    background_.layer().setCornerRadius(configuration.cornerRadius);
    background_.layer().setMasksToBounds(true);
    background_.addSubview(host_.view());
    panel_.setContentView(background_);
}

MacosPanel::~MacosPanel() {
    panel_.close();
}

void MacosPanel::setFrame(const Rect& frame) {
    // Between two pixels everything would be blurred.
    const Size size{std::ceil(frame.width), std::ceil(frame.height)};
    panel_.setFrame({{std::round(frame.x), std::round(frame.y)}, {size.width, size.height}});
    host_.place({0, 0, size.width, size.height});
}

}  // namespace velmo::macos
