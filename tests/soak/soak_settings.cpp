// The settings as a user finds and changes them.

#include "built_files.h"
#include "soak_session.h"

namespace velmo::desktop {

namespace {

/// Points of the settings, and within them.
constexpr int usualWidth = 540;
constexpr int generalTab = 110;
constexpr int hidingTab = 190;
constexpr int clockTab = 270;
constexpr int panelTab = 350;
constexpr int spacingTab = 430;
constexpr int tabsTop = 35;
/// From the middle of a tab, and from the window's left edge: neither a title nor a tab is there.
constexpr int besideTitle = 30;
constexpr int besideTabs = 20;
/// Stops of the keyboard from the tab.
constexpr int hideAgainStop = 1;
constexpr int alwaysHiddenStop = 6;
constexpr int clockStop = 1;
/// Longer than the delay that `SetUp` has written.
constexpr milliseconds longestReveal(5000);

}  // namespace

void SoakSession::openSettings() {
    keepManager();
    outputOf({velmoProgram}, environment_);
    const auto width = [&] {
        const auto window = settingsWindow();
        return window ? x().area(*window).value_or(Area{}).width : 0;
    };
    // The toolkit may learn of another scale later than the bar.
    ASSERT_TRUE(eventually([&] { return width() == static_cast<int>(usualWidth * scale()); }))
        << "the settings open, " << width() << " wide at the scale " << scale();
}

void SoakSession::closeSettings() {
    const auto window = settingsWindow();
    ASSERT_TRUE(window.has_value());
    closeWindow(*window);
    EXPECT_TRUE(eventually([&] { return !settingsWindow(); })) << "the settings close";
}

bool SoakSession::lookAtSettings() {
    openSettings();
    for (const int tab : {generalTab, hidingTab, clockTab, panelTab, spacingTab})
        clickTab(tab);
    closeSettings();
    return true;
}

void SoakSession::clickTab(int place) {
    const auto window = settingsWindow();
    ASSERT_TRUE(window.has_value());
    xdotool({"mousemove", "--window", std::to_string(*window),
             std::to_string(static_cast<int>(place * scale())),
             std::to_string(static_cast<int>(tabsTop * scale())), "click", "1"});
    EXPECT_TRUE(eventually([&] { return x().keyboardOwner() == *window; }))
        << "they have the keyboard under " << manager_ << ", and not " << x().keyboardOwner() << windows();
    // Keys are for what the tab shows then: it is tinted, and shown once nothing is left to be done.
    const auto shade = [&](int point) {
        const auto area = x().area(*window).value_or(Area{});
        return x().pixel(area.x + static_cast<int>(point * scale()),
                         area.y + static_cast<int>(tabsTop * scale()));
    };
    EXPECT_TRUE(eventually([&] { return shade(place - besideTitle) != shade(besideTabs); }))
        << "the tab at " << place << " is chosen under " << manager_ << windows();
    EXPECT_TRUE(comesToRest(milliseconds(100)));
}

/// A window manager may give the keyboard to nobody until its window is clicked, which chooses the tab as
/// well.
void SoakSession::chooseTab(int place) {
    clickTab(place == generalTab ? hidingTab : generalTab);
    clickTab(place);
}

void SoakSession::switchBox(int stop, const std::string& key, bool isOn) {
    for (int count = 0; count < stop; ++count)
        xdotool({"key", "Tab"});
    xdotool({"key", "space"});
    EXPECT_TRUE(eventually([&] { return readDefaults().value(key, !isOn) == isOn; }))
        << key << " is switched: " << readDefaults() << windows();
}

bool SoakSession::switchAlwaysHidden() {
    openSettings();
    chooseTab(hidingTab);
    hasAlwaysHidden_ = !hasAlwaysHidden_;
    switchBox(alwaysHiddenStop, "alwaysHiddenEnabled", hasAlwaysHidden_);
    if (!hasAlwaysHidden_ && level_ == Level::all)
        level_ = Level::hidden;
    closeSettings();
    return true;
}

/// One icon further, and from the last one back.
bool SoakSession::changeToggleIcon() {
    openSettings();
    chooseTab(generalTab);
    const auto icon = [&] { return readDefaults().value("toggleIconStyle", std::string("chevron")); };
    const auto before = icon();
    xdotool({"key", "Tab"});
    xdotool({"key", before == "fridge" ? "Up" : "Down"});
    EXPECT_TRUE(eventually([&] { return icon() != before; })) << "another icon than " << before;
    closeSettings();
    return true;
}

/// One that comes is shown with everything else for a while, which the user ends here.
bool SoakSession::switchClock() {
    openSettings();
    chooseTab(clockTab);
    hasClock_ = !hasClock_;
    isClockBlank_ = hasClock_;
    switchBox(clockStop, "clockEnabled", hasClock_);
    closeSettings();
    if (!hasClock_)
        return true;
    level_ = hasAlwaysHidden_ ? Level::all : Level::hidden;
    expectAll();
    clickToggle();
    return true;
}

bool SoakSession::letItemsHideAgain() {
    if (level_ == Level::none)
        clickToggle();
    expectAll();
    openSettings();
    chooseTab(hidingTab);
    switchBox(hideAgainStop, "autoRehide", true);
    level_ = Level::none;
    EXPECT_TRUE(eventually([&] { return isAsExpected(); }, longestReveal)) << differences();
    switchBox(0, "autoRehide", false);
    closeSettings();
    return true;
}

}  // namespace velmo::desktop
