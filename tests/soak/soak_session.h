#pragma once

#include "own_zone.h"
#include "session_bus_desktop.h"
#include "tray_client.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace velmo::desktop {

/// A user who works, and programs that come, go and die, at random; and what has to be true all along.
class SoakSession : public SessionBusDesktop {
protected:
    void SetUp() override;
    void TearDown() override;

    /// With a rest.
    void begin(unsigned seed);
    /// Does one thing, waits for its effect, and looks whether everything is as it has to be.
    void step();
    /// Everything that is open closes, all programs end, and nothing more is held than at the rests since the
    /// last start.
    void rest();
    /// Velmo is killed, whatever is open, and ends in order, and returns each time to what it has known. Then
    /// it rests.
    void startAnew();
    const std::string& lastAction() const { return lastAction_; }
    /// How often each has happened so far: those that never have, too.
    const std::map<std::string, int>& actionCounts() const { return counts_; }
    const std::string& figures() const { return figures_; }

private:
    enum class Level { none, hidden, all };
    /// Of the settings, in points from the left to the middles of their buttons.
    static constexpr int generalTab = 110;
    static constexpr int hidingTab = 190;
    static constexpr int clockTab = 270;
    static constexpr int panelTab = 350;
    static constexpr int spacingTab = 430;
    /// Pixels of one of two monitors beside each other.
    static constexpr int monitorWidth = 1280;
    /// Points of the spacing that can be chosen.
    static constexpr int compactSpacing = 10;
    static constexpr int tightSpacing = 6;
    /// What decides about its width: zone, pattern, spacing and resolution.
    using ClockLook = std::tuple<std::string, std::string, int, int>;
    struct Client {
        bool isOnBus() const { return trayProgram == nullptr && windowClass.empty(); }

        /// What the bar calls its icon.
        std::string identity;
        /// One of these three.
        std::unique_ptr<TrayClient> trayProgram;
        std::unique_ptr<BusProgram> busProgram;
        std::optional<ChildProcess> process;
        /// Of a program in the tray.
        xcb_window_t icon = XCB_WINDOW_NONE;
        /// Of the icon of a process in the tray, which makes a new one for each tray.
        std::string windowClass;
        /// What its icon shows in the middle, where that is known.
        std::optional<std::uint32_t> color;
        bool hasMenu = false;
        /// It can be asked how often its icon was clicked.
        bool countsClicks = false;
    };
    struct Action {
        const char* name = "";
        /// Of so many times as all weights together.
        int weight = 0;
        /// False where there was nothing to do.
        bool (SoakSession::*run)() = nullptr;
    };
    /// What Velmo and the X server hold for it.
    struct Held {
        std::map<std::string, std::uint32_t> resources;
        long files = 0;
        /// Of Velmo.
        long threads = 0;
        /// Processes that it has started, or one of these.
        long children = 0;
        /// Kilobytes: what is in use of its own, and what it shares with the X server.
        long heap = 0;
        long shared = 0;
        /// Of icons whose pictures are kept, which come to an end with Velmo alone.
        long pictures = 0;
        /// All but these.
        long memory() const { return heap + shared - pictures; }
    };

    static const std::vector<Action>& actions();
    void shuffle();
    void note(const std::string& action);

    bool trayProgramComes();
    bool busProgramComes();
    bool toolkitProgramComes();
    bool programGoes();
    bool iconGoes();
    bool iconChanges();
    bool programHangs();
    bool clickIcon();
    static int clicksOf(const Client& client);
    /// Waits until the program has been told of another one, where that can be known.
    void expectClick(const Client& client, int before);
    void leaveMenuOf(const Client& client);
    bool openIconsMenu();

    bool clickToggle();
    /// By a click on the toggle, unless that does something else.
    void toggleHidden();
    bool optionClickToggle();
    void leave(const std::string& what, const std::function<bool()>& isOpen);
    bool openMenuAndLeaveIt();
    /// With what is hidden by now, a picture of each.
    void openPanelAnew();
    /// In pixels.
    int expectedPanelWidth() const;
    /// Pixels on each side.
    int panelShadow() const;
    bool openPanelAndLeaveIt();
    bool clickPicture();
    bool openCalendarAndLeaveIt();
    bool lookAtToolTip();
    bool dragIcon();
    bool hideIcon();
    bool dragOurs();
    bool dragAnywhere(const std::string& name);
    void dragBeyond(const std::string& name, const std::string& target);
    bool dragFarLeft(const std::string& name);
    void dragTo(const std::string& name, int pixelX, std::ptrdiff_t index);
    bool giveUpDrag();
    void awaitClock();
    /// A clock that is hidden.
    void bringClockBack();

    bool addSecondMonitor();
    bool removeMonitors();
    bool leaveHalfTheScreen();
    bool changeResolution();
    bool changeScale();
    bool changeZone();
    bool restartBus();
    bool replaceManager();
    bool crashManager();
    bool fillScreen();

    bool lookAtSettings();
    bool switchAlwaysHidden();
    bool changeToggleIcon();
    bool switchClock();
    bool letItemsHideAgain();
    bool changeClickAction();
    bool changePattern();
    bool changeSpacing();
    bool showByHovering();
    bool recordShortcut();
    bool pressShortcut();
    bool recordPanelShortcut();
    bool pressPanelShortcut();
    /// By the stop of the field, which has a button to remove it while it is there.
    void recordOrRemove(int stop, const std::string& key, const char* keys, bool isThere);
    bool changeDelay();
    bool hideByClickOutside();
    bool clickOutside();
    bool switchScrolling();
    bool scroll();
    bool switchRefreshing();

