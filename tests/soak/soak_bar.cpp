// What the user does with the bar and with what opens below it.

#include "built_files.h"
#include "soak_session.h"

#include <algorithm>
#include <thread>

namespace velmo::desktop {

namespace {

/// Points from the panel's left edge to its first picture.
constexpr int firstPicture = 10;
/// Points that the panel is wide with its words for nobody, without and around pictures.
constexpr double emptyPanel = 316;
constexpr double panelWithoutPictures = 55;
constexpr double pictureMargins = 4;
constexpr double pictureGap = 2;
constexpr double panelDivider = 11;
/// Points around the panel where somebody composes the screen.
constexpr int shadow = 16;
/// Points of one that has the tightest spacing.
constexpr double smallestIcon = 12;
constexpr milliseconds clickedOutside(400);
constexpr milliseconds gesture(700);
/// Younger pictures are shown again, whatever is hidden by now.
constexpr milliseconds youngPictures(2100);

}  // namespace

bool SoakSession::clickToggle() {
    if (clicksOpenPanel_) {
        click(toggle());
        leave("the panel", [&] { return panel().has_value(); });
    } else {
        toggleHidden();
    }
    return true;
}

void SoakSession::toggleHidden() {
    if (clicksOpenPanel_)
        outputOf({velmoProgram, "toggle"}, environment_);
    else
        click(toggle());
    level_ = level_ == Level::none ? Level::hidden : Level::none;
}

bool SoakSession::optionClickToggle() {
    clickHolding("Alt_L", toggle());
    level_ = level_ == Level::all ? Level::none : Level::all;
    return true;
}

/// Once its owner sleeps, Escape is for it.
void SoakSession::leave(const std::string& what, const std::function<bool()>& isOpen) {
    EXPECT_TRUE(eventually(isOpen)) << what << " opens, " << differences() << windows();
    EXPECT_TRUE(comesToRest(milliseconds(100)));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !isOpen(); })) << what << " closes";
}

bool SoakSession::openMenuAndLeaveIt() {
    click(toggle(), rightButton);
    leave("the toggle's menu", [&] { return openMenu().has_value(); });
    return true;
}

void SoakSession::openPanelAnew() {
    // What has gone since then would be seen as well.
    std::this_thread::sleep_for(youngPictures);
    outputOf({velmoProgram, "panel"}, environment_);
    EXPECT_TRUE(eventually([&] { return panel().has_value(); })) << "the panel opens";
    // While something is shown, or that section is switched off, what was always hidden is what was once
    // known.
    const int expected = expectedPanelWidth();
    if (level_ != Level::none || !hasAlwaysHidden_ || !isPanelRefreshed_ || expected > monitorWidth)
        return;
    const auto width = [&] { return panel().value_or(Area{}).width - 2 * panelShadow(); };
    EXPECT_TRUE(eventually([&] { return std::abs(width() - expected) < smallestIcon * scale() / 2; }))
        << "the panel is " << width() << " wide, and not " << expected << ", with " << differences()
        << windows();
}

int SoakSession::panelShadow() const {
    const bool isComposited = x().selectionOwner("_NET_WM_CM_S0") != XCB_WINDOW_NONE;
    return isComposited ? static_cast<int>(shadow * scale()) : 0;
}

int SoakSession::expectedPanelWidth() const {
    double pictures = 0;
    int count = 0;
    const auto order = expectedOrder();
    const auto alwaysHidden = std::find(order.begin(), order.end(), "Velmo.AlwaysHiddenDivider");
    for (auto name = std::find(order.begin(), order.end(), "Velmo.Divider"); name != order.end(); ++name) {
        if (!clients_.contains(*name))
            continue;
        pictures += x().area(itemOf(*name)).value_or(Area{}).width / scale() + pictureMargins;
        ++count;
    }
    if (count == 0)
        return static_cast<int>(emptyPanel * scale());
    const bool isDivided =
        std::any_of(alwaysHidden, order.end(), [&](const auto& name) { return clients_.contains(name); });
    return static_cast<int>(
        (panelWithoutPictures + pictures + count * pictureGap + (isDivided ? panelDivider : 0)) * scale());
}

bool SoakSession::openPanelAndLeaveIt() {
    openPanelAnew();
    leave("the panel", [&] { return panel().has_value(); });
    return true;
}

/// The first one is that of the hidden icon that lies farthest left.
bool SoakSession::clickPicture() {
    if (!isPanelRefreshed_)
        return false;
    if (level_ != Level::none) {
        toggleHidden();
        expectAll();
    }
    const auto hidden = [&] {
        auto order = expectedOrder();
        order.erase(std::find(order.begin(), order.end(), "Velmo.AlwaysHiddenDivider"), order.end());
        // The clock has no picture.
        if (order.back() == "Velmo.Clock")
            order.pop_back();
        return clients_.find(order.back());
    };
    // Between the dividers there may be nothing but the first of them.
    if (hidden() == clients_.end() && !hideIcon())
        return false;
    const auto found = hidden();
    if (found == clients_.end() || isExpectedOnScreen(found->first))
        return false;
    const int before = clicksOf(found->second);
    const int width = x().area(itemOf(found->first)).value_or(Area{}).width;
    openPanelAnew();
    const auto place = panel().value_or(Area{});
    xdotool({"mousemove",
             std::to_string(place.x + panelShadow() + static_cast<int>(firstPicture * scale()) + width / 2),
             std::to_string(place.midY()), "click", "1"});
    level_ = Level::hidden;
    EXPECT_TRUE(eventually([&] { return !panel(); })) << "the panel closes";
    expectClick(found->second, before);
    // It goes on after the press that the program counts: with a release, to which the pointer moves.
    EXPECT_TRUE(comesToRest());
    leaveMenuOf(found->second);
    return true;
}

bool SoakSession::openCalendarAndLeaveIt() {
    if (!hasClock_ || !isExpectedOnScreen("Velmo.Clock"))
        return false;
    const auto isOpen = [&] {
        const auto window = x().windowTitled("Velmo.Popover");
        return window && x().isViewable(*window);
    };
    click(itemOf("Velmo.Clock"));
    leave("the calendar", isOpen);
    return true;
}

bool SoakSession::lookAtToolTip() {
    movePointer(farLeft, 400);
    const auto place = x().area(toggle()).value_or(Area{});
    movePointer(place.midX(), place.midY());
    EXPECT_TRUE(eventually([&] { return openToolTip().has_value(); })) << "it is explained";
    movePointer(farLeft, 400);
    EXPECT_TRUE(eventually([&] { return !openToolTip(); })) << "no longer";
    return true;
}

/// Where nothing is, until it has had its effect.
bool SoakSession::clickOutside() {
    xdotool({"mousemove", std::to_string(farLeft), "400", "click", "1"});
    std::this_thread::sleep_for(clickedOutside);
    return true;
}

/// For long enough that the next time is another gesture.
bool SoakSession::scroll() {
    // What is scrolled on an item is for that.
    const auto leftmost = expectedInReach().back();
    if (x().area(itemOf(leftmost)).value_or(Area{}).x <= farLeft)
        return false;
    xdotool({"mousemove", std::to_string(farLeft), "13", "click", below(2) == 0 ? "4" : "5"});
    if (hasScrolling_)
        level_ = level_ == Level::none ? Level::hidden : Level::none;
    std::this_thread::sleep_for(gesture);
    return true;
}

}  // namespace velmo::desktop
