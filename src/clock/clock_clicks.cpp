#include "clock/menu_bar_clock.h"
#include "menubar/closure_menu_item.h"
#include "platform/application.h"
#include "platform/status_bar.h"
#include "platform/window_factory.h"

namespace velmo {

void MenuBarClock::clicked(const Event& event) {
    StatusBarButton* clickedButton = button();
    if (clickedButton == nullptr)
        return;
    if (event.type == EventType::rightMouseUp)
        showMenu(*clickedButton);
    else
        togglePopover(*clickedButton);
}

void MenuBarClock::showMenu(StatusBarButton& under) {
    /// Points between the button and the menu under it.
    constexpr double menuDistance = 4;
    under.popUp(menu(), {0, under.size().height + menuDistance});
}

Menu MenuBarClock::menu() {
    target_->settingsHandler = lifetime_.guard([this] {
        // A copy: the callback may replace itself.
        if (const auto callback = onOpenSettings)
            callback();
    });
    target_->hideHandler = lifetime_.guard([this] { preferences_.clockEnabled.set(false); });
    const auto item = [this](const char* title, void (ClockClickTarget::*action)() const) {
        return std::make_shared<ClosureMenuItem>(title, "",
                                                 [target = std::weak_ptr<ClockClickTarget>(target_), action] {
                                                     if (const auto living = target.lock())
                                                         ((*living).*action)();
                                                 });
    };
    return {{item("Clock Settings…", &ClockClickTarget::openSettings),
             item("System Clock Options…", &ClockClickTarget::openSystemClock), nullptr,
             item("Hide velmo Clock", &ClockClickTarget::hideClock)}};
}

void MenuBarClock::togglePopover(StatusBarButton& under) {
    if (popover_ && popover_->isShown())
        popover_->performClose();
    else
        openPopover(under);
}

// A new calendar each time, so that it begins at the current month.
void MenuBarClock::openPopover(StatusBarButton& under) {
    popover_ = platform_.windows.makePopover();
    calendar_.reset();
    if (!popover_)
        return;
    calendar_ = std::make_unique<CalendarPopoverView>(platform_.dates, platform_.runLoop);
    calendar_->onChange = lifetime_.guard([this] { popover_->setContent(calendar_->body()); });
    popover_->setBehavior(PopoverBehavior::transient);
    popover_->setAnimates(true);
    popover_->setAccessibilityLabel("Calendar");
    popover_->setContent(calendar_->body());
    popover_->setOnClose(lifetime_.guard([this] { calendar_->disappear(); }));
    platform_.application.activateIgnoringOtherApps(true);
    const Size size = under.size();
    popover_->show({0, 0, size.width, size.height}, under, RectEdge::minY);
    if (popover_->isShown())
        calendar_->appear();
}

}  // namespace velmo
