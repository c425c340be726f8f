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
#include <utility>
#include <vector>

namespace velmo::desktop {

/// A user who works, and programs that come, go and die, at random; and what has to be true all along.
class SoakSession : public SessionBusDesktop {
protected:
    void SetUp() override;
    void TearDown() override;

    void begin(unsigned seed) { random_.seed(seed); }
    /// Does one thing, waits for its effect, and looks whether everything is as it has to be.
    void step();
    /// Everything that is open closes, all programs end, and nothing more is held than at the first time.
    void rest();
    /// Velmo is killed, whatever is open, and ends in order, and returns each time to what it has known.
    void startAnew();
    const std::string& lastAction() const { return lastAction_; }
    /// How often each has happened so far: those that never have, too.
    const std::map<std::string, int>& actionCounts() const { return counts_; }
    const std::string& figures() const { return figures_; }

private:
    enum class Level { none, hidden, all };
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
        /// Kilobytes that are in use.
        long memory = 0;
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
    bool optionClickToggle();
    void leave(const std::string& what, const std::function<bool()>& isOpen);
    bool openMenuAndLeaveIt();
    bool openPanelAndLeaveIt();
    bool clickPicture();
    bool openCalendarAndLeaveIt();
    bool lookAtToolTip();
    bool dragIcon();
    bool hideIcon();
    /// The model learns where it lies then.
    void dragTo(const std::string& name, int pixelX);
    bool giveUpDrag();

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

    /// What the model says: the order from right to left, with those that are away, and the level.
    void placeNew(const std::string& name);
    std::vector<std::string> expectedOrder() const;
    std::vector<std::string> seenOrder() const;
    bool isExpectedOnScreen(const std::string& name) const;
    xcb_window_t itemOf(const std::string& name) const;
    Level seenLevel() const;
    bool isAsExpected() const;
    std::string differences() const;
    void expectAll();
    /// Of those that are there, by what the bar calls them.
    std::vector<std::string> expectedIdentities() const;
    void expectPictures();
    /// One zone, one width.
    void expectClockOfZone();
    std::optional<int> clockWidth() const;

    void openSettings();
    void closeSettings();
    /// By the middle of its button, in points from the left.
    void clickTab(int place);
    /// The same for keys that go through what it shows, from the top.
    void chooseTab(int place);
    /// By keys, from the tab on.
    void switchBox(int stop, const std::string& key, bool isOn);
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
    void keepManager();
    void openEverything(const std::vector<int>& resolutions);
    Held held();
    long memoryInUse();
    /// What is held beyond that, but for a few that are made once. Empty for nothing.
    std::string surplus();
    std::string windows() const;
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
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
    bool hasAlwaysHidden_ = false;
    bool hasClock_ = true;
    bool isClockBlank_ = false;
    std::string manager_ = "openbox";
    std::string zone_ = "UTC";
    int resolution_ = 96;
    /// Of our making: none where the screen is but one.
    int monitors_ = 0;
    bool isSmallScreen_ = false;
    /// In pixels, by zone and resolution.
    std::map<std::pair<std::string, int>, int> clockWidths_;
    std::string lastAction_;
    std::map<std::string, int> counts_;
    std::string figures_;
    /// What the first rest after a start has found.
    std::optional<Held> held_;
};

}  // namespace velmo::desktop
