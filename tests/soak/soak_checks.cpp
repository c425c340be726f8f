#include "soak_session.h"

#include "built_files.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>
#include <tuple>

namespace velmo::desktop {

namespace {

/// Kilobytes.
constexpr long memorySlack = 400;
/// The four items of ours remember four drawings each.
constexpr std::uint32_t pixmapSlack = 16;
/// Of each other kind: there are window managers for which the toolkit makes a second window for each of its
/// own.
constexpr std::uint32_t resourceSlack = 4;
constexpr long fileSlack = 2;
constexpr milliseconds longestEffect(15000);
/// Longer than what is written late, and than the loader of icons waits for work.
constexpr milliseconds quiet(4000);
/// Pixels of a divider that hides, at any scale: none of its length is seen.
constexpr int hidingWidth = 1;

/// Kilobytes that it shares with the X server.
long sharedMemory(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("Pss_Shmem:"))
            return std::stol(line.substr(line.find(':') + 1));
    }
    return 0;
}

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
                   {"clockFormat", "VV HH:mm"},
                   {"statusItemOrder", order_}});
    startWithDefaults();
}

void SoakSession::TearDown() {
    clients_.clear();
    settingsManager_.reset();
    SessionBusDesktop::TearDown();
}

xcb_window_t SoakSession::itemOf(const std::string& name) const {
    const auto found = clients_.find(name);
    if (found == clients_.end())
        return x().windowTitled(name).value_or(xcb_window_t{XCB_WINDOW_NONE});
    const auto& client = found->second;
    if (client.isOnBus())
        return itemTitled(name);
    const auto icon =
        client.trayProgram ? std::optional(client.icon) : x().windowOfClass(bar(), client.windowClass);
    return icon ? x().parent(*icon) : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<std::string> SoakSession::expectedOrder() const {
    auto order = order_;
    std::erase_if(order, [&](const auto& name) {
        if (name == "Velmo.AlwaysHiddenDivider")
            return !hasAlwaysHidden_;
        if (name == "Velmo.Clock")
            return !hasClock_;
        return !name.starts_with("Velmo.") && !clients_.contains(name);
    });
    return order;
}

std::vector<std::string> SoakSession::seenOrder() const {
    std::map<xcb_window_t, std::string> names;
    for (const auto& name : order_)
        names[itemOf(name)] = name;
    // Where the reach of coordinates ends lies more than one; those are taken to lie as they should.
    std::vector<std::tuple<int, std::ptrdiff_t, std::string>> placed;
    for (const auto window : x().children(bar())) {
        const auto area = x().area(window);
        if (!area || !x().isViewable(window))
            continue;
        const auto found = names.find(window);
        const auto name = found == names.end() ? "a stranger" : found->second;
        const auto place = std::find(order_.begin(), order_.end(), name) - order_.begin();
        placed.emplace_back(-area->x, area->x < 0 ? place : 0, name);
    }
    std::sort(placed.begin(), placed.end());
    std::vector<std::string> order;
    for (const auto& item : placed)
        order.push_back(std::get<std::string>(item));
    return order;
}

SoakSession::Level SoakSession::seenLevel() const {
    const auto hides = [&](xcb_window_t window) {
        const auto place = x().area(window);
        return place && place->width == hidingWidth;
    };
    if (hides(divider()))
        return Level::none;
    // Where there is none, nothing tells the levels from each other.
    if (!hasAlwaysHidden_)
        return level_ == Level::none ? Level::hidden : level_;
    return hides(alwaysHiddenDivider()) ? Level::hidden : Level::all;
}

bool SoakSession::isExpectedOnScreen(const std::string& name) const {
    const auto order = expectedOrder();
    const auto place = std::find(order.begin(), order.end(), name);
    const auto isRightOf = [&](const char* other) {
        return std::find(place, order.end(), other) != order.end();
    };
    if (isRightOf("Velmo.Divider"))
        return true;
    if (level_ == Level::none)
        return false;
    return level_ == Level::all || !hasAlwaysHidden_ || isRightOf("Velmo.AlwaysHiddenDivider");
}

bool SoakSession::isAsExpected() const {
    if (seenLevel() != level_ || seenOrder() != expectedOrder())
        return false;
    const auto order = expectedOrder();
    return std::all_of(order.begin(), order.end(), [&](const auto& name) {
        // A divider that hides reaches to the edge of the screen and beyond.
        return name.ends_with("Divider") || isOnScreen(itemOf(name)) == isExpectedOnScreen(name);
    });
}

std::string SoakSession::differences() const {
    const auto nameOf = [](Level level) {
        return level == Level::none ? "none" : level == Level::hidden ? "hidden" : "all";
    };
    std::ostringstream text;
    text << "seen " << testing::PrintToString(seenOrder()) << " at the level " << nameOf(seenLevel())
         << ", expected " << testing::PrintToString(expectedOrder()) << " at " << nameOf(level_) << ";";
    for (const auto& name : expectedOrder()) {
        if (const auto place = x().area(itemOf(name)))
            text << " " << name << " " << place->x << "+" << place->width;
    }
    return text.str();
}

std::optional<int> SoakSession::clockWidth() const {
    const auto place = x().area(itemOf("Velmo.Clock"));
    return place ? std::optional(place->width) : std::nullopt;
}

std::vector<std::string> SoakSession::expectedIdentities() const {
    auto identities = expectedOrder();
    for (auto& name : identities) {
        if (const auto found = clients_.find(name); found != clients_.end())
            name = found->second.identity;
    }
    return identities;
}

/// What has been hidden, moved and drawn in another scale shows the same as ever.
void SoakSession::expectPictures() {
    for (const auto& [name, client] : clients_) {
        if (!client.color || !isExpectedOnScreen(name))
            continue;
        const auto seen = [&, item = itemOf(name)] {
            const auto place = x().area(item).value_or(Area{});
            return x().pixel(place.midX(), place.midY());
        };
        EXPECT_TRUE(eventually([&, color = *client.color] { return seen() == color; }))
            << name << " shows " << std::hex << seen() << " and not " << *client.color;
    }
}

void SoakSession::expectClockOfZone() {
    // One that has been switched on shows nothing until what it last showed is over.
    if (!ownZone_->isOwn() || !hasClock_ || isClockBlank_)
        return;
    const auto known = clockWidths_.find({zone_, resolution_});
    if (known != clockWidths_.end())
        EXPECT_TRUE(eventually([&] { return clockWidth() == known->second; }))
            << "a clock in " << zone_ << " is " << known->second << " wide, and not "
            << clockWidth().value_or(0);
    else if (const auto width = clockWidth(); width && comesToRest(milliseconds(200)))
        clockWidths_[{zone_, resolution_}] = clockWidth().value_or(*width);
}

void SoakSession::expectAll() {
    EXPECT_TRUE(eventually([&] { return isAsExpected(); }, longestEffect)) << differences() << windows();
    EXPECT_TRUE(velmo().isRunning() && !velmo().wait(milliseconds(0))) << "Velmo runs";
    expectPictures();
    expectClockOfZone();
}

std::string SoakSession::windows() const {
    return outputOf({"xwininfo", "-root", "-tree"}, environment_);
}

SoakSession::Held SoakSession::held() {
    return {resources(), openFiles(), memoryInUse()};
}

long SoakSession::memoryInUse() {
    std::int64_t bytes = 0;
    std::ifstream(heapFile(), std::ios::binary).read(reinterpret_cast<char*>(&bytes), sizeof bytes);
    EXPECT_GT(bytes, 0) << "it counts its memory";
    return static_cast<long>(bytes / 1024) + sharedMemory(velmo().id());
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

/// What is loaded for it stays, and closed windows keep what they last showed: more at a larger scale.
void SoakSession::openEverything(const std::vector<int>& resolutions) {
    for (const int resolution : resolutions) {
        setScale(resolution);
        openMenuAndLeaveIt();
        openPanelAndLeaveIt();
        openCalendarAndLeaveIt();
        lookAtToolTip();
        lookAtSettings();
    }
}

std::string SoakSession::surplus() {
    std::ostringstream text;
    for (const auto& [kind, count] : resources()) {
        const auto most = held_->resources[kind] + (kind == "PIXMAP" ? pixmapSlack : resourceSlack);
        if (count > most)
            text << count << " of " << kind << ", where " << held_->resources[kind] << " were held first\n";
    }
    if (openFiles() > held_->files + fileSlack)
        text << openFiles() << " descriptors, where " << held_->files << " were held first\n";
    return text.str();
}

void SoakSession::rest() {
    note("everybody leaves");
    clients_.clear();
    setMonitors(0);
    if (isSmallScreen_)
        changeResolution();
    if (level_ != Level::none)
        clickToggle();
    if (hasAlwaysHidden_)
        switchAlwaysHidden();
    if (!hasClock_)
        switchClock();
    openEverything(held_ ? std::vector{96} : std::vector{192, 144, 96});
    movePointer(farLeft, 400);
    expectAll();
    EXPECT_TRUE(eventually([&] { return !openMenu() && !openToolTip(); }));
    // The clock lets it never sleep for so long.
    std::this_thread::sleep_for(quiet);
    if (!held_) {
        held_ = held();
        return;
    }
    EXPECT_TRUE(eventually([&] { return surplus().empty(); }, longestEffect)) << surplus() << windows();
    auto now = held();
    const long growth = now.memory - held_->memory;
    EXPECT_LT(growth, memorySlack) << "KB more than " << held_->memory;
    figures_ = std::to_string(growth) + " KB more than " + std::to_string(held_->memory) + " KB, " +
               std::to_string(now.files) + " descriptors, " + std::to_string(now.resources["WINDOW"]) +
               " windows";
}

}  // namespace velmo::desktop
