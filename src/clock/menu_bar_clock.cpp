#include "clock/menu_bar_clock.h"

#include "platform/status_bar.h"

#include <utility>

namespace velmo {

MenuBarClock::MenuBarClock(Preferences& preferences, const Platform& platform)
    : platform_(platform),
      preferences_(preferences),
      formatter_(platform.dates.makeDateFormatter()),
      target_(std::make_shared<ClockClickTarget>(platform.application, platform.workspace)) {
    formatter_->setDateFormat(preferences_.clockFormat.value());
    target_->handler = lifetime_.guard([this](const Event& event) { clicked(event); });
    if (preferences_.clockEnabled.value())
        start(false);
    observePreferences();
}

// A reaction runs in a later turn of the loop, when the new value has been stored. The same value once more
// is a new value.
void MenuBarClock::observePreferences() {
    const auto observe = [this](const auto& setting, auto reaction) {
        cancellables_.push_back(setting.publisher()
                                    .dropFirst()
                                    .receiveOn(platform_.runLoop)
                                    .sink(lifetime_.guard(std::move(reaction))));
    };
    observe(preferences_.clockEnabled, [this](bool enabled) {
        if (enabled)
            start(true);
        else
            stop();
    });
    observe(preferences_.clockFormat, [this](const std::string& pattern) {
        formatter_->setDateFormat(pattern);
        rewriteTitle();
    });
    timeZoneObserver_ = platform_.dates.observeTimeZone(
        lifetime_.guard([this] { platform_.runLoop.post(lifetime_.guard([this] { rewriteTitle(); })); }));
}

void MenuBarClock::start(bool announce) {
    if (statusItem_)
        return;
    statusItem_ = platform_.statusBar.makeStatusItem(StatusItem::variableLength);
    statusItem_->setAutosaveName("Velmo.Clock");
    statusItem_->setVisible(true);
    if (StatusBarButton* made = button())
        setUpButton(*made);
    startTimer();
    refreshTitle();
    if (!announce)
        return;
    if (const auto callback = onEnabled)
        callback();
}

void MenuBarClock::setUpButton(StatusBarButton& made) const {
    // Digits of one width keep the item from growing and shrinking with the time.
    made.setFont(Font{.weight = FontWeight::regular, .hasMonospacedDigits = true});
    made.setAction([target = std::weak_ptr<ClockClickTarget>(target_)] {
        if (const auto living = target.lock())
            living->clicked();
    });
    made.sendActionOn(maskOf(EventType::leftMouseUp) | maskOf(EventType::rightMouseUp));
    made.setToolTip("velmo clock — click for a calendar, ⌘-drag to move");
}

void MenuBarClock::startTimer() {
    constexpr Seconds interval = 1.0;
    constexpr Seconds tolerance = 0.1;
    timer_ = platform_.runLoop.scheduleRepeating(interval, tolerance, lifetime_.guard([this] {
        platform_.runLoop.post(lifetime_.guard([this] { refreshTitle(); }));
    }));
}

void MenuBarClock::stop() {
    timer_.end();
    if (popover_)
        popover_->performClose();
    popover_.reset();
    calendar_.reset();
    statusItem_.reset();
}

void MenuBarClock::refreshTitle() {
    StatusBarButton* shown = button();
    if (shown == nullptr)
        return;
    const auto text = currentText();
    if (text != lastText_)
        showTitle(*shown, text);
}

void MenuBarClock::rewriteTitle() {
    const bool wasEmpty = std::exchange(lastText_, {}).empty();
    StatusBarButton* shown = button();
    if (shown == nullptr)
        return;
    const auto text = currentText();
    if (!text.empty() || !wasEmpty)
        showTitle(*shown, text);
}

void MenuBarClock::showTitle(StatusBarButton& shown, const std::string& text) {
    lastText_ = text;
    shown.setTitle(text);
}

std::string MenuBarClock::currentText() const {
    return formatter_->string(platform_.runLoop.now()).value_or("");
}

StatusBarButton* MenuBarClock::button() const {
    return statusItem_ ? statusItem_->button() : nullptr;
}

std::optional<Rect> MenuBarClock::screenFrame() const {
    const StatusBarButton* shown = button();
    return shown != nullptr ? shown->frameOnScreen() : std::nullopt;
}

}  // namespace velmo
