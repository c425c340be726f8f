#include "simulated/simulated_status_bar_button.h"

#include "simulated/simulated_application.h"
#include "simulated/simulated_status_bar.h"

namespace velmo {

void SimulatedStatusBarButton::setImage(const std::optional<Image>& image) {
    statusBar_.note(item_, image ? "image" : "no image");
    image_ = image;
    if (item_.length() == StatusItem::variableLength)
        statusBar_.changed();
}

void SimulatedStatusBarButton::setTitle(const std::string& title) {
    statusBar_.note(item_, "title " + title);
    title_ = title;
    ++titleWrites_;
    if (item_.length() == StatusItem::variableLength)
        statusBar_.changed();
}

void SimulatedStatusBarButton::setEnabled(bool enabled) {
    statusBar_.note(item_, enabled ? "enabled" : "disabled");
    enabled_ = enabled;
}

Size SimulatedStatusBarButton::size() const {
    return {item_.width(), statusBar_.thickness()};
}

void SimulatedStatusBarButton::popUp(const Menu& menu, const Point& location) {
    // The item may be gone when this returns.
    statusBar_.menus_.popUp({item_.autosaveName(), menu, location});
}

std::optional<Rect> SimulatedStatusBarButton::frameOnScreen() const {
    statusBar_.layOut();
    return statusBar_.slotOf(item_).frame;
}

WindowNumber SimulatedStatusBarButton::windowNumber() const {
    return statusBar_.slotOf(item_).windowNumber;
}

std::optional<Screen> SimulatedStatusBarButton::screen() const {
    statusBar_.layOut();
    return statusBar_.screenOf(statusBar_.slotOf(item_));
}

std::unique_ptr<TrackingArea> SimulatedStatusBarButton::addTrackingArea(const Rect& rect,
                                                                        TrackingAreaOptions options,
                                                                        TrackingAreaOwner* owner) {
    return statusBar_.addArea(item_, rect, options, owner);
}

void SimulatedStatusBarButton::press(const Event& event, SimulatedApplication& application) {
    send(event, application);
}

void SimulatedStatusBarButton::release(const Event& event, bool pressedHere,
                                       SimulatedApplication& application) {
    if (pressedHere)
        send(event, application);
}

void SimulatedStatusBarButton::send(const Event& event, SimulatedApplication& application) {
    if (!enabled_ || (actionMask_ & maskOf(event.type)) == 0)
        return;
    // A copy: the action may end the item.
    if (const auto action = action_)
        application.handle(event, action);
}

}  // namespace velmo
