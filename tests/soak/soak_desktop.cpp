#include "built_files.h"
#include "soak_session.h"

#include <algorithm>
#include <csignal>
#include <thread>

namespace velmo::desktop {

namespace {

constexpr const char* monitorNames[] = {"first", "second"};
constexpr int resolutions[] = {96, 144, 192};
constexpr const char* managers[] = {"openbox", "metacity", "icewm", "xfwm4"};
constexpr const char* zones[] = {"UTC", "Asia/Kathmandu", "America/St_Johns", "Pacific/Apia"};
constexpr double usualResolution = 96;
constexpr int usualHeight = 26;
/// Points within the settings.
constexpr int generalTab = 110;
constexpr int hidingTab = 190;
constexpr int tabsTop = 35;
/// Stops of the keyboard from the tab.
constexpr int alwaysHiddenStop = 6;

}  // namespace

/// The right half of the screen is a monitor of its own, or the only one, or none.
void SoakSession::changeMonitors() {
    useOneMonitor();
    const int kind = below(3);
    if (kind == 0)
        return;
    outputOf(
        {"xrandr", "--setmonitor", std::string("*") + monitorNames[0], "1280/320x1200/300+0+0", "screen"},
        environment_);
    if (kind == 1)
        return;
    outputOf({"xrandr", "--setmonitor", monitorNames[1], "1280/320x1200/300+1280+0", "none"}, environment_);
}

void SoakSession::useOneMonitor() {
    for (const auto* name : monitorNames)
        outputOf({"xrandr", "--delmonitor", name}, environment_);
}

void SoakSession::setScale(int resolution) {
    resolution_ = resolution;
    const auto text = "Xft.dpi: " + std::to_string(resolution) + "\n";
    xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, x().root(), XCB_ATOM_RESOURCE_MANAGER,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()), text.data());
    xcb_flush(x().raw());
    const int height = static_cast<int>(usualHeight * resolution / usualResolution);
    EXPECT_TRUE(eventually([&] { return x().area(bar()).value_or(Area{}).height == height; }))
        << "the bar's scale follows";
}

void SoakSession::changeScale() {
    setScale(resolutions[below(3)]);
}

void SoakSession::changeZone() {
    const std::string next = zones[below(4)];
    if (!ownZone_->isOwn() || next == zone_)
        return;
    const auto before = clockWidth();
    zone_ = next;
    ownZone_->set(next);
    EXPECT_TRUE(eventually([&] { return clockWidth() != before; })) << "the clock tells of " << next;
}

/// Programs on it do not survive that.
void SoakSession::restartBus() {
    std::erase_if(clients_, [](const auto& client) { return client.second.busProgram != nullptr; });
    stopSessionBus();
    EXPECT_TRUE(eventually([&] { return isAsExpected(); })) << "without a bus: " << differences();
    startSessionBus();
    awaitWatcher();
}

void SoakSession::replaceManager() {
    const std::string next = managers[below(4)];
    if (below(4) == 0) {
        crashWindowManager();
        startWindowManagerNamed(next);
    } else {
        replaceWindowManager(manager_, next);
    }
    manager_ = next;
    keepManager();
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

std::optional<xcb_window_t> SoakSession::settings() const {
    const auto window = x().windowTitled("Velmo Settings");
    return window && x().isViewable(*window) ? window : std::nullopt;
}

void SoakSession::openSettings() {
    keepManager();
    outputOf({velmoProgram}, environment_);
    ASSERT_TRUE(eventually([&] { return settings().has_value(); })) << "the settings open";
}

void SoakSession::closeSettings() {
    const auto window = settings();
    ASSERT_TRUE(window.has_value());
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = *window;
    message.type = x().atom("WM_PROTOCOLS");
    message.data.data32[0] = x().atom("WM_DELETE_WINDOW");
    xcb_send_event(x().raw(), 0, *window, 0, reinterpret_cast<const char*>(&message));
    xcb_flush(x().raw());
    EXPECT_TRUE(eventually([&] { return !settings(); })) << "the settings close";
}

void SoakSession::lookAtSettings() {
    openSettings();
    closeSettings();
}

/// A window manager may give the keyboard to nobody until its window is clicked, which chooses the tab as
/// well.
void SoakSession::chooseTab(int place) {
    const auto window = settings();
    ASSERT_TRUE(window.has_value());
    for (const int tab : {place == generalTab ? hidingTab : generalTab, place}) {
        const double scale = resolution_ / usualResolution;
        xdotool({"mousemove", "--window", std::to_string(*window),
                 std::to_string(static_cast<int>(tab * scale)),
                 std::to_string(static_cast<int>(tabsTop * scale)), "click", "1"});
        EXPECT_TRUE(eventually([&] { return x().keyboardOwner() == *window; }))
            << "they have the keyboard under " << manager_ << ", and not " << x().keyboardOwner()
            << windows();
        // Keys are for what the tab shows then.
        EXPECT_TRUE(comesToRest(milliseconds(150)));
    }
}

void SoakSession::switchAlwaysHidden() {
    openSettings();
    chooseTab(hidingTab);
    for (int stop = 0; stop < alwaysHiddenStop; ++stop)
        xdotool({"key", "Tab"});
    xdotool({"key", "space"});
    hasAlwaysHidden_ = !hasAlwaysHidden_;
    if (!hasAlwaysHidden_ && level_ == Level::all)
        level_ = Level::hidden;
    EXPECT_TRUE(eventually([&] {
        return readDefaults().value("alwaysHiddenEnabled", false) == hasAlwaysHidden_;
    })) << "the box is switched: "
        << readDefaults() << windows();
    closeSettings();
}

/// One icon further, and from the last one back.
void SoakSession::changeToggleIcon() {
    openSettings();
    chooseTab(generalTab);
    const auto icon = [&] { return readDefaults().value("toggleIconStyle", std::string("chevron")); };
    const auto before = icon();
    xdotool({"key", "Tab"});
    xdotool({"key", before == "fridge" ? "Up" : "Down"});
    EXPECT_TRUE(eventually([&] { return icon() != before; })) << "another icon than " << before;
    closeSettings();
}

void SoakSession::changeSettings() {
    if (below(2) == 0)
        switchAlwaysHidden();
    else
        changeToggleIcon();
}

void SoakSession::startAnew() {
    // New places are written within two seconds.
    std::this_thread::sleep_for(milliseconds(2500));
    if (below(2) == 0) {
        lastAction_ = "Velmo is killed";
        velmo().signal(SIGKILL);
        EXPECT_EQ(velmo().wait(milliseconds(5000)), 128 + SIGKILL);
    } else {
        lastAction_ = "Velmo ends and starts";
        stopVelmo();
    }
    ++counts_[lastAction_];
    startWithDefaults();
    expectAll();
}

void SoakSession::startWithDefaults() {
    startVelmoOnBus();
    // Programs on the bus register with each watcher.
    for (const auto& [name, client] : clients_) {
        if (client.busProgram)
            client.busProgram->registerItem(itemPath);
    }
    level_ = Level::none;
    held_.reset();
}

}  // namespace velmo::desktop
