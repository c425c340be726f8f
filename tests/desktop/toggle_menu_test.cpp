#include "desktop_session.h"

#include <algorithm>
#include <csignal>

namespace velmo::desktop {

namespace {

/// A spot of the screen far from the bar and from every window.
constexpr int elsewhereX = 900;
constexpr int elsewhereY = 600;

class ToggleMenu : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
    }

    std::optional<Area> menuArea() const {
        for (const auto window : x().children(x().root())) {
            const auto area = x().area(window);
            const bool isMenu = x().property(window, "WM_CLASS").starts_with("velmo") && window != bar() &&
                                area && area->height > 40;
            if (isMenu && x().isViewable(window))
                return area;
        }
        return std::nullopt;
    }

    void openMenuAt(xcb_window_t item) {
        click(item, 3);
        ASSERT_TRUE(eventually([&] { return menuArea().has_value(); }));
    }

    void clickEntry(int pixelsBelowTheTop) {
        const auto menu = *menuArea();
        movePointer(menu.x + 60, menu.y + pixelsBelowTheTop);
        EXPECT_TRUE(stays([&] { return menuArea().has_value(); }, milliseconds(150))) << "as slow as a hand";
        xdotool({"click", "1"});
        ASSERT_TRUE(eventually([&] { return !menuArea(); }));
    }
    static constexpr int firstEntry = 18;

    /// By keyboard: the entry with this number, counted from 1 without the separators.
    void chooseEntry(int number) {
        for (int count = 0; count < number; ++count)
            xdotool({"key", "Down"});
        xdotool({"key", "Return"});
        ASSERT_TRUE(eventually([&] { return !menuArea(); }));
    }
};

TEST_F(ToggleMenu, OpensJustUnderTheToggleAndOnTheScreen) {
    startVelmo();
    openMenuAt(toggle());
    const auto menu = *menuArea();
    EXPECT_EQ(menu.y, 26 + 4);
    EXPECT_LE(menu.x + menu.width, 1280);
    EXPECT_GT(menu.x + menu.width, x().area(toggle())->x);
    EXPECT_TRUE(dividerIsExpanded()) << "opening changes nothing";
}

TEST_F(ToggleMenu, EntryChosenByMouseShowsAndHides) {
    writeDefaults({{"autoRehide", false}});
    startVelmo();
    openMenuAt(toggle());
    clickEntry(firstEntry);
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    openMenuAt(toggle());
    clickEntry(firstEntry);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(ToggleMenu, EntriesChosenByKeyboard) {
    writeDefaults({{"autoRehide", false}, {"alwaysHiddenEnabled", true}});
    startVelmo();
    openMenuAt(toggle());
    chooseEntry(1);
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_TRUE(isHidden(alwaysHiddenDivider()));
    openMenuAt(toggle());
    chooseEntry(2);
    ASSERT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 12; }));
    openMenuAt(toggle());
    chooseEntry(2);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(ToggleMenu, EveryEntryCanBeChosenByMouse) {
    writeDefaults({{"autoRehide", false}, {"alwaysHiddenEnabled", true}});
    startVelmo();
    // Top to bottom: show, show always hidden, panel, settings, quit; separators lie before the last two.
    const auto middleOf = [&](int entry) {
        constexpr int entryCount = 5;
        constexpr int padding = 6;
        constexpr int separator = 11;
        const int height = (menuArea()->height - 2 * padding - 2 * separator) / entryCount;
        const int separators = std::max(entry - 2, 0) * separator;
        return padding + height * entry + height / 2 + separators;
    };
    openMenuAt(toggle());
    clickEntry(middleOf(1));
    EXPECT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 12; }));
    for (const int withoutEffect : {2, 3}) {
        openMenuAt(toggle());
        clickEntry(middleOf(withoutEffect));
        EXPECT_TRUE(stays([&] { return x().area(alwaysHiddenDivider())->width == 12; }, milliseconds(200)));
    }
    openMenuAt(toggle());
    clickEntry(middleOf(0));
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    openMenuAt(toggle());
    clickEntry(middleOf(4));
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 0);
}

TEST_F(ToggleMenu, EntriesForPanelAndSettingsOpenTheirWindows) {
    startVelmo();
    const auto isShown = [&](const std::string& title) {
        const auto window = x().windowTitled(title);
        return window && x().isViewable(*window);
    };
    openMenuAt(toggle());
    chooseEntry(2);
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Panel"); }));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !isShown("Velmo.Panel") && dividerIsExpanded(); }));
    openMenuAt(toggle());
    chooseEntry(3);
    EXPECT_TRUE(eventually([&] { return isShown("Velmo Settings"); }));
}

TEST_F(ToggleMenu, OpensUnderTheCollapsedAlwaysHiddenDivider) {
    writeDefaults({{"autoRehide", false}, {"alwaysHiddenEnabled", true}});
    startVelmo();
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 12; }));
    openMenuAt(alwaysHiddenDivider());
    chooseEntry(2);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(ToggleMenu, EndOfTheSessionEndsItToo) {
    startVelmo();
    openMenuAt(toggle());
    velmo().signal(SIGTERM);
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 0);
}

TEST_F(ToggleMenu, EndOfTheDisplayEndsItToo) {
    startVelmo();
    openMenuAt(toggle());
    stopServer();
    EXPECT_TRUE(velmo().wait(milliseconds(5000)).has_value());
}

TEST_F(ToggleMenu, IsSilentInEveryLocale) {
    environment_["LC_ALL"] = "C";
    startVelmo();
    openMenuAt(toggle());
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !menuArea(); }));
}

TEST_F(ToggleMenu, EscapeClosesItAndChangesNothing) {
    startVelmo();
    openMenuAt(toggle());
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !menuArea(); }));
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(300)));
    openMenuAt(toggle());
}

TEST_F(ToggleMenu, OpensUnderACollapsedDividerToo) {
    writeDefaults({{"autoRehide", false}});
    startVelmo();
    startTrayProgram("gxkb", "Gxkb");
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    openMenuAt(divider());
    EXPECT_EQ(menuArea()->y, 26 + 4);
    chooseEntry(1);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(ToggleMenu, NothingHidesWhileItIsOpenAndTheFullDelayFollows) {
    writeDefaults({{"rehideDelay", 1.5}});
    startVelmo();
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    openMenuAt(toggle());
    movePointer(elsewhereX, elsewhereY);
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(2500)));
    const auto closed = std::chrono::steady_clock::now();
    xdotool({"key", "Escape"});
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }, milliseconds(3000)));
    EXPECT_GE(std::chrono::steady_clock::now() - closed, milliseconds(1500));
    EXPECT_LT(std::chrono::steady_clock::now() - closed, milliseconds(2200));
}

TEST_F(ToggleMenu, ClickElsewhereClosesItAndHidesNothing) {
    writeDefaults({{"autoRehide", false}});
    startVelmo();
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    openMenuAt(toggle());
    xdotool({"mousemove", std::to_string(elsewhereX), std::to_string(elsewhereY), "click", "1"});
    EXPECT_TRUE(eventually([&] { return !menuArea(); }));
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(600)));
}

TEST_F(ToggleMenu, LastEntryEndsTheProgram) {
    startVelmo();
    openMenuAt(toggle());
    xdotool({"key", "Up"});
    xdotool({"key", "Return"});
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 0);
}

TEST_F(ToggleMenu, ProgramsDockWhileItIsOpen) {
    startVelmo();
    openMenuAt(toggle());
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    EXPECT_TRUE(isOnScreen(icon));
    EXPECT_TRUE(menuArea());
}

}  // namespace

}  // namespace velmo::desktop
