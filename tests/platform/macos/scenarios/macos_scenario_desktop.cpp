#include "platform/macos/scenarios/macos_scenario_desktop.h"

#include "app/run_application.h"
#include "macos/appkit/ns_menu_item.h"
#include "macos/foundation/ns_notification_center.h"
#include "macos/foundation/ns_user_defaults.h"
#include "macos/macos_desktop.h"
#include "platform/macos/doubles/application.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/record_class.h"
#include "platform/macos/doubles/window_list.h"

#include <chrono>
#include <stdexcept>

namespace velmo::macos {
namespace {

NSUserDefaults defaults() {
    return NSUserDefaults::standard();
}

/// GNUstep writes something for a separator.
std::string titleOf(const Object& menuItem) {
    if (Message<"NSMenuItem", false, "isSeparatorItem", bool>::send(menuItem.get()))
        return "-";
    return Message<"NSMenuItem", false, "title", NSString>::send(menuItem.get()).text();
}

struct Storing {
    NSString key;

    void operator()(bool value) const { defaults().setBool(value, key); }
    void operator()(double value) const { defaults().setDouble(value, key); }
    void operator()(const std::string& value) const { defaults().setObject(NSString::from(value), key); }
    void operator()(const Data& value) const { defaults().setObject(NSData::from(value), key); }
};

/// As the system tells the owner of the last tracking area.
template <FixedString selector>
void tellTrackingOwner() {
    if (doubles::system().trackingAreas.empty())
        return;
    const auto owner =
        Message<"NSTrackingArea", false, "owner", Object>::send(doubles::system().trackingAreas.back().get());
    Message<"NSResponder", false, selector, void, Object>::send(
        owner.get(), doubles::makeEvent({.type = EventType::mouseEntered}));
}

}  // namespace

void MacosScenarioDesktop::run(const std::function<void()>& user) {
    const MacosDesktop desktop;
    doubles::system().whileApplicationRuns = [&] {
        isRunning_ = true;
        countFromNow();
        settle();
        user();
    };
    runApplication(desktop.platform());
    isRunning_ = false;
}

int MacosScenarioDesktop::endings() {
    return doubles::system().terminations;
}

std::vector<std::string> MacosScenarioDesktop::leftBehind() {
    settle();
    const auto& system = doubles::system();
    std::vector<std::string> left;
    const auto note = [&left](const char* what, std::size_t count) { left.insert(left.end(), count, what); };
    note("item", system.statusItems.size());
    note("monitor", system.monitors.size());
    note("tracking area", system.trackingAreas.size());
    note("shortcut", system.hotKeys.size());
    note("shortcut handler", static_cast<std::size_t>(system.handlerCount));
    note("activity", system.activities.size());
    return left;
}

void MacosScenarioDesktop::store(const std::string& key, const DefaultsValue& value) {
    countFromNow();
    std::visit(Storing{NSString::from(key)}, value);
}

bool MacosScenarioDesktop::isStored(const std::string& key) {
    return static_cast<bool>(defaults().objectForKey(NSString::from(key)));
}

bool MacosScenarioDesktop::storedFlag(const std::string& key) {
    return defaults().boolForKey(NSString::from(key));
}

double MacosScenarioDesktop::storedNumber(const std::string& key) {
    return defaults().doubleForKey(NSString::from(key));
}

std::string MacosScenarioDesktop::storedText(const std::string& key) {
    return defaults().stringForKey(NSString::from(key)).text();
}

Data MacosScenarioDesktop::storedData(const std::string& key) {
    return defaults().dataForKey(NSString::from(key)).bytes();
}

Date MacosScenarioDesktop::currentTime() {
    using std::chrono::system_clock;
    return std::chrono::duration<double>(system_clock::now().time_since_epoch()).count();
}

void MacosScenarioDesktop::setHoursFromUtc(int hours) {
    countFromNow();
    doubles::system().timeZone =
        Message<"NSTimeZone", true, "timeZoneForSecondsFromGMT:", NSTimeZone, NSInteger>::send(
            NSTimeZone::classObject(), NSInteger{3600} * hours);
    if (!isRunning_)
        return;
    Message<"NSNotificationCenter", false, "postNotificationName:object:", void, NSString, Object>::send(
        NSNotificationCenter::defaultCenter().get(), NSString::from("NSSystemTimeZoneDidChangeNotification"),
        Object());
    settle();
}

testing::AssertionResult MacosScenarioDesktop::happensAfter(Seconds seconds,
                                                            const std::function<bool()>& condition) {
    if (!waitUntil(condition))
        return testing::AssertionFailure() << "much more than " << seconds << " s";
    const Seconds passed = currentTime() - countsFrom_;
    countFromNow();
    return passed >= seconds / 2 ? testing::AssertionSuccess()
                                 : testing::AssertionFailure() << passed << " s instead of " << seconds;
}

bool MacosScenarioDesktop::happensWithin(Seconds /*seconds*/, const std::function<bool()>& condition) {
    const bool happens = waitUntil(condition);
    countFromNow();
    return happens;
}

void MacosScenarioDesktop::wait(Seconds seconds) {
    const Date end = currentTime() + seconds;
    waitUntil([end] { return currentTime() >= end; });
    countFromNow();
}

void MacosScenarioDesktop::settle() {
    constexpr int enough = 3;
    int turns = 0;
    waitUntil([&turns] { return turns++ == enough; });
}

Object MacosScenarioDesktop::itemOf(const std::string& item) {
    Object found = doubles::itemNamed(item);
    if (!found)
        throw std::logic_error("there is no " + item);
    return found;
}

Object MacosScenarioDesktop::buttonOf(const std::string& item) {
    return doubles::member(itemOf(item), "button");
}

bool MacosScenarioDesktop::hasItem(const std::string& item) {
    return static_cast<bool>(doubles::itemNamed(item));
}

bool MacosScenarioDesktop::isVisible(const std::string& item) {
    return doubles::numberMember(itemOf(item), "isVisible") != 0;
}

double MacosScenarioDesktop::length(const std::string& item) {
    return doubles::numberMember(itemOf(item), "length");
}

bool MacosScenarioDesktop::isEnabled(const std::string& item) {
    return Message<"NSControl", false, "isEnabled", bool>::send(buttonOf(item).get());
}

std::string MacosScenarioDesktop::title(const std::string& item) {
    return Message<"NSButton", false, "title", NSString>::send(buttonOf(item).get()).text();
}

std::string MacosScenarioDesktop::toolTip(const std::string& item) {
    return Message<"NSView", false, "toolTip", NSString>::send(buttonOf(item).get()).text();
}

std::string MacosScenarioDesktop::symbol(const std::string& item) {
    return doubles::symbolOf(Message<"NSButton", false, "image", Object>::send(buttonOf(item).get()));
}

void MacosScenarioDesktop::clickWith(const Object& button, const Event& event) {
    countFromNow();
    doubles::click(button, event);
    settle();
}

void MacosScenarioDesktop::click(const std::string& item, ModifierFlags flags) {
    clickWith(buttonOf(item), {.type = EventType::leftMouseUp, .modifierFlags = flags});
}

void MacosScenarioDesktop::openMenu(const std::string& item, const std::function<void()>& whileOpen) {
    const Object button = buttonOf(item);
    const auto shown = doubles::system().shownMenus.size();
    doubles::system().whileMenuIsOpen = [&] {
        whileOpen();
        countFromNow();
    };
    clickWith(button, {.type = EventType::rightMouseUp});
    doubles::system().whileMenuIsOpen = {};
    EXPECT_EQ(doubles::system().shownMenus.size(), shown + 1) << item;
}

std::vector<std::string> MacosScenarioDesktop::menuTitles() {
    std::vector<std::string> titles;
    for (const Object& item : doubles::system().shownMenus.back().items)
        titles.push_back(titleOf(item));
    return titles;
}

void MacosScenarioDesktop::choose(const std::string& title) {
    for (const Object& item : doubles::system().shownMenus.back().items) {
        if (titleOf(item) == title)
            return doubles::choose(item);
    }
    ADD_FAILURE() << "the menu has no " << title;
}

void MacosScenarioDesktop::setOtherMenuOpen(bool isOpen) {
    countFromNow();
    doubles::system().windowList = isOpen ? doubles::arrayOf({doubles::menuWindow()}) : doubles::arrayOf({});
}

void MacosScenarioDesktop::movePointer(Place place) {
    countFromNow();
    doubles::system().mouseLocation = place == Place::elsewhere ? Point{700, 400} : Point{700, 890};
    if (place == Place::toggle)
        tellTrackingOwner<"mouseEntered:">();
    else
        tellTrackingOwner<"mouseExited:">();
    settle();
}

void MacosScenarioDesktop::clickWithPointer() {
    countFromNow();
    doubles::tellGlobalMonitors(doubles::makeEvent({.type = EventType::leftMouseDown}));
    settle();
}

void MacosScenarioDesktop::scroll(double deltaX, double deltaY) {
    countFromNow();
    doubles::tellGlobalMonitors(doubles::makeEvent(
        {.type = EventType::scrollWheel, .scrollingDeltaX = deltaX, .scrollingDeltaY = deltaY}));
    settle();
}

bool MacosScenarioDesktop::pressShortcut(std::uint16_t keyCode, std::uint32_t modifiers) {
    countFromNow();
    const auto registered = doubles::system().hotKeys;
    bool isTaken = false;
    for (const auto& [reference, key] : registered) {
        if (key.keyCode != keyCode || key.modifiers != modifiers)
            continue;
        isTaken = true;
        EXPECT_EQ(doubles::sendHotKeyEvent(key.signature, key.id), 0);
    }
    settle();
    return isTaken;
}

std::vector<std::string> MacosScenarioDesktop::openedAddresses() {
    return doubles::system().openedAddresses;
}

void MacosScenarioDesktop::startAgain() {
    countFromNow();
    EXPECT_FALSE(doubles::reopenApplication(false));
    settle();
}

}  // namespace velmo::macos
