// What happens to the desktop around the bar.

#include "soak_session.h"

#include "screen_mode.h"
#include "window_managers.h"

#include <algorithm>
#include <csignal>
#include <fstream>

namespace velmo::desktop {

namespace {

constexpr int resolutions[] = {96, 144, 192};
constexpr const char* zones[] = {"UTC", "Asia/Kathmandu", "America/St_Johns", "Pacific/Apia"};
constexpr double usualResolution = 96;
constexpr int usualHeight = 26;
constexpr int monitorHeight = 1200;

}  // namespace

/// What is clicked next lies where it will stay.
void SoakSession::expectBarOnScreen() {
    const int width = monitors_ > 0 ? monitorWidth : x().area(x().root()).value_or(Area{}).width;
    const int height = static_cast<int>(usualHeight * scale());
    const auto place = [&] { return x().area(bar()).value_or(Area{}); };
    EXPECT_TRUE(eventually([&] {
        return place() == Area{0, 0, width, height};
    })) << "the bar is "
        << place().width << " wide and " << place().height << " high, not " << width << " and " << height;
    EXPECT_TRUE(comesToRest(milliseconds(100)));
}

void SoakSession::setMonitors(int count) {
    monitors_ = count;
    for (const char* name : {"first", "second"})
        removeMonitor(name);
    // The one that has the output keeps the server from adding one of its own.
    if (count > 0)
        addMonitor("*first", {0, 0, monitorWidth, monitorHeight}, "screen");
    if (count > 1)
        addMonitor("second", {monitorWidth, 0, monitorWidth, monitorHeight}, "none");
    expectBarOnScreen();
}

bool SoakSession::addSecondMonitor() {
    if (monitors_ == 2 || isSmallScreen_)
        return false;
    setMonitors(2);
    return true;
}

bool SoakSession::removeMonitors() {
    if (monitors_ == 0)
        return false;
    setMonitors(0);
    return true;
}

bool SoakSession::leaveHalfTheScreen() {
    if (monitors_ == 1 || isSmallScreen_)
        return false;
    setMonitors(1);
    return true;
}

void SoakSession::setMode(int width, int height) {
    requestScreenMode(width, height, environment_);
    EXPECT_TRUE(eventually([&] { return x().area(x().root())->width == width; })) << width;
    expectBarOnScreen();
}

bool SoakSession::changeResolution() {
    if (monitors_ != 0)
        return false;
    isSmallScreen_ = !isSmallScreen_;
    setMode(isSmallScreen_ ? 1920 : 2560, isSmallScreen_ ? 1080 : 1200);
    return true;
}

double SoakSession::scale() const {
    return resolution_ / usualResolution;
}

void SoakSession::writeScale() const {
    std::ofstream(home_ / "xsettingsd.conf") << "Xft/DPI " << resolution_ * 1024 << '\n';
}

void SoakSession::setScale(int resolution) {
    resolution_ = resolution;
    writeScale();
    settingsManager_->signal(SIGHUP);
    expectBarOnScreen();
}

bool SoakSession::changeScale() {
    const int next = resolutions[below(3)];
    if (next == resolution_)
        return false;
    setScale(next);
    return true;
}

bool SoakSession::changeZone() {
    const std::string next = zones[below(4)];
    if (!ownZone_->isOwn() || next == zone_)
        return false;
    const auto before = clockWidth();
    zone_ = next;
    ownZone_->set(next);
    isClockBlank_ = false;
    EXPECT_TRUE(!hasClock_ || eventually([&] { return clockWidth() != before; }))
        << "the clock tells of " << next;
    return true;
}

/// Programs on it do not survive that.
bool SoakSession::restartBus() {
    std::erase_if(clients_, [](const auto& client) { return client.second.isOnBus(); });
    stopSessionBus();
    EXPECT_TRUE(eventually([&] { return isAsExpected(); })) << "without a bus: " << differences();
    startSessionBus();
    awaitWatcher();
    return true;
}

/// fluxbox knows nothing of being replaced, nor of replacing: the one before is crashed then.
std::string SoakSession::anyManager() {
    return windowManagerNames[static_cast<std::size_t>(below(static_cast<int>(windowManagerNames.size())))];
}

bool SoakSession::replaceManager() {
    const auto next = anyManager();
    if (next == manager_)
        return false;
    useManager(next);
    return true;
}

void SoakSession::useManager(const std::string& name) {
    keepManager();
    if (name == manager_)
        return;
    replaceWindowManager(manager_, name);
    manager_ = name;
    keepManager();
}

bool SoakSession::crashManager() {
    keepManager();
    crashWindowManager();
    expectAll();
    manager_ = anyManager();
    startWindowManagerNamed(manager_);
    keepManager();
    return true;
}

/// One that has taken over from another may end with it, which is not what is tried here.
void SoakSession::keepManager() {
    const auto runs = [&] {
        const auto window = x().cardinals(x().root(), "_NET_SUPPORTING_WM_CHECK");
        return !window.empty() && x().exists(window.front());
    };
    if (!eventually(runs, milliseconds(1000)))
        startWindowManagerNamed(manager_);
}

/// The bar leaves the screen to it, and is back with all that is in it.
bool SoakSession::fillScreen() {
    keepManager();
    // They know monitors that are made by hand as they were when they began, and fill one that has gone.
    if (manager_ == "xfwm4" || manager_ == "fluxbox")
        replaceWindowManager(manager_, manager_);
    const auto top = [&] { return x().area(bar()).value_or(Area{}).y; };
    // fluxbox has it fill the monitor with the pointer.
    movePointer(x().area(bar())->midX(), top() + 300);
    {
        const auto film = run({"xterm", "-geometry", "60x12+200+300", "-fullscreen"});
        EXPECT_TRUE(eventually([&] { return top() < 0; }))
            << "the bar leaves the screen, " << manager_ << windows();
    }
    EXPECT_TRUE(eventually([&] { return top() == 0; })) << "the bar is back";
    return true;
}

}  // namespace velmo::desktop