    /// What the model says: the order from right to left, with those that are away, and the level.
    void placeNew(const std::string& name);
    std::vector<std::string> expectedOrder() const;
    std::vector<std::string> seenOrder() const;
    bool isExpectedOnScreen(const std::string& name) const;
    std::string hidingDivider() const;
    /// From right to left, what the user can take.
    std::vector<std::string> expectedInReach() const;
    /// One of these. Empty for none.
    std::string anyInReach(const std::function<bool(const std::string&)>& condition = [](const auto&) {
        return true;
    });
    xcb_window_t itemOf(const std::string& name) const;
    Level seenLevel() const;
    bool isAsExpected() const;
    std::string differences() const;
    void expectAll();
    /// Of those that are there, by what the bar calls them.
    std::vector<std::string> expectedIdentities() const;
    void expectPictures();
    /// One look, one width.
    void expectClockOfZone();
    std::optional<int> clockWidth() const;
    ClockLook clockLook() const { return {zone_, pattern_, clockSpacing_, resolution_}; }

    void openSettings();
    void closeSettings();
    /// By the middle of its button, in points from the left.
    void clickTab(int place);
    /// The same for keys that go through what it shows, from the top.
    void chooseTab(int place);
    /// Keys that lead from one stop of the keyboard to the next.
    void pressStops(int count);
    void writePattern(const std::string& pattern);
    /// As it is written down. Null where it is not.
    nlohmann::json written(const std::string& key) const;
    /// Waits until it is, and remembers it.
    void expectChosen(const std::string& key, const nlohmann::json& value);
    /// It has outlived the process that wrote it.
    void expectAllChosen() const;
    /// By keys, from the tab on.
    void switchBox(int stop, const std::string& key, bool isOn);
    /// From the opening of the settings to their end: a key at a stop of the tab, for that to be written
    /// down.
    void chooseInSettings(int tab, int stop, const std::string& press, const std::string& key,
                          const nlohmann::json& value);
    void switchInSettings(int tab, int stop, const std::string& key, bool isOn);
    void kill();
    void startWithDefaults();
    void startVelmoCounted();
    std::string heapFile() const { return home_ / "heap"; }
    /// Velmo has just ended: until its items' programs have done what they do without a bar.
    void awaitRetreat() const;
    void expectBarOnScreen();
    void setMonitors(int count);
    void setMode(int width, int height);
    void setScale(int resolution);
    void writeScale() const;
    double scale() const;
    std::string anyManager();
    void keepManager();
    void useManager(const std::string& name);
    void openEverything(const std::vector<int>& atResolutions);
    Held held();
    /// What is held beyond the second rest since the start, or beyond the first, but for a few that are made
    /// once. Empty for nothing.
    std::string surplus();
    /// Kilobytes by which the last third of the rests since the start is above the one before. None where
    /// they are too few to tell.
    std::optional<long> slope() const;
    void expectNoGrowth();
    std::string windows() const;
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    /// One of these. Empty for none.
    std::string oneOf(const std::vector<std::string>& names);
    /// One of those names that no living program has. Empty for none.
    std::string anyOf(std::vector<std::string> names);
    /// A living program whose icon is on the screen, of those that the condition holds for. Empty where there
    /// is none.
    std::string anyOnScreen(const std::function<bool(const Client&)>& condition = [](const auto&) {
        return true;
    });
    std::string anyProgram();

    std::mt19937 random_;
    /// What is still to be done before anything is done once more.
    std::vector<const Action*> deck_;
    std::optional<OwnZone> ownZone_;
    std::optional<ChildProcess> settingsManager_;
    std::map<std::string, Client> clients_;
    std::vector<std::string> order_;
    Level level_ = Level::none;
    bool hasAlwaysHidden_ = true;
    bool hasClock_ = true;
    bool isClockBlank_ = false;
    std::string manager_ = "openbox";
    std::string zone_ = "UTC";
    int resolution_ = 96;
    /// Of our making: none where the screen is but one.
    int monitors_ = 0;
    bool isSmallScreen_ = false;
    bool clicksOpenPanel_ = false;
    bool hasShortcut_ = false;
    bool hasPanelShortcut_ = false;
    bool hasScrolling_ = false;
    bool isPanelRefreshed_ = true;
    bool hidesLate_ = false;
    std::string pattern_ = "VV HH:mm";
    /// Points; 0 for the usual one.
    int spacing_ = 0;
    /// When the clock came.
    int clockSpacing_ = 0;
    /// By the last change.
    bool isSpacingTightened_ = false;
    /// What the user has chosen so far, as it is written down.
    std::map<std::string, nlohmann::json> chosen_;
    /// That have come since the last start.
    long icons_ = 0;
    /// In pixels.
    std::map<ClockLook, int> clockWidths_;
    std::string lastAction_;
    std::map<std::string, int> counts_;
    std::string figures_;
    /// What they have found since the last start.
    std::vector<Held> rests_;
};

}  // namespace velmo::desktop
