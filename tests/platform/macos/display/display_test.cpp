#include "platform/macos/display/display_test.h"

#include "macos/foundation/ns_date.h"
#include "platform/macos/doubles/menu_bar.h"

#include <chrono>
#include <cstdlib>

namespace velmo::macos {
namespace {

using Clock = std::chrono::steady_clock;

void turn() {
    const AutoreleasePool pool;
    const NSApplication application = NSApplication::shared();
    const NSDate soon = Message<"NSDate", true, "dateWithTimeIntervalSinceNow:", NSDate, double>::send(
        NSDate::classObject(), 0.01);
    const NSEvent event =
        Message<"NSApplication", false, "nextEventMatchingMask:untilDate:inMode:dequeue:", NSEvent,
                NSUInteger, NSDate, NSString, bool>::send(application.get(), ~NSUInteger{0}, soon,
                                                          NSString::from("NSDefaultRunLoopMode"), true);
    if (!event)
        return;
    if (const NSEvent passed = doubles::tellLocalMonitors(event))
        Message<"NSApplication", false, "sendEvent:", void, NSEvent>::send(application.get(), passed);
}

NSEvent mouseEvent(NSUInteger type, const CGPoint& point, const NSWindow& window) {
    return Message<"NSEvent", true,
                   "mouseEventWithType:location:modifierFlags:timestamp:windowNumber:context:eventNumber:"
                   "clickCount:pressure:",
                   NSEvent, NSUInteger, CGPoint, NSUInteger, double, NSInteger, Object, NSInteger, NSInteger,
                   float>::send(NSEvent::classObject(), type, point, NSUInteger{0}, 0.0,
                                window.windowNumber(), Object(), NSInteger{1}, NSInteger{1}, 1.0F);
}

}  // namespace

DisplayStage::DisplayStage() {
    system.hasDisplay = true;
    NSApplication::shared();
}

DisplayStage::~DisplayStage() {
    // Windows that have been kept are not those of the next test.
    const auto windows =
        Message<"NSApplication", false, "windows", NSArray>::send(NSApplication::shared().get());
    for (const NSWindow& window : windows.all<NSWindow>())
        window.setTitle(NSString::from(""));
    for (const Object& window : system.barWindows)
        Message<"NSWindow", false, "close", void>::send(window.get());
}

bool DisplayStage::runUntil(const std::function<bool()>& condition) {
    const auto limit = Clock::now() + std::chrono::seconds(8);
    while (!condition()) {
        if (Clock::now() > limit)
            return false;
        turn();
    }
    return true;
}

void DisplayStage::runFor(double seconds) {
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    runUntil([end] { return Clock::now() >= end; });
}

NSWindow DisplayStage::windowTitled(const std::string& title) {
    const auto windows =
        Message<"NSApplication", false, "windows", NSArray>::send(NSApplication::shared().get());
    for (const NSWindow& window : windows.all<NSWindow>()) {
        if (Message<"NSWindow", false, "title", NSString>::send(window.get()).text() == title)
            return window;
    }
    return {};
}

NSView DisplayStage::contentOf(const NSWindow& window) {
    return Message<"NSWindow", false, "contentView", NSView>::send(window.get());
}

std::vector<NSView> DisplayStage::viewsBelow(const NSView& view) {
    std::vector<NSView> found;
    const auto subviews = Message<"NSView", false, "subviews", NSArray>::send(view.get());
    for (const NSView& one : subviews.all<NSView>()) {
        if (one.isHidden())
            continue;
        found.push_back(one);
        const auto inner = viewsBelow(one);
        found.insert(found.end(), inner.begin(), inner.end());
    }
    return found;
}

bool DisplayStage::shows(const NSView& view, const std::string& text) {
    for (const NSControl& control : allBelow<NSControl>(view)) {
        if (control.stringValue().text() == text)
            return true;
    }
    return false;
}

void DisplayStage::use(const NSControl& control) {
    const auto action = Message<"NSControl", false, "action", Selector>::send(control.get());
    const auto target = Message<"NSControl", false, "target", Object>::send(control.get());
    Message<"NSControl", false, "sendAction:to:", bool, Selector, Object>::send(control.get(), action,
                                                                                target);
    runFor(0.05);
}

void DisplayStage::press(const NSControl& control) {
    // GNUstep's switches cannot be clicked.
    if (const auto toggle = as<NSSwitch>(control)) {
        toggle.setState(toggle.state() == 0 ? 1 : 0);
        use(toggle);
        return;
    }
    Message<"NSControl", false, "performClick:", void, Object>::send(control.get(), Object());
    runFor(0.05);
}

void DisplayStage::clickInto(const NSView& view) {
    const CGRect area = view.convertRectTo(view.bounds(), NSView());
    const CGPoint middle{area.origin.x + area.size.width / 2, area.origin.y + area.size.height / 2};
    const NSWindow window = view.window();
    tellOfMouse(EventType::leftMouseDown, middle, window);
    tellOfMouse(EventType::leftMouseUp, middle, window);
}

void DisplayStage::tellOfMouse(EventType type, const CGPoint& point, const NSWindow& window) {
    Message<"NSApplication", false, "postEvent:atStart:", void, NSEvent, bool>::send(
        NSApplication::shared().get(), mouseEvent(static_cast<NSUInteger>(type), point, window), false);
    runFor(0.05);
}

void DisplayStage::picture(const std::string& name) {
    const char* folder = std::getenv("VELMO_PICTURES");
    if (folder == nullptr)
        return;
    runFor(0.3);
    // GNUstep draws what has changed over what lies on it.
    const auto windows =
        Message<"NSApplication", false, "windows", NSArray>::send(NSApplication::shared().get());
    for (const NSWindow& window : windows.all<NSWindow>())
        Message<"NSWindow", false, "display", void>::send(window.get());
    runFor(0.2);
    const std::string command = "import -window root '" + std::string(folder) + '/' + name + ".png'";
    EXPECT_EQ(std::system(command.c_str()), 0);
}

}  // namespace velmo::macos
