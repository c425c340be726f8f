// How the session begins and ends, how Velmo is started and killed in it, and the rests between.

#include "soak_session.h"

#include "built_files.h"
#include "linux/icons/icon_protocol.h"

#include <algorithm>
#include <csignal>
#include <thread>

namespace velmo::desktop {

namespace {

/// For which the toolkit has the windows that it has for itself beside each of ours.
constexpr const char* managerOfRests = "openbox";
/// Longer than what is written late, and than the loader of icons waits for work.
constexpr milliseconds lateWork(icon_protocol::idleMilliseconds + 1000);

}  // namespace

void SoakSession::SetUp() {
    DesktopSession::SetUp();
    ownZone_.emplace(home_);
    if (ownZone_->isOwn())
        ownZone_->set(zone_);
    startServer("2560x1200x24");
    writeScale();
    settingsManager_.emplace(run({"xsettingsd", "-c", home_ / "xsettingsd.conf"}));
    ASSERT_TRUE(eventually([&] { return x().selectionOwner("_XSETTINGS_S0") != XCB_WINDOW_NONE; }));
    startWindowManager();
    startSessionBus();
    order_ = {"Velmo.Toggle", "Velmo.Clock", "Velmo.Divider", "Velmo.AlwaysHiddenDivider"};
    writeDefaults({{"autoRehide", false},
                   {"hideOnClickOutside", false},
                   {"showOnHover", false},
                   {"rehideDelay", 1},
                   {"clockEnabled", true},
                   {"clockFormat", pattern_},
                   {"alwaysHiddenEnabled", hasAlwaysHidden_},
                   {"statusItemOrder", order_}});
    startWithDefaults();
}

void SoakSession::TearDown() {
    clients_.clear();
    settingsManager_.reset();
    SessionBusDesktop::TearDown();
}

void SoakSession::begin(unsigned seed) {
    random_.seed(seed);
    rest();
}

void SoakSession::kill() {
    note("Velmo is killed");
    velmo().signal(SIGKILL);
    EXPECT_EQ(velmo().wait(milliseconds(5000)), 128 + SIGKILL);
    awaitRetreat();
    startWithDefaults();
    expectAll();
}

void SoakSession::startAnew() {
    const auto areKnown = [&] {
        auto known = savedOrder();
        const auto expected = expectedIdentities();
        std::erase_if(known, [&](const auto& identity) {
            return std::find(expected.begin(), expected.end(), identity) == expected.end();
        });
        return known == expected;
    };
    lastAction_ = "places are written down";
    EXPECT_TRUE(eventually(areKnown)) << testing::PrintToString(savedOrder()) << " is written down, expected "
                                      << testing::PrintToString(expectedIdentities());
    kill();
    openSettings();
    kill();
    click(toggle(), rightButton);
    EXPECT_TRUE(eventually([&] { return openMenu().has_value(); })) << "its menu opens";
    kill();
    note("Velmo ends and starts");
    stopVelmo();
    awaitRetreat();
    startWithDefaults();
    expectAll();
    rest();
}

void SoakSession::startWithDefaults() {
    startVelmoCounted();
    expectAllChosen();
    clockSpacing_ = spacing_;
    // Programs on the bus register with each watcher.
    for (const auto& [name, client] : clients_) {
        if (client.busProgram)
            client.busProgram->registerItem(itemPath);
    }
    level_ = Level::none;
    isClockBlank_ = false;
    rests_.clear();
    icons_ = static_cast<long>(clients_.size());
    figures_.clear();
}

/// What counts its memory is no part of anything that it or we start.
void SoakSession::startVelmoCounted() {
    std::filesystem::remove(heapFile());
    environment_["LD_PRELOAD"] = heapCounter;
    environment_["VELMO_HEAP_FILE"] = heapFile();
    startVelmoOnBus();
    environment_.erase("LD_PRELOAD");
    environment_.erase("VELMO_HEAP_FILE");
}

void SoakSession::rest() {
    note("everybody leaves");
    clients_.clear();
    setMonitors(0);
    if (isSmallScreen_)
        changeResolution();
    useManager(managerOfRests);
    if (level_ != Level::none)
        toggleHidden();
    // The panel shows what was hidden always for as long as that section is not looked at.
    if (!hasAlwaysHidden_)
        switchAlwaysHidden();
    if (hasShortcut_)
        recordShortcut();
    if (hasPanelShortcut_)
        recordPanelShortcut();
    if (!isPanelRefreshed_)
        switchRefreshing();
    if (!hasClock_)
        switchClock();
    if (!isExpectedOnScreen("Velmo.Clock"))
        bringClockBack();
    // What is loaded for keys that are written stays, as does what is loaded for a scale.
    if (rests_.empty())
        writePattern(pattern_);
    openEverything(rests_.empty() ? std::vector{192, 144, 96} : std::vector{96});
    movePointer(farLeft, 400);
    expectAll();
    EXPECT_TRUE(eventually([&] { return !openMenu() && !openToolTip(); }));
    // The clock lets it never sleep for so long.
    std::this_thread::sleep_for(lateWork);
    expectNoGrowth();
}

void SoakSession::openEverything(const std::vector<int>& atResolutions) {
    for (const int resolution : atResolutions) {
        setScale(resolution);
        openMenuAndLeaveIt();
        openCalendarAndLeaveIt();
        lookAtToolTip();
        lookAtSettings();
        // Last, when no pictures are young: it shows that nobody is there.
        openPanelAndLeaveIt();
    }
}

}  // namespace velmo::desktop
