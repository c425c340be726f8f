#pragma once

#include "model/account.h"
#include "model/model_agenda.h"
#include "model/model_geometry.h"
#include "model/model_preferences.h"
#include "model/observation.h"
#include "model/panel_entry.h"
#include "model/reveal_table.h"
#include "model/step.h"
#include "platform/run_loop.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace velmo {

/// The reveal level as a transition table, and the little that decides which row is taken when.
class RevealModel {
public:
    /// With the preferences that the program finds when it starts.
    explicit RevealModel(const ModelPreferences& stored);

    /// False where the step did not find what it was to act on.
    bool perform(const Step& step);
    Observation observe();

    RevealLevel level() const { return level_; }
    const ModelPreferences& preferences() const { return preferences_; }
    const ModelGeometry& geometry() const { return geometry_; }
    const ModelAgenda& agenda() const { return agenda_; }
    std::uint32_t nextShortcutId() const { return nextShortcutId_; }
    std::size_t menuCount() const { return menus_.size(); }
    /// The time of day as the model knows it.
    Date now() const;
    Date lastScrollToggle() const { return lastScrollToggle_; }
    /// The lower left corner of the panel. Absent while it is not shown.
    const std::optional<Point>& panel() const { return panel_; }
    /// How often each row of the table was taken.
    const std::array<std::uint64_t, rowCount>& taken() const { return taken_; }

private:
    using Task = ModelAgenda::Task;
    using Wait = ModelAgenda::Wait;

    /// Points between an item and its menu.
    static constexpr double menuDistance = 4;
    /// Seconds, of the clock and of its calendar.
    static constexpr double tickInterval = 1;

    bool performTime(const Step& step);
    bool performMouse(const Step& step);
    bool performSurroundings(const Step& step);
    bool performPreference(const Step& step);
    bool performCommand(const Step& step);
    void setTimeOfDay(Date date);
    void closeMenu(std::size_t choice);
    void movePointer(double x, double y);
    template <typename T>
    void change(T& preference, const T& value, std::optional<Task> reaction, double delivered);

    bool pressItem(OwnItem item, bool rightButton);
    bool releaseItem(OwnItem item, bool rightButton, ModifierFlags flags);
    void pressAtPointer(bool rightButton);
    void releaseAtPointer(bool rightButton, ModifierFlags flags);
    void releaseOn(std::optional<OwnItem> item, bool rightButton, ModifierFlags flags);
    bool isEnabled(OwnItem item) const;
    void clicked(OwnItem item, bool rightButton, ModifierFlags flags);
    /// `pressed` is where the press was. Absent where there was none.
    void toggleClicked(bool rightButton, ModifierFlags flags, bool hasClosedPanel);

    /// What a right click opens; the step's plan tells what the user does with it.
    void showOwnMenu(OwnItem item, Cause opened);
    void chooseFromOwnMenu(MenuChoice choice);
    void togglePanel();

    using ProcessId = ModelAgenda::ProcessId;

    /// What a pass of pictures found, and what follows it.
    struct Pass {
        bool isForPanel = false;
        bool hidesAfterwards = false;
        Point panel;
        bool isClassified = false;
        /// Names, left to right.
        std::string hidden;
        std::string alwaysHidden;
        /// Those that are not there yet.
        std::size_t pictures = 0;
    };

    void scheduleSnapshot();
    void snapshotBegins(ProcessId process);
    void snapshotDue();
    void openPanel();
    void panelRefreshOver(ProcessId process);
    void beginPass(Pass pass);
    /// False where nothing can be listed.
    bool findHiddenItems(Pass& pass) const;
    void store(const Pass& pass);
    void queryOver(ProcessId process);
    void pictureOver(ProcessId process);
    void finishPass(const Pass& pass);
    bool isSnapshotOutdated() const;
    Point panelPlace() const;
    bool isPointerInPanel() const;
    void closePanel();
    void showPanel(const Point& place);
    /// A press in a window of the program other than the panel.
    void pressedInWindow(bool rightButton);

    /// False where the panel has no such entry.
    bool activateEntry(std::size_t choice);
    void entryActivated(ProcessId process);
    void activationDue(ProcessId process);
    void pressDue(ProcessId process);
    void releaseDue(ProcessId process);
    /// The middle of the item, in points from the top left. Absent where it is not found.
    std::optional<Point> middleOf(const std::string& name) const;
    void post(EventType type, const Point& place);

