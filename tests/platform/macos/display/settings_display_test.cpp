#include "platform/macos/display/settings_display_test.h"

namespace velmo::macos {
namespace {

NSToolbar toolbarOf(const NSWindow& window) {
    return Message<"NSWindow", false, "toolbar", NSToolbar>::send(window.get());
}

}  // namespace

void SettingsDisplayStage::runSettings(const std::function<void()>& function) {
    run([&](const Platform& /*platform*/) {
        window = windowTitled("Velmo Settings");
        ASSERT_TRUE(window);
        runFor(0.1);
        function();
    });
}

std::vector<NSToolbarItem> SettingsDisplayStage::tabsOf(const NSWindow& window) {
    const auto items = Message<"NSToolbar", false, "items", NSArray>::send(toolbarOf(window).get());
    return items.all<NSToolbarItem>();
}

std::string SettingsDisplayStage::titleOf(const NSToolbarItem& tab) {
    return Message<"NSToolbarItem", false, "label", NSString>::send(tab.get()).text();
}

std::string SettingsDisplayStage::chosenTabOf(const NSWindow& window) {
    const auto toolbar = toolbarOf(window);
    return Message<"NSToolbar", false, "selectedItemIdentifier", NSString>::send(toolbar.get()).text();
}

void SettingsDisplayStage::click(const NSToolbarItem& tab) {
    const auto action = Message<"NSToolbarItem", false, "action", Selector>::send(tab.get());
    const auto target = Message<"NSToolbarItem", false, "target", Object>::send(tab.get());
    Message<"NSApplication", false, "sendAction:to:from:", bool, Selector, Object, Object>::send(
        NSApplication::shared().get(), action, target, tab);
    runFor(0.2);
}

NSView SettingsDisplayStage::open(std::size_t tab) const {
    click(tabs().at(tab));
    return page();
}

bool SettingsDisplayStage::pressKey(const char* key) const {
    const auto menu =
        Message<"NSApplication", false, "mainMenu", NSMenu>::send(NSApplication::shared().get());
    const auto event =
        Message<"NSEvent", true,
                "keyEventWithType:location:modifierFlags:timestamp:windowNumber:context:characters:"
                "charactersIgnoringModifiers:isARepeat:keyCode:",
                NSEvent, NSUInteger, CGPoint, NSUInteger, double, NSInteger, Object, NSString, NSString, bool,
                std::uint16_t>::send(NSEvent::classObject(), NSUInteger{10}, CGPoint{},
                                     NSUInteger{modifier::command}, 0.0, window.windowNumber(), Object(),
                                     NSString::from(key), NSString::from(key), false, std::uint16_t{0});
    const bool isKnown =
        Message<"NSMenu", false, "performKeyEquivalent:", bool, NSEvent>::send(menu.get(), event);
    runFor(0.2);
    return isKnown;
}

void SettingsDisplayStage::choose(const NSPopUpButton& button, int index) {
    button.selectItemAtIndex(index);
    use(button);
}

}  // namespace velmo::macos
