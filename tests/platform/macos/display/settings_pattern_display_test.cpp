#include "macos/appkit/ns_text_field.h"
#include "platform/macos/display/settings_display_test.h"
#include "platform/macos/doubles/added_method.h"

#include <algorithm>
#include <vector>

namespace velmo::macos {
namespace {

/// Of controls, since they are counted.
std::vector<Id>& fontChanges() {
    static std::vector<Id> changed;
    return changed;
}
void setCountedFont(const NSTextField& field, const NSFont& font) {
    fontChanges().push_back(field.get());
    doubles::callOwn<&setCountedFont>(field, font);
}
bool countFontChanges() {
    doubles::overrideMethod<"setFont:", &setCountedFont>(classNamed<"NSTextField">());
    return true;
}

class SettingsPatternDisplayTest : public SettingsDisplayTest {
protected:
    /// That of the field, which gets the keyboard. None where it does not take it.
    NSText editorOf(const NSTextField& field) const {
        Message<"NSWindow", false, "makeFirstResponder:", bool, Object>::send(window.get(), field);
        return field.currentEditor();
    }
};

TEST_F(SettingsPatternDisplayTest, LetTheirTextsBeChosenAndCutWithTheKeyboard) {
    runSettings([&] {
        const auto pattern = named<NSTextField>(open(2), "Pattern");
        const NSText editor = editorOf(pattern);
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

TEST_F(SettingsPatternDisplayTest, UndoWhatWasTypedAndDoItAgain) {
    runSettings([&] {
        const auto pattern = named<NSTextField>(open(2), "Pattern");
        const NSText editor = editorOf(pattern);
        ASSERT_TRUE(editor);
        Message<"NSTextView", false, "setAllowsUndo:", void, bool>::send(editor.get(), true);
        const std::string before = textFor("clockFormat");
        pressKey("z");
        EXPECT_EQ(textFor("clockFormat"), before);
        pressKey("a");
        Message<"NSTextView", false, "insertText:", void, NSString>::send(editor.get(),
                                                                          NSString::from("yyyy"));
        runFor(0.1);
        EXPECT_EQ(textFor("clockFormat"), "yyyy");
        pressKey("z");
        EXPECT_EQ(textFor("clockFormat"), before);
        pressKey("Z");
        EXPECT_EQ(textFor("clockFormat"), "yyyy");
    });
}

TEST_F(SettingsDisplayTest, KeepTheCaretWhereATextIsChangedFromElsewhere) {
    runSettings([&] {
        const NSView page = open(2);
        const auto pattern = named<NSTextField>(page, "Pattern");
        const bool hasKeyboard =
            Message<"NSWindow", false, "makeFirstResponder:", bool, Object>::send(window.get(), pattern);
        ASSERT_TRUE(hasKeyboard);
        pattern.currentEditor().setSelectedRange({2, 0});
        choose(named<NSPopUpButton>(page, "Preset"), 5);
        EXPECT_EQ(pattern.stringValue().text(), "HH:mm:ss");
        EXPECT_EQ(pattern.currentEditor().selectedRange().location, 2U);
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

}  // namespace
}  // namespace velmo::macos
