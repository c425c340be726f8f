#include "macos/appkit/ns_scroll_view.h"
#include "macos/appkit/ns_text_field.h"
#include "macos/appkit/ns_toolbar.h"
#include "platform/macos/display/settings_display_test.h"
#include "platform/macos/doubles/application.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmo::macos {
namespace {

TEST_F(SettingsDisplayTest, OpenInTheirSizeWithPicturesOnTheTabs) {
    runSettings([&] {
        const CGRect content = contentOf(window).frame();
        EXPECT_EQ(content.size.width, 540);
        EXPECT_EQ(content.size.height, 500);
        EXPECT_EQ(tabs().size(), 5U);
        for (const NSToolbarItem& tab : tabs())
            EXPECT_TRUE((Message<"NSToolbarItem", false, "image", NSImage>::send(tab.get()))) << titleOf(tab);
        EXPECT_EQ(system.toolbarStyle, 2);
    });
}

TEST_F(SettingsDisplayTest, OpenOnceMoreInTheSameWindow) {
    runSettings([&] {
        window.close();
        runFor(0.2);
        EXPECT_FALSE(window.isVisible());
        EXPECT_FALSE(doubles::reopenApplication(false));
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(windowTitled("Velmo Settings"), window);
    });
}

TEST_F(SettingsDisplayTest, ComeInFrontOfTheActiveApplicationEachTimeTheyAreOpened) {
    runSettings([&] {
        const auto times = [&] {
            // Once it is visible.
            const auto& all = system.windowsPutInFront;
            return std::count(all.begin(), all.end(), std::pair<Id, bool>{window.get(), true});
        };
        EXPECT_EQ(times(), 1);
        EXPECT_FALSE(doubles::reopenApplication(false));
        EXPECT_EQ(times(), 2);
    });
}

TEST_F(SettingsDisplayTest, AreShownByTheControllerOfTheirWindow) {
    runSettings([&] {
        EXPECT_EQ(system.windowsWithContent, std::vector{window.get()});
        EXPECT_EQ(system.windowsShownByControllers, std::vector{window.get()});
        EXPECT_FALSE(doubles::reopenApplication(false));
        EXPECT_EQ(system.windowsShownByControllers.size(), 2U);
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
        EXPECT_FALSE(window.isVisible());
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
        window.close();
        runFor(0.1);
        const auto atLast = texts();
        runFor(2.2);
        EXPECT_EQ(texts(), atLast);
    });
}

TEST_F(SettingsDisplayTest, KnowAfterMiniaturizingWhatHasChangedMeanwhile) {
    runSettings([&] {
        const NSView page = open(3);
        Message<"NSWindow", false, "miniaturize:", void, Object>::send(window.get(), Object());
        runFor(0.1);
        EXPECT_TRUE(window.isMiniaturized());
        EXPECT_FALSE(window.isVisible());
        EXPECT_FALSE(named<NSButton>(page, "Accessibility, Open Settings"));
        system.isTrusted = true;
        EXPECT_TRUE(runUntil(
            [&] { return static_cast<bool>(named<NSButton>(page, "Accessibility, Open Settings")); }));
        Message<"NSWindow", false, "deminiaturize:", void, Object>::send(window.get(), Object());
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
