#include "macos_status_bar_button.h"

#include "font_from.h"
#include "image_from.h"
#include "macos_tracking_area.h"
#include "screen_from.h"

#include <utility>

namespace velmo::macos {

MacosStatusBarButton::MacosStatusBarButton(NSStatusBarButton button) : button_(std::move(button)) {
    button_.setTarget(instance_.object());
    button_.setAction(selectorNamed<"clicked:">());
}

MacosStatusBarButton::~MacosStatusBarButton() {
    button_.setTarget(Object());
}

void MacosStatusBarButton::setImage(const std::optional<Image>& image) {
    button_.setImage(image ? imageFrom(*image) : NSImage());
}

void MacosStatusBarButton::setTitle(const std::string& title) {
    button_.setTitle(NSString::from(title));
}

void MacosStatusBarButton::setFont(const Font& font) {
    button_.setFont(fontFrom(font));
}

void MacosStatusBarButton::setEnabled(bool enabled) {
    button_.setEnabled(enabled);
}

void MacosStatusBarButton::setToolTip(const std::string& text) {
    button_.setToolTip(NSString::from(text));
}

void MacosStatusBarButton::setAction(std::function<void()> action) {
    action_ = std::move(action);
}

void MacosStatusBarButton::sendActionOn(EventMask mask) {
    button_.sendActionOn(NSEventMask{mask});
}

Size MacosStatusBarButton::size() const {
    const CGSize size = button_.bounds().size;
    return {size.width, size.height};
}

void MacosStatusBarButton::popUp(const Menu& menu, const Point& location) {
    // Both held here, because the chosen item may take the button away.
    const NSStatusBarButton button = button_;
    const auto shown = std::make_shared<ShownMenu>(menu);
    menu_ = shown;
    const double y = button.isFlipped() ? location.y : size().height - location.y;
    shown->popUp(CGPoint{location.x, y}, button);
}

std::optional<Rect> MacosStatusBarButton::frameOnScreen() const {
    const NSWindow window = button_.window();
    if (!window)
        return std::nullopt;
    return rectOf(window.convertRectToScreen(button_.convertRectTo(button_.bounds(), NSView())));
}

WindowNumber MacosStatusBarButton::windowNumber() const {
    return button_.window().windowNumber();
}

std::optional<Screen> MacosStatusBarButton::screen() const {
    return screenFrom(button_.window().screen());
}

std::unique_ptr<TrackingArea> MacosStatusBarButton::addTrackingArea(const Rect& rect,
                                                                    TrackingAreaOptions options,
                                                                    TrackingAreaOwner* owner) {
    return std::make_unique<MacosTrackingArea>(button_, cgRect(rect), options, owner);
}

void MacosStatusBarButton::clicked(const NSObject& /*sender*/) {
    if (!action_)
        return;
    // A copy, because the action may replace itself.
    const auto action = action_;
    action();
}

}  // namespace velmo::macos
