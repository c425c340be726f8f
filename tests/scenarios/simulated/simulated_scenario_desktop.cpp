#include "scenarios/simulated/simulated_scenario_desktop.h"

#include "app/run_application.h"
#include "clock/date_of.h"

#include <algorithm>
#include <stdexcept>

namespace velmo {

std::unique_ptr<ScenarioDesktop> makeScenarioDesktop() {
    return std::make_unique<SimulatedScenarioDesktop>();
}

SimulatedScenarioDesktop::SimulatedScenarioDesktop() {
    desktop_.runLoop().setNow(dateOf(2025, 7, 5, 13, 4, 9));
    // As on any desktop, where items of the system are at the far right.
    desktop_.statusBar().addOther({"system", 7, "System", {}, 100});
    movePointer(Place::elsewhere);
    desktop_.screenCapture().setGranted(false);
    desktop_.accessibility().setTrusted(false);
}

void SimulatedScenarioDesktop::run(const std::function<void()>& user) {
    desktop_.application().setWhileRunning([&] {
        runPosted();
        user();
    });
    runApplication(desktop_.platform());
    desktop_.application().setWhileRunning(nullptr);
    desktop_.userDefaults().forgetRegistered();
}

int SimulatedScenarioDesktop::endings() {
    const auto& calls = desktop_.application().calls();
    return static_cast<int>(std::count(calls.begin(), calls.end(), SimulatedApplication::Call::terminate));
}

std::vector<std::string> SimulatedScenarioDesktop::leftBehind() {
    std::vector<std::string> left;
    for (const auto* item : desktop_.statusBar().items())
        left.push_back(item->autosaveName());
    const auto note = [&left](const char* what, std::size_t count) { left.insert(left.end(), count, what); };
    note("monitor", desktop_.events().monitoredMasks().size());
    note("local monitor", desktop_.events().locallyMonitoredMasks().size());
    note("tracking area", desktop_.statusBar().trackingAreas().size());
    note("shortcut", desktop_.hotKeys().held().size());
    note("shortcut handler", desktop_.hotKeys().handledTypes().size());
    note("timer", desktop_.runLoop().timerCount());
    note("window", desktop_.windows().windows().size());
    note("popover", desktop_.windows().popovers().size());
    note("panel", desktop_.windows().panels().size());
    return left;
}

void SimulatedScenarioDesktop::store(const std::string& key, const DefaultsValue& value) {
    desktop_.userDefaults().setObject(value, key);
}

bool SimulatedScenarioDesktop::isStored(const std::string& key) {
    return desktop_.userDefaults().stored().contains(key);
}

double SimulatedScenarioDesktop::storedNumber(const std::string& key) {
    return desktop_.userDefaults().doubleForKey(key);
}

std::string SimulatedScenarioDesktop::storedText(const std::string& key) {
    return desktop_.userDefaults().stringForKey(key).value_or("");
}

Data SimulatedScenarioDesktop::storedData(const std::string& key) {
    return desktop_.userDefaults().dataForKey(key).value_or(Data());
}

void SimulatedScenarioDesktop::setHoursFromUtc(int hours) {
    desktop_.dates().setSecondsFromUtc(3600.0 * hours);
    runPosted();
}

testing::AssertionResult SimulatedScenarioDesktop::happensAfter(Seconds seconds,
                                                                const std::function<bool()>& condition) {
    constexpr Seconds instant = 0.001;
    desktop_.advance(seconds - instant);
    if (condition())
        return testing::AssertionFailure() << "less than " << seconds << " s";
    desktop_.advance(instant);
    return condition() ? testing::AssertionSuccess()
                       : testing::AssertionFailure() << "more than " << seconds << " s";
}

bool SimulatedScenarioDesktop::happensWithin(Seconds seconds, const std::function<bool()>& condition) {
    desktop_.advance(seconds);
    return condition();
}

SimulatedStatusItem& SimulatedScenarioDesktop::itemOf(const std::string& item) {
    auto* found = desktop_.statusBar().item(item);
    if (found == nullptr)
        throw std::logic_error("there is no " + item);
    return *found;
}

std::string SimulatedScenarioDesktop::symbol(const std::string& item) {
    const auto& image = buttonOf(item).image();
    return image ? std::get<Symbol>(image->content).name : "";
}

void SimulatedScenarioDesktop::click(const std::string& item, ModifierFlags flags) {
    itemOf(item);
    if (!desktop_.statusBar().isOnScreen(*desktop_.statusBar().slot(item)))
        throw std::logic_error(item + " is off the screen");
    desktop_.click(item, MouseButton::left, flags);
    runPosted();
}

void SimulatedScenarioDesktop::openMenu(const std::string& item, const std::function<void()>& whileOpen) {
    itemOf(item);
    const auto shown = desktop_.menus().shownCount();
    desktop_.menus().setScript([&](SimulatedOpenMenu& menu) {
        openMenu_ = &menu;
        whileOpen();
        openMenu_ = nullptr;
    });
    EXPECT_TRUE(desktop_.click(item, MouseButton::right)) << item;
    EXPECT_EQ(desktop_.menus().shownCount(), shown + 1) << item;
    desktop_.menus().setScript(nullptr);
    runPosted();
}

void SimulatedScenarioDesktop::choose(const std::string& title) {
    EXPECT_TRUE(openMenu_->choose(title)) << "the menu has no " << title;
}

void SimulatedScenarioDesktop::setOtherMenuOpen(bool isOpen) {
    if (isOpen)
        otherMenu_ = desktop_.windowServer().addMenu(7, {0, 26, 100, 200});
    else if (otherMenu_)
        desktop_.windowServer().removeWindow(*otherMenu_);
}

void SimulatedScenarioDesktop::movePointer(Place place) {
    Point location{300, 400};
    if (place == Place::menuBar)
        location = {1400, 890};
    if (place == Place::toggle) {
        const Rect frame = *buttonOf("Velmo.Toggle").frameOnScreen();
        location = {frame.midX(), frame.midY()};
    }
    desktop_.movePointer(location);
    runPosted();
}

void SimulatedScenarioDesktop::clickWithPointer() {
    desktop_.clickAtPointer();
    runPosted();
}

void SimulatedScenarioDesktop::scroll(double deltaX, double deltaY) {
    desktop_.scrollAtPointer(deltaX, deltaY);
    runPosted();
}

bool SimulatedScenarioDesktop::pressShortcut(std::uint16_t keyCode, std::uint32_t modifiers) {
    const bool isTaken = !desktop_.hotKeys().press(keyCode, modifiers).empty();
    runPosted();
    return isTaken;
}

bool SimulatedScenarioDesktop::startsAtLogin() {
    return desktop_.loginService().status() == LoginServiceStatus::enabled;
}

void SimulatedScenarioDesktop::setLoginError(const std::string& error) {
    desktop_.loginService().setError(error.empty() ? std::nullopt : std::optional(error));
}

std::optional<double> SimulatedScenarioDesktop::iconSpacing() {
    const auto value = desktop_.globalPreferences().value("NSStatusItemSpacing");
    return value ? std::optional(std::get<double>(*value)) : std::nullopt;
}

void SimulatedScenarioDesktop::setHiddenIcons(const std::vector<std::string>& names) {
    for (const std::string& name : names)
        desktop_.statusBar().addOther({name, 7, name, {}, 24});
    ScreenCapture::WindowNumbers windows;
    for (const auto& slot : desktop_.statusBar().slots())
        windows.push_back(static_cast<std::uint32_t>(slot->windowNumber));
    desktop_.screenCapture().setShareableWindows(windows);
}

std::string SimulatedScenarioDesktop::clickedIcon() {
    const auto& posted = desktop_.eventPoster().posted();
    const auto release = std::find_if(posted.rbegin(), posted.rend(),
                                      [](const auto& event) { return event.type == EventType::leftMouseUp; });
    if (release == posted.rend())
        return "";
    // Posted from the top.
    const Point point{release->location.x, desktop_.screens().main()->frame.maxY() - release->location.y};
    for (const auto& slot : desktop_.statusBar().slots()) {
        if (slot->own == nullptr && slot->frame && slot->frame->contains(point))
            return slot->other.ownerName;
    }
    return "";
}

void SimulatedScenarioDesktop::startAgain() {
    EXPECT_FALSE(desktop_.application().reopen(settings_.isShown()));
    runPosted();
}

}  // namespace velmo
