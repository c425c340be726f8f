#include "platform/macos/display/display_scenario_window.h"

#include "macos/appkit/ns_slider.h"
#include "macos/appkit/ns_text_field.h"
#include "platform/macos/doubles/menu_bar.h"

#include <stdexcept>

namespace velmo::macos {
namespace {

std::string titleOf(const NSButton& button) {
    return Message<"NSButton", false, "title", NSString>::send(button.get()).text();
}

std::vector<std::string> optionsOf(const NSPopUpButton& button) {
    std::vector<std::string> titles;
    const auto all = Message<"NSPopUpButton", false, "itemTitles", NSArray>::send(button.get());
    for (const NSString& title : all.all<NSString>())
        titles.push_back(title.text());
    return titles;
}

void expectEnabled(const NSControl& control, const std::string& name) {
    if (!control.isEnabled())
        throw std::logic_error('"' + name + "\" is disabled");
}

}  // namespace

NSView DisplayScenarioWindow::page() {
    const NSView shown = content();
    if (!shown)
        throw std::logic_error("the window is not shown");
    return shown;
}

template <typename Handle>
Handle DisplayScenarioWindow::control(const std::string& name) {
    auto found = stage_.named<Handle>(page(), name);
    if (!found)
        throw std::logic_error("there is no \"" + name + '"');
    return found;
}

template <typename Handle>
Handle DisplayScenarioWindow::usable(const std::string& name) {
    auto found = control<Handle>(name);
    expectEnabled(found, name);
    return found;
}

NSButton DisplayScenarioWindow::buttonSaying(const std::string& words) {
    for (const NSButton& button : DisplayStage::allBelow<NSButton>(page())) {
        if (titleOf(button) == words)
            return button;
    }
    return stage_.named<NSButton>(page(), words);
}

std::vector<std::string> DisplayScenarioWindow::texts() {
    std::vector<std::string> texts;
    for (const NSTextField& label : DisplayStage::allBelow<NSTextField>(page()))
        texts.push_back(label.stringValue().text());
    return texts;
}

std::vector<std::string> DisplayScenarioWindow::tabs() {
    std::vector<std::string> titles;
    for (const NSToolbarItem& tab : SettingsDisplayStage::tabsOf(page().window()))
        titles.push_back(SettingsDisplayStage::titleOf(tab));
    return titles;
}

std::string DisplayScenarioWindow::chosenTab() {
    const std::string chosen = SettingsDisplayStage::chosenTabOf(page().window());
    for (const NSToolbarItem& tab : SettingsDisplayStage::tabsOf(page().window())) {
        if (tab.itemIdentifier().text() == chosen)
            return SettingsDisplayStage::titleOf(tab);
    }
    return "";
}

void DisplayScenarioWindow::chooseTab(const std::string& title) {
    desktop_.countFromNow();
    for (const NSToolbarItem& tab : SettingsDisplayStage::tabsOf(page().window())) {
        if (SettingsDisplayStage::titleOf(tab) == title)
            return SettingsDisplayStage::click(tab);
    }
    throw std::logic_error("there is no tab " + title);
}

void DisplayScenarioWindow::press(const std::string& button) {
    desktop_.countFromNow();
    const NSButton found = buttonSaying(button);
    if (!found)
        throw std::logic_error("there is no \"" + button + '"');
    expectEnabled(found, button);
    DisplayStage::press(found);
}

bool DisplayScenarioWindow::isOn(const std::string& toggle) {
    return control<NSSwitch>(toggle).state() != control_state::off;
}

void DisplayScenarioWindow::switchOver(const std::string& toggle) {
    desktop_.countFromNow();
    DisplayStage::press(usable<NSSwitch>(toggle));
}

std::string DisplayScenarioWindow::chosen(const std::string& picker) {
    if (const auto button = stage_.named<NSPopUpButton>(page(), picker))
        return optionsOf(button).at(static_cast<std::size_t>(button.indexOfSelectedItem()));
    for (const NSButton& option : DisplayStage::allBelow<NSButton>(control<NSView>(picker))) {
        if (option.state() == control_state::on)
            return titleOf(option);
    }
    return "";
}

void DisplayScenarioWindow::choose(const std::string& picker, const std::string& option) {
    desktop_.countFromNow();
    if (const auto button = stage_.named<NSPopUpButton>(page(), picker)) {
        expectEnabled(button, picker);
        const auto options = optionsOf(button);
        for (std::size_t i = 0; i < options.size(); ++i) {
            if (options[i] == option)
                return SettingsDisplayStage::choose(button, static_cast<int>(i));
        }
    } else {
        for (const NSButton& one : DisplayStage::allBelow<NSButton>(control<NSView>(picker))) {
            if (titleOf(one) != option)
                continue;
            expectEnabled(one, option);
            return DisplayStage::press(one);
        }
    }
    throw std::logic_error(picker + " has no option " + option);
}

std::string DisplayScenarioWindow::textIn(const std::string& field) {
    return control<NSTextField>(field).stringValue().text();
}

void DisplayScenarioWindow::type(const std::string& field, const std::string& text) {
    desktop_.countFromNow();
    const auto found = usable<NSTextField>(field);
    found.setStringValue(NSString::from(text));
    const auto delegate = Message<"NSTextField", false, "delegate", Object>::send(found.get());
    Message<"NSTextFieldDelegate", false, "controlTextDidChange:", void, Object>::send(delegate.get(),
                                                                                       Object());
    DisplayStage::runFor(0.1);
}

double DisplayScenarioWindow::position(const std::string& slider) {
    return control<NSSlider>(slider).doubleValue();
}

void DisplayScenarioWindow::moveSlider(const std::string& slider, double value) {
    desktop_.countFromNow();
    const auto found = usable<NSSlider>(slider);
    found.setDoubleValue(value);
    DisplayStage::use(found);
}

bool DisplayScenarioWindow::pressKey(std::uint16_t keyCode, ModifierFlags flags,
                                     const std::string& characters) {
    desktop_.countFromNow();
    const auto left =
        doubles::tellLocalMonitors(doubles::makeEvent({.type = EventType::keyDown,
                                                       .modifierFlags = flags,
                                                       .keyCode = keyCode,
                                                       .charactersIgnoringModifiers = characters}));
    DisplayStage::runFor(0.1);
    return !left;
}

// One of a program that has ended may still be there, and is not shown.
NSWindow DisplayScenarioSettings::window() {
    const auto windows =
        Message<"NSApplication", false, "windows", NSArray>::send(NSApplication::shared().get());
    for (const NSWindow& window : windows.all<NSWindow>()) {
        const auto title = Message<"NSWindow", false, "title", NSString>::send(window.get());
        if (window.isVisible() && title.text() == "Velmo Settings")
            return window;
    }
    return {};
}

NSView DisplayScenarioSettings::content() {
    const NSWindow shown = window();
    return shown ? DisplayStage::contentOf(shown) : NSView();
}

void DisplayScenarioSettings::close() {
    desktop().countFromNow();
    window().close();
    DisplayStage::runFor(0.1);
}

NSView DisplayScenarioCalendar::content() {
    return stage().shownCalendar();
}

void DisplayScenarioCalendar::close() {
    desktop().countFromNow();
    Message<"NSPopover", false, "close", void>::send(stage().system.popover.get());
}

NSView DisplayScenarioPanel::content() {
    const NSWindow shown = stage().shownPanel();
    return shown ? DisplayStage::contentOf(shown) : NSView();
}

}  // namespace velmo::macos
