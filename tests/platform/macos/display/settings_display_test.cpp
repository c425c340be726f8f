#include "macos/appkit/ns_pop_up_button.h"
#include "macos/appkit/ns_scroll_view.h"
#include "macos/appkit/ns_slider.h"
#include "macos/appkit/ns_text_field.h"
#include "macos/appkit/ns_toolbar.h"
#include "platform/macos/display/program_display_test.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/application.h"
#include "platform/macos/doubles/menu_bar.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmo::macos {
namespace {

/// Of controls, since they are counted.
std::vector<Id>& fontChanges() {
    static std::vector<Id> changed;
    return changed;
}
Implementation& ownFontChange() {
    static Implementation original = nullptr;
    return original;
}
void setCountedFont(const NSTextField& field, const NSFont& font) {
    fontChanges().push_back(field.get());
    reinterpret_cast<void (*)(Id, Selector, Id)>(ownFontChange())(field.get(), selectorNamed<"setFont:">(),
                                                                  font.get());
}
bool countFontChanges() {
    const RawClass field = classNamed<"NSTextField">();
    ownFontChange() = class_getMethodImplementation(field, selectorNamed<"setFont:">());
    doubles::setMethod<"setFont:", &setCountedFont>(field);
    return true;
}

class SettingsDisplayTest : public ProgramDisplayTest {
protected:
    /// Runs the program for the first time, which opens the settings, and the function.
    void runSettings(const std::function<void()>& function) {
        run([&](const Platform& /*platform*/) {
            window_ = windowTitled("Velmo Settings");
            ASSERT_TRUE(window_);
            runFor(0.1);
            function();
        });
    }
    NSToolbar toolbar() const {
        return Message<"NSWindow", false, "toolbar", NSToolbar>::send(window_.get());
    }
    std::vector<NSToolbarItem> tabs() const {
        return Message<"NSToolbar", false, "items", NSArray>::send(toolbar().get()).all<NSToolbarItem>();
    }
    std::string chosenTab() const {
        return Message<"NSToolbar", false, "selectedItemIdentifier", NSString>::send(toolbar().get()).text();
    }
    /// As a click on the tab does.
    NSView open(std::size_t tab) const {
        const NSToolbarItem item = tabs().at(tab);
        const auto action = Message<"NSToolbarItem", false, "action", Selector>::send(item.get());
        const auto target = Message<"NSToolbarItem", false, "target", Object>::send(item.get());
        Message<"NSApplication", false, "sendAction:to:from:", bool, Selector, Object, Object>::send(
            NSApplication::shared().get(), action, target, item);
        runFor(0.2);
        return page();
    }
    NSView page() const { return contentOf(window_); }
    NSButton buttonTitled(const std::string& title) const {
        for (const NSButton& button : allBelow<NSButton>(page())) {
            if (Message<"NSButton", false, "title", NSString>::send(button.get()).text() == title)
                return button;
        }
        return {};
    }
    /// Uses a switch that stands for a setting, and uses it once more.
    void expectToSwitch(const std::string& title, const char* key) {
        const auto control = named<NSSwitch>(page(), title);
        ASSERT_TRUE(control) << title;
        const bool before = isOn(key);
        EXPECT_EQ(control.state() != 0, before) << title;
        press(control);
        EXPECT_EQ(isOn(key), !before) << title;
        EXPECT_EQ(control.state() != 0, !before) << title;
        press(control);
        EXPECT_EQ(isOn(key), before) << title;
    }
    /// With ⌘, as the main menu sees it. False where it has no such key.
    bool pressKey(const char* key) const {
        const auto menu =
            Message<"NSApplication", false, "mainMenu", NSMenu>::send(NSApplication::shared().get());
        const auto event =
            Message<"NSEvent", true,
                    "keyEventWithType:location:modifierFlags:timestamp:windowNumber:context:characters:"
                    "charactersIgnoringModifiers:isARepeat:keyCode:",
                    NSEvent, NSUInteger, CGPoint, NSUInteger, double, NSInteger, Object, NSString, NSString,
                    bool, std::uint16_t>::send(NSEvent::classObject(), NSUInteger{10}, CGPoint{},
                                               NSUInteger{modifier::command}, 0.0, window_.windowNumber(),
                                               Object(), NSString::from(key), NSString::from(key), false,
                                               std::uint16_t{0});
        const bool isKnown =
            Message<"NSMenu", false, "performKeyEquivalent:", bool, NSEvent>::send(menu.get(), event);
        runFor(0.2);
        return isKnown;
    }
    static void choose(const NSPopUpButton& button, int index) {
        button.selectItemAtIndex(index);
        use(button);
    }

