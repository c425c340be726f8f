#include "settings/settings_test.h"

#include <algorithm>

namespace velmo {
namespace {

/// Everything that a person can read in a view, and the names of its symbols, from top to bottom.
class ReadableTexts {
public:
    explicit ReadableTexts(const View& root) { read(root); }

    std::vector<std::string> texts;

private:
    void add(const std::string& text) {
        if (!text.empty())
            texts.push_back(text);
    }
    void add(const Image& image) {
        if (const auto* symbol = std::get_if<Symbol>(&image.content))
            add(symbol->name);
    }

    void read(const View& view) {
        std::visit([this](const auto& content) { readContent(content); }, view.content);
        // The second child of a button is its pressed look, which says the same.
        const bool isButton = std::holds_alternative<Button>(view.content);
        const std::size_t count = std::min<std::size_t>(view.children.size(), isButton ? 1 : SIZE_MAX);
        for (std::size_t index = 0; index < count; ++index)
            read(view.children[index]);
        if (const auto* section = std::get_if<Section>(&view.content))
            add(section->footer);
        add(toolTipOf(view));
    }
    void readContent(const Text& text) { add(textOf(text)); }
    void readContent(const ImageView& view) { add(view.image); }
    void readContent(const Label& label) { add(label.image); }
    void readContent(const Toggle& toggle) { add(toggle.title); }
    void readContent(const LabeledContent& content) { add(content.title); }
    void readContent(const Section& section) { add(section.header); }
    void readContent(const TextField& field) {
        add(field.title);
        add(field.text);
    }
    void readContent(const Picker& picker) {
        add(picker.title);
        for (const auto& option : picker.options) {
            add(option.title);
            add(option.description);
        }
    }
    template <typename Silent>
    void readContent(const Silent& /*content*/) {}
};

/// Each tab is read whole, so that a text too many is found like one too few. The lists were written by
/// somebody who had not seen the tabs' code.
class SettingsTextsTest : public SettingsTest {
protected:
    void expectTexts(SettingsTab tab, const std::vector<std::string>& expected) {
        open(tab);
        EXPECT_EQ(ReadableTexts(shown()).texts, expected);
    }
    void pressKey(std::uint16_t keyCode, ModifierFlags modifiers, const char* characters) {
        Event event{EventType::keyDown, modifiers};
        event.keyCode = keyCode;
        event.charactersIgnoringModifiers = characters;
        desktop_.events().deliverLocally(event);
        runPosted();
    }
    std::vector<std::string> shortcutRows() {
        std::vector<std::string> texts;
        for (const View& row : rows(3)) {
            const auto rowTexts = ReadableTexts(row).texts;
            texts.insert(texts.end(), rowTexts.begin(), rowTexts.end());
        }
        return texts;
    }
};

TEST_F(SettingsTextsTest, OfTheWindow) {
    open();
    EXPECT_EQ(window().title(), "Velmo Settings");
    std::vector<std::string> titles;
    std::vector<std::string> symbols;
    for (const TabItem& tab : tabs().tabs) {
        titles.push_back(tab.title);
        symbols.push_back(std::get<Symbol>(tab.image.content).name);
    }
    EXPECT_EQ(titles, (std::vector<std::string>{"General", "Hiding", "Clock", "Panel", "Spacing"}));
    EXPECT_EQ(symbols, (std::vector<std::string>{"gearshape", "eye.slash", "clock",
                                                 "rectangle.topthird.inset.filled", "arrow.left.and.right"}));
}

TEST_F(SettingsTextsTest, OfTheGeneralTab) {
    expectTexts(SettingsTab::general,
                {"How to use Velmo",
                 "1.circle",
                 "Hold ⌘ and drag any menu bar icon to the left of the divider  |  to hide it.",
                 "2.circle",
                 "Click the toggle icon to show hidden icons, click again to hide them.",
                 "3.circle",
                 "⌥-click the toggle to reveal the always-hidden section  ‖  when it is enabled.",
                 "4.circle",
                 "⌘-drag the dividers and the toggle to move where each section starts.",
                 "Toggle icon",
                 "Icon",
                 "Chevron  ‹ ›",
                 "Ellipsis  …",
                 "Dot  ●",
                 "Lines  ≡",
                 "Eye",
                 "Fridge (velmo)",
                 "Clicking it",
                 "Reveal items in the menu bar",
                 "Open the hidden items panel",
                 "General",
                 "Launch at login"});
}

TEST_F(SettingsTextsTest, OfTheHidingTab) {
    expectTexts(
        SettingsTab::hiding,
        {"Hide again", "Hide items again automatically", "After", "5 s",
         "Hide when clicking outside the menu bar", "Show", "Show hidden items when hovering over the toggle",
         "Show or hide by scrolling on the menu bar", "Always hidden", "Enable an always-hidden section",
         "Adds a second divider  ‖  further left. Icons left of it stay hidden even when you show the hidden "
         "section. Reveal them with ⌥-click on the toggle.",
         "Keyboard shortcuts", "Show or hide items", "Record Shortcut", "Open the hidden items panel",
         "Record Shortcut"});
}

TEST_F(SettingsTextsTest, OfTheShortcuts) {
    open(SettingsTab::hiding);
    press(rows(3)[0], "Record Shortcut");
    runPosted();
    EXPECT_EQ(shortcutRows(), (std::vector<std::string>{"Show or hide items", "Press keys… (Esc cancels)",
                                                        "Open the hidden items panel", "Record Shortcut"}));
    pressKey(40, modifier::shift | modifier::command, "k");
    press(rows(3)[1], "Record Shortcut");
    runPosted();
    EXPECT_EQ(shortcutRows(),
              (std::vector<std::string>{"Show or hide items", "⇧⌘K", "xmark.circle.fill", "Remove shortcut",
                                        "Open the hidden items panel", "Press keys… (Esc cancels)"}));
    pressKey(123, modifier::option, "");
    EXPECT_EQ(shortcutRows(), (std::vector<std::string>{"Show or hide items", "⇧⌘K", "xmark.circle.fill",
                                                        "Remove shortcut", "Open the hidden items panel",
                                                        "⌥←", "xmark.circle.fill", "Remove shortcut"}));
}

TEST_F(SettingsTextsTest, OfTheClockTab) {
    expectTexts(
        SettingsTab::clock,
        {"velmo clock",
         "Show a clock and calendar in the menu bar",
         "A replacement for Tickwell: a date and time in your own format, with a month calendar when "
         "clicked. New menu bar items appear at the far left, so velmo reveals its sections for a moment. "
         "⌘-drag the clock to where you want it, for example next to the system clock.",
         "Format",
         "Preset",
         "Day, date and time",
         "Day, date and 12-hour time",
         "Compact day and time",
         "Date and time",
         "Numeric date and time",
         "Time with seconds",
         "Week number, day, date and time",
         "Date only",
         "Custom",
         "Pattern",
         "EEE d MMM  HH:mm",
         "Patterns use the standard date field symbols: EEE weekday, d day, MMM month, HH:mm 24-hour time, "
         "h:mm a 12-hour time, ss seconds, w week number. Text in single quotes is shown as is.",
         "Preview",
         "Sat 5 Jul  13:04",
         "System Clock Options…",
         "macOS does not allow removing its own clock, but under Control Center → Clock Options you can hide "
         "its date and switch it to a small analog style to save space."});
}

TEST_F(SettingsTextsTest, OfThePanelTabWithoutPermissions) {
    desktop_.screenCapture().setGranted(false);
    desktop_.accessibility().setTrusted(false);
    expectTexts(
        SettingsTab::panel,
        {"Hidden items panel",
         "The panel shows your hidden icons in a strip under the menu bar and forwards clicks to them. It "
         "works even when the notch leaves no room to reveal the icons in the menu bar itself.",
         "Open the panel now", "Refresh the pictures when opening the panel",
         "Refreshing reveals the icons for a split second to photograph them. Turn this off to reuse the "
         "last pictures instead.",
         "Permissions", "exclamationmark.circle.fill", "Screen Recording",
         "Needed to draw pictures of the hidden icons.", "Grant…", "exclamationmark.circle.fill",
         "Accessibility", "Needed to forward a click from the panel to the real icon.", "Grant…",
         "macOS ties these permissions to the app's signature. After rebuilding with a different signature "
         "you may need to grant them again."});
}

TEST_F(SettingsTextsTest, OfGrantedPermissions) {
    open(SettingsTab::panel);
    std::vector<std::string> texts;
    for (const View& row : rows(2)) {
        const auto rowTexts = ReadableTexts(row).texts;
        texts.insert(texts.end(), rowTexts.begin(), rowTexts.end());
    }
    EXPECT_EQ(texts,
              (std::vector<std::string>{
                  "checkmark.circle.fill", "Screen Recording", "Needed to draw pictures of the hidden icons.",
                  "Open Settings", "checkmark.circle.fill", "Accessibility",
                  "Needed to forward a click from the panel to the real icon.", "Open Settings"}));
}

TEST_F(SettingsTextsTest, OfTheSpacingTab) {
    expectTexts(SettingsTab::spacing,
                {"Menu bar item spacing", "Spacing", "System default", "Apple's standard spacing.", "Compact",
                 "About a third more icons fit.", "Tight", "As dense as the menu bar allows.",
                 "Tighter spacing fits more icons beside a notch. macOS applies the new spacing to each app "
                 "when it relaunches, so log out and back in to apply it everywhere at once.",
                 "Log Out…", "Shows the standard macOS logout confirmation. Save your work first."});
}

}  // namespace
}  // namespace velmo
