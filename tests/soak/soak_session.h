#pragma once

#include "own_zone.h"
#include "session_bus_desktop.h"
#include "tray_client.h"

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
    /// Velmo ends, in order or not, and returns to what it has known.
    void startAnew();
    const std::string& lastAction() const { return lastAction_; }
    const std::map<std::string, int>& actionCounts() const { return counts_; }
    const std::string& figures() const { return figures_; }

private:
    enum class Level { none, hidden, all };
    struct Client {
        std::unique_ptr<TrayClient> program;
        xcb_window_t icon = XCB_WINDOW_NONE;
        std::unique_ptr<BusProgram> busProgram;
    };
    struct Action {
        const char* name = "";
        int weight = 0;
        void (SoakSession::*run)() = nullptr;
    };
    /// What Velmo and the X server hold for it.
    struct Held {
        std::map<std::string, std::uint32_t> resources;
        long files = 0;
        /// Kilobytes that are its own.
        long memory = 0;
    };

    static const std::vector<Action>& actions();

    void trayProgramComes();
    void busProgramComes();
    void programGoes();
    void iconGoes();
    void iconChanges();
    void clickToggle();
    void optionClickToggle();
    void clickIcon();
    void openMenuAndLeaveIt();
    void openPanelAndLeaveIt();
    void dragIcon();
    void changeMonitors();
    void changeScale();
    void changeZone();
    void restartBus();
    void replaceManager();
    void keepManager();
    void lookAtSettings();
    void changeSettings();

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
    /// One zone, one width.
    void expectClockOfZone();
    std::optional<int> clockWidth() const;

    std::optional<xcb_window_t> settings() const;
    void openSettings();
    void closeSettings();
    /// By the middle of its button, in points from the left.
    void chooseTab(int place);
    void switchAlwaysHidden();
    void changeToggleIcon();
    void startWithDefaults();
    void useOneMonitor();
    void setScale(int resolution);
    void openEverythingOnce();
    Held held();
    /// What is held beyond that, but for a few that are made once. Empty for nothing.
    std::string surplus();
    std::string windows() const;
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    /// A living program whose icon is on the screen. Empty where there is none.
    std::string anyOnScreen();
    std::string anyProgram();

    std::mt19937 random_;
    std::optional<OwnZone> ownZone_;
    std::map<std::string, Client> clients_;
    std::vector<std::string> order_;
    Level level_ = Level::none;
    bool hasAlwaysHidden_ = false;
    std::string manager_ = "openbox";
    std::string zone_ = "UTC";
    int resolution_ = 96;
    /// In pixels, by zone and resolution.
    std::map<std::pair<std::string, int>, int> clockWidths_;
    std::string lastAction_;
    std::map<std::string, int> counts_;
    std::string figures_;
    /// What the first rest after a start has found.
    std::optional<Held> held_;
};

}  // namespace velmo::desktop