    NSWindow window_;
};

TEST_F(SettingsDisplayTest, OpenOnTheFirstLaunchInTheirSizeOnTheFirstTab) {
    runSettings([&] {
        EXPECT_TRUE(isOn("hasCompletedFirstLaunch"));
        EXPECT_TRUE(window_.isVisible());
        const CGRect content = contentOf(window_).frame();
        EXPECT_EQ(content.size.width, 540);
        EXPECT_EQ(content.size.height, 500);
        std::vector<std::string> labels;
        for (const NSToolbarItem& item : tabs()) {
            labels.push_back(Message<"NSToolbarItem", false, "label", NSString>::send(item.get()).text());
            EXPECT_TRUE((Message<"NSToolbarItem", false, "image", NSImage>::send(item.get())));
        }
        EXPECT_EQ(labels, (std::vector<std::string>{"General", "Hiding", "Clock", "Panel", "Spacing"}));
        EXPECT_EQ(system.toolbarStyle, 2);
        EXPECT_EQ(chosenTab(), "general");
        EXPECT_TRUE(shows(page(), "How to use Velmo"));
        picture("settings-general");
    });
}

TEST_F(SettingsDisplayTest, ShowTheTabThatIsChosenAndNoOther) {
    runSettings([&] {
        open(1);
        EXPECT_EQ(chosenTab(), "hiding");
        EXPECT_TRUE(shows(page(), "Always hidden"));
        EXPECT_FALSE(shows(page(), "How to use Velmo"));
        open(0);
        EXPECT_EQ(chosenTab(), "general");
        EXPECT_FALSE(shows(page(), "Always hidden"));
        EXPECT_TRUE(shows(page(), "How to use Velmo"));
    });
}

TEST_F(SettingsDisplayTest, OpenOnceMoreInTheSameWindow) {
    runSettings([&] {
        window_.close();
        runFor(0.2);
        EXPECT_FALSE(window_.isVisible());
        EXPECT_FALSE(doubles::reopenApplication(false));
        EXPECT_TRUE(window_.isVisible());
        EXPECT_EQ(windowTitled("Velmo Settings"), window_);
    });
}

TEST_F(SettingsDisplayTest, ComeInFrontOfTheActiveApplicationEachTimeTheyAreOpened) {
    runSettings([&] {
        const auto times = [&] {
            // Once it is visible.
            const auto& all = system.windowsPutInFront;
            return std::count(all.begin(), all.end(), std::pair<Id, bool>{window_.get(), true});
        };
        EXPECT_EQ(times(), 1);
        EXPECT_FALSE(doubles::reopenApplication(false));
        EXPECT_EQ(times(), 2);
    });
}

TEST_F(SettingsDisplayTest, LetNobodyTakeTheSymbolsOffTheTabs) {
    runSettings([&] { EXPECT_EQ(system.allowsDisplayModeCustomization, false); });
}

TEST_F(SettingsDisplayTest, ShowTheirTabsOnSystemsWhereNobodyCanTakeTheSymbolsOff) {
    system.hasDisplayModeCustomization = false;
    runSettings([&] {
        EXPECT_EQ(tabs().size(), 5U);
        EXPECT_EQ(system.allowsDisplayModeCustomization, std::nullopt);
    });
}

TEST_F(SettingsDisplayTest, CloseWithTheirKey) {
    runSettings([&] {
        EXPECT_TRUE(pressKey("w"));
        EXPECT_FALSE(window_.isVisible());
    });
}

TEST_F(SettingsDisplayTest, LetTheirTextsBeChosenAndCutWithTheKeyboard) {
    runSettings([&] {
        const auto pattern = named<NSTextField>(open(2), "Pattern");
        const bool hasKeyboard =
            Message<"NSWindow", false, "makeFirstResponder:", bool, Object>::send(window_.get(), pattern);
        ASSERT_TRUE(hasKeyboard);
        const NSText editor = pattern.currentEditor();
        ASSERT_TRUE(editor);
        editor.setSelectedRange({1, 0});
        EXPECT_TRUE(pressKey("a"));
        EXPECT_EQ(editor.selectedRange().location, 0U);
        EXPECT_EQ(editor.selectedRange().length, pattern.stringValue().length());
        EXPECT_TRUE(pressKey("x"));
        EXPECT_EQ(textFor("clockFormat"), "");
        EXPECT_TRUE(pressKey("v"));
        EXPECT_EQ(textFor("clockFormat"), "EEE d MMM  HH:mm");
    });
}

TEST_F(SettingsDisplayTest, ChooseIconAndClickOnTheGeneralTab) {
    runSettings([&] {
        const auto icon = named<NSPopUpButton>(page(), "Icon");
        ASSERT_TRUE(icon);
        EXPECT_EQ(icon.indexOfSelectedItem(), 0);
        choose(icon, 2);
        EXPECT_EQ(textFor("toggleIconStyle"), "dot");
        EXPECT_EQ(icon.indexOfSelectedItem(), 2);
        press(buttonTitled("Open the hidden items panel"));
        EXPECT_EQ(textFor("clickAction"), "showPanel");
        EXPECT_EQ(buttonTitled("Open the hidden items panel").state(), 1);
        EXPECT_EQ(buttonTitled("Reveal items in the menu bar").state(), 0);
    });
}

TEST_F(SettingsDisplayTest, LaunchAtLoginAsTheSystemSays) {
    runSettings([&] {
        const auto login = named<NSSwitch>(page(), "Launch at login");
        ASSERT_TRUE(login);
        press(login);
        EXPECT_EQ(system.loginCalls, std::vector<std::string>{"register"});
        EXPECT_EQ(login.state(), 1);
        system.loginError = "Not now.";
        press(login);
        // It shows what is, and not what was done to it.
        EXPECT_EQ(login.state(), 1);
        EXPECT_TRUE(shows(page(), "Not now."));
    });
}

TEST_F(SettingsDisplayTest, ShowASwitchAsItIsWhereUsingItHasChangedNothing) {
    system.registeredStatus = 2;
    runSettings([&] {
        const auto login = named<NSSwitch>(page(), "Launch at login");
        ASSERT_TRUE(login);
        press(login);
        EXPECT_EQ(system.loginCalls, std::vector<std::string>{"register"});
        EXPECT_EQ(login.state(), 0);
    });
}

TEST_F(SettingsDisplayTest, KeepTheCaretWhereATextIsChangedFromElsewhere) {
    runSettings([&] {
        const NSView page = open(2);
        const auto pattern = named<NSTextField>(page, "Pattern");
        const bool hasKeyboard =
            Message<"NSWindow", false, "makeFirstResponder:", bool, Object>::send(window_.get(), pattern);
        ASSERT_TRUE(hasKeyboard);
        pattern.currentEditor().setSelectedRange({2, 0});
        choose(named<NSPopUpButton>(page, "Preset"), 5);
        EXPECT_EQ(pattern.stringValue().text(), "HH:mm:ss");
        EXPECT_EQ(pattern.currentEditor().selectedRange().location, 2U);
    });
}

TEST_F(SettingsDisplayTest, LetNoTimePassOnceTheyAreClosed) {
    defaults().setObject(NSString::from("HH:mm:ss"), NSString::from("clockFormat"));
    runSettings([&] {
        const auto texts = [labels = allBelow<NSTextField>(open(2))] {
            std::vector<std::string> found;
            for (const NSTextField& label : labels)
                found.push_back(label.stringValue().text());
            return found;
        };
        const auto atFirst = texts();
        EXPECT_TRUE(runUntil([&] { return texts() != atFirst; }));
        window_.close();
        runFor(0.1);
        const auto atLast = texts();
        runFor(2.2);
        EXPECT_EQ(texts(), atLast);
    });
}

TEST_F(SettingsDisplayTest, SwitchAndSlideOnTheHidingTab) {
    runSettings([&] {
        const NSView page = open(1);
        expectToSwitch("Hide items again automatically", "autoRehide");
        expectToSwitch("Hide when clicking outside the menu bar", "hideOnClickOutside");
        expectToSwitch("Show hidden items when hovering over the toggle", "showOnHover");
        expectToSwitch("Show or hide by scrolling on the menu bar", "showOnScroll");
        expectToSwitch("Enable an always-hidden section", "alwaysHiddenEnabled");
        const auto delay = named<NSSlider>(page, "After");
        ASSERT_TRUE(delay);
        delay.setDoubleValue(11.6);
        use(delay);
        EXPECT_EQ(defaults().doubleForKey(NSString::from("rehideDelay")), 12);
        EXPECT_EQ(delay.doubleValue(), 12);
        EXPECT_TRUE(shows(page, "12 s"));
        picture("settings-hiding");
    });
}

TEST_F(SettingsDisplayTest, RecordAndRemoveAShortcut) {
    runSettings([&] {
        const NSView page = open(1);
        const auto record = named<NSButton>(page, "Show or hide items, Record Shortcut");
        ASSERT_TRUE(record);
        press(record);
        EXPECT_TRUE(buttonTitled("Press keys… (Esc cancels)"));
        const NSEvent key = doubles::makeEvent({.type = EventType::keyDown,
                                                .modifierFlags = modifier::command,
                                                .keyCode = 40,
                                                .charactersIgnoringModifiers = "k"});
        EXPECT_FALSE(doubles::tellLocalMonitors(key));
        runFor(0.1);
        EXPECT_TRUE(buttonTitled("⌘K"));
        ASSERT_EQ(system.hotKeys.size(), 1U);
        const auto remove = named<NSButton>(page, "Show or hide items, Remove shortcut");
        ASSERT_TRUE(remove);
        press(remove);
        EXPECT_TRUE(system.hotKeys.empty());
        EXPECT_FALSE(buttonTitled("⌘K"));
    });
}

TEST_F(SettingsDisplayTest, EditThePatternOnTheClockTab) {
    runSettings([&] {
        const NSView page = open(2);
        expectToSwitch("Show a clock and calendar in the menu bar", "clockEnabled");
        const auto pattern = named<NSTextField>(page, "Pattern");
        const auto preset = named<NSPopUpButton>(page, "Preset");
        ASSERT_TRUE(pattern);
        ASSERT_TRUE(preset);
        choose(preset, 1);
        EXPECT_EQ(pattern.stringValue().text(), textFor("clockFormat"));
        pattern.setStringValue(NSString::from("'It is' yyyy"));
        const auto delegate = Message<"NSTextField", false, "delegate", Object>::send(pattern.get());
        Message<"NSTextFieldDelegate", false, "controlTextDidChange:", void, Object>::send(delegate.get(),
                                                                                           Object());
        runFor(0.1);
        EXPECT_EQ(textFor("clockFormat"), "'It is' yyyy");
        // The last one stands for patterns of the user's own.
        const auto last = Message<"NSPopUpButton", false, "numberOfItems", NSInteger>::send(preset.get()) - 1;
        EXPECT_EQ(preset.indexOfSelectedItem(), last);
        bool isPreviewed = false;
        for (const NSTextField& label : allBelow<NSTextField>(page))
            isPreviewed = isPreviewed || label.stringValue().text().starts_with("It is 20");
        EXPECT_TRUE(isPreviewed);
        picture("settings-clock");
        press(buttonTitled("System Clock Options…"));
        EXPECT_EQ(system.openedAddresses.size(), 1U);
    });
}

TEST_F(SettingsDisplayTest, AskForPermissionsOnThePanelTab) {
    runSettings([&] {
        const NSView page = open(3);
        expectToSwitch("Refresh the pictures when opening the panel", "refreshPanelOnOpen");
        picture("settings-panel");
        const auto grant = named<NSButton>(page, "Accessibility, Grant…");
        ASSERT_TRUE(grant);
        const auto prompts = system.trustPrompts;
        press(grant);
        EXPECT_GT(system.trustPrompts.size(), prompts.size());
        system.isTrusted = true;
        EXPECT_TRUE(runUntil(
            [&] { return static_cast<bool>(named<NSButton>(page, "Accessibility, Open Settings")); }));
        const auto opened = system.openedAddresses.size();
        press(named<NSButton>(page, "Accessibility, Open Settings"));
        EXPECT_EQ(system.openedAddresses.size(), opened + 1);
    });
}

TEST_F(SettingsDisplayTest, KnowAfterMiniaturizingWhatHasChangedMeanwhile) {
    runSettings([&] {
        const NSView page = open(3);
        Message<"NSWindow", false, "miniaturize:", void, Object>::send(window_.get(), Object());
        runFor(0.1);
        EXPECT_TRUE(window_.isMiniaturized());
        EXPECT_FALSE(window_.isVisible());
        EXPECT_FALSE(named<NSButton>(page, "Accessibility, Open Settings"));
        system.isTrusted = true;
        EXPECT_TRUE(runUntil(
            [&] { return static_cast<bool>(named<NSButton>(page, "Accessibility, Open Settings")); }));
        Message<"NSWindow", false, "deminiaturize:", void, Object>::send(window_.get(), Object());
    });
}

TEST_F(SettingsDisplayTest, LeaveAloneWhoeverTypesAPattern) {
    runSettings([&] {
        const NSView page = open(2);
        const auto pattern = named<NSTextField>(page, "Pattern");
        ASSERT_TRUE(pattern);
        EXPECT_TRUE((Message<"NSCell", false, "usesSingleLineMode", bool>::send(pattern.cell().get())));
        EXPECT_TRUE((Message<"NSCell", false, "isScrollable", bool>::send(pattern.cell().get())));
        fontChanges().clear();
        static const bool isCounting = countFontChanges();
        EXPECT_TRUE(isCounting);
        // The page is described anew each second.
        runFor(1.5);
        const auto disturbs = [&](Id changed) { return changed == pattern.get(); };
        EXPECT_TRUE(std::none_of(fontChanges().begin(), fontChanges().end(), disturbs));
    });
}

TEST_F(SettingsDisplayTest, ChooseASpacingAndLogOut) {
    runSettings([&] {
        open(4);
        press(buttonTitled("Compact"));
        EXPECT_FALSE(system.preferences.empty());
        EXPECT_EQ(buttonTitled("Compact").state(), 1);
        EXPECT_EQ(buttonTitled("System default").state(), 0);
        EXPECT_TRUE(shows(page(), "About a third more icons fit."));
        picture("settings-spacing");
        press(buttonTitled("Log Out…"));
        EXPECT_EQ(system.scripts.back(), "executed");
    });
}

TEST_F(SettingsDisplayTest, LetNoControlOrTextLieOutsideOfItsPage) {
    runSettings([&] {
        for (std::size_t tab = 0; tab < 5; ++tab) {
            const NSView document = allBelow<NSScrollView>(open(tab)).front();
            const double width = document.bounds().size.width;
            for (const NSControl& control : allBelow<NSControl>(document)) {
                const CGRect area = control.convertRectTo(control.bounds(), document);
                EXPECT_GE(area.origin.x, 0) << tab;
                EXPECT_LE(area.origin.x + area.size.width, width) << tab << control.stringValue().text();
            }
        }
    });
}

}  // namespace
}  // namespace velmo::macos