    void registerShortcuts();
    void registerShortcut(std::size_t choice, Task task);
    bool isRefused(const Shortcut& shortcut) const;
    void pressShortcut(std::size_t choice);
    /// Absent: the event does not tell which.
    void reportPress(std::optional<std::uint32_t> id);
    void setRefusal(const Shortcut& shortcut, bool refuse);
    std::string describeHeldKeys() const;

    /// Lets time pass.
    void pass(std::int64_t nanoseconds);
    void fireTimer();
    void runPosted();
    void run(const ModelAgenda::Posted& posted);
    void over(const ModelAgenda::Over& over);
    void rehideFired();
    void clickedOutside();
    void clickOutsideOver();
    void scrolled(double delta);
    void hoverOver();
    void showOnHoverChanged(bool on);
    void alwaysHiddenChanged(bool on);
    void placeClock();

    void setClockEnabled(bool on);
    void clockEnabledChanged(bool on);
    void startClock();
    void stopClock();
    void clockClicked(bool rightButton);
    void showClockMenu();

    bool isMenuOpen() const;
    void take(Cause cause);
    void apply();
    void restartTimer();
    void scheduleRehide(double seconds);

    struct HeldKey {
        std::uint32_t id;
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        Task task;
    };

    RevealLevel level_ = RevealLevel::none;
    ModelPreferences preferences_;
    ModelGeometry geometry_;
    ModelAgenda agenda_;
    Date dateAtStart_ = 0;
    Date lastScrollToggle_ = distantPast;
    std::optional<ModelAgenda::WaitId> rehide_;
    std::optional<ModelAgenda::WaitId> hover_;
    std::optional<Point> panel_;
    /// Passes under way, and panels that wait for theirs.
    std::map<ProcessId, Pass> passes_;
    ProcessId lastProcess_ = 0;
    /// The snapshot that was scheduled last, before it begins to wait, and its wait.
    std::optional<ProcessId> scheduledSnapshot_;
    std::optional<ModelAgenda::WaitId> snapshotWait_;
    std::string knownHidden_;
    std::string knownAlwaysHidden_;
    std::set<std::string> pictured_;
    /// Seconds that a query takes, and a picture of each item.
    std::array<double, captureTimeCount> captureTimes_{};
    /// Names of the items that the panel was shown with.
    std::string entries_;
    struct Activation {
        std::string name;
        Point place;
    };
    std::map<ProcessId, Activation> activations_;
    bool isTrusted_ = true;
    int prompts_ = 0;
    std::string clicks_;
    Date snapshotDate_ = distantPast;
    /// Absent: hovering is not noticed. Otherwise whether the pointer was last noticed on the toggle.
    std::optional<bool> hovering_;
    std::string toggleImage_;
    /// Kinds of the windows that are open.
    std::vector<std::size_t> menus_;
    bool windowServerAnswers_ = true;
    MenuPlan menuPlan_;
    bool isOwnMenuOpen_ = false;
    bool mayCaptureScreen_ = true;
    std::size_t accessRequests_ = 0;
    std::vector<HeldKey> heldKeys_;
    std::uint32_t nextShortcutId_ = 1;
    /// Key codes and modifiers.
    std::set<std::pair<std::uint32_t, std::uint32_t>> refused_;
    Account account_;
    std::optional<ModelAgenda::WaitId> clockTick_;
    /// Absent while the calendar is closed.
    std::optional<ModelAgenda::WaitId> calendarTick_;
    /// The clock's text never changes here: once shown, it is not written again.
    bool wasClockShown_ = false;
    /// Where each button of the mouse went down.
    std::array<std::optional<OwnItem>, 2> pressed_;
    /// Whether the last press of each button closed the panel, which has not been shown since.
    std::array<bool, 2> closedPanel_{};
    std::array<std::uint64_t, rowCount> taken_{};
};

template <typename T>
void RevealModel::change(T& preference, const T& value, std::optional<Task> reaction, double delivered) {
    if (preference != value && reaction)
        agenda_.post(*reaction, delivered);
    preference = value;
}

}  // namespace velmo
