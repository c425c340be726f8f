#include "menubar/control_item.h"

namespace velmo {

namespace {

/// The width of the divider images.
constexpr double collapsedLength = 12;
/// Longer than any screen is wide.
constexpr double expandedLength = 10000;

}  // namespace

ControlItem::ControlItem(Kind kind, const std::string& autosaveName, const Platform& platform)
    : kind_(kind),
      statusItem_(platform.statusBar.makeStatusItem(kind == Kind::divider ? collapsedLength
                                                                          : StatusItem::variableLength)),
      target_(std::make_shared<ClickTarget>(platform.application)) {
    statusItem_->setAutosaveName(autosaveName);
    statusItem_->setVisible(true);
    target_->handler = lifetime_.guard([this](const Event& event) { clicked(event); });
    if (StatusBarButton* button = statusItem_->button()) {
        button->setAction([target = std::weak_ptr<ClickTarget>(target_)] {
            if (const auto living = target.lock())
                living->clicked();
        });
        button->sendActionOn(maskOf(EventType::leftMouseUp) | maskOf(EventType::rightMouseUp));
    }
    update();
}

void ControlItem::update() {
    StatusBarButton* button = statusItem_->button();
    if (button == nullptr)
        return;
    if (kind_ == Kind::divider && isExpanded) {
        button->setImage(std::nullopt);
        button->setEnabled(false);
        statusItem_->setLength(expandedLength);
        return;
    }
    if (kind_ == Kind::divider)
        statusItem_->setLength(collapsedLength);
    button->setImage(image);
    button->setEnabled(true);
}

std::optional<Rect> ControlItem::screenFrame() const {
    const StatusBarButton* button = statusItem_->button();
    return button != nullptr ? button->frameOnScreen() : std::nullopt;
}

void ControlItem::clicked(const Event& event) const {
    // A copy: the callback may replace itself, or end this item.
    if (const auto callback = onClick)
        callback(event);
}

}  // namespace velmo
