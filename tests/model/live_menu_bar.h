#pragma once

#include "menubar/menu_bar_manager.h"
#include "model/account.h"
#include "model/model_preferences.h"
#include "model/observation.h"
#include "model/step.h"
#include "simulated/simulated_desktop.h"

#include <array>
#include <memory>
#include <string_view>
#include <vector>

namespace velmo {

/// The program itself on a simulated desktop.
class LiveMenuBar {
public:
    /// Starts the program with stored preferences.
    explicit LiveMenuBar(const ModelPreferences& stored);

    /// False where the step did not find what it was to act on.
    bool perform(const Step& step);
    Observation observe();

    /// Ends the program and lets everything that it left behind come due. True where nothing of it remains.
    bool end();

private:
    /// Of other programs, left of one divider and of both.
    static constexpr std::array<std::string_view, 2> otherItems{"hidden", "always hidden"};

    void store(const ModelPreferences& stored);
    void storeShortcut(std::size_t choice, const std::string& key);
    void hotKeyCalled(const SimulatedHotKeyService::Call& call);
    bool performMouse(const Step& step);
    void performSurroundings(const Step& step);
    void performPreference(const Step& step);
    void performCommand(const Step& step);
    void performShortcut(const Step& step);
    void setRefusal(const Shortcut& shortcut, bool refuse, HotKeyStatus status);
    void pressShortcut(std::size_t choice);
    void reportPress(std::size_t choice);
    void useOwnMenu(SimulatedOpenMenu& menu);
    void pass(std::int64_t nanoseconds);
    bool useOtherButton(OwnItem item);
    void useOtherButtonElsewhere();
    void openMenu(std::size_t kind);
    void closeMenu(std::size_t choice);
    bool activateEntry(std::size_t choice);
    void setCaptureTime(std::size_t choice, Seconds duration);
    std::uint32_t windowOf(std::string_view item);
    void setScreens(std::size_t arrangement);
    SimulatedStatusItem& item(OwnItem item);
    bool isHoverTracked();
    std::string stateOfClock();
    std::string describeSnapshot();

    Account account_;
    MenuPlan menuPlan_;
    std::size_t applicationCallsSeen_ = 0;
    std::size_t postedEventsSeen_ = 0;
    SimulatedDesktop desktop_;
    std::shared_ptr<Preferences> preferences_;
    std::unique_ptr<MenuBarManager> manager_;
    std::vector<SimulatedWindowServer::WindowId> menus_;
};

}  // namespace velmo
