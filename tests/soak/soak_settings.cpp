// The settings as a user finds them: their window and its tabs.

#include "built_files.h"
#include "soak_session.h"

namespace velmo::desktop {

namespace {

/// Points of the settings, and within them.
constexpr int usualWidth = 540;
constexpr int tabsTop = 35;
/// From the middle of a tab, and from the window's left edge: neither a title nor a tab is there.
constexpr int besideTitle = 30;
constexpr int besideTabs = 20;

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

}  // namespace velmo::desktop
