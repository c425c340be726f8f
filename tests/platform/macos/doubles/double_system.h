#pragma once

#include "geometry.h"
#include "macos/core_graphics/cg_rect.h"
#include "macos/foundation/ns_array.h"
#include "macos/foundation/ns_dictionary.h"
#include "macos/foundation/ns_time_zone.h"
#include "platform/macos/doubles/screen_capture.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace velmo::macos::doubles {

struct ShareableWindows {
    NSArray windows;
};

struct InstalledMonitor {
    Object token;
    bool isLocal = false;
    std::uint64_t mask = 0;
    void* handler = nullptr;
};

struct ShownMenuRecord {
    std::vector<Object> items;
    Point location;
    Object view;
};

struct PostedMouseEvent {
    std::int32_t sourceState = 0;
    std::uint32_t type = 0;
    Point location;
    std::uint32_t button = 0;
    std::uint32_t tap = 0;

    bool operator==(const PostedMouseEvent&) const = default;
};

struct BegunActivity {
    std::uint64_t options = 0;
    std::string reason;
    Object token;
};

struct RegisteredHotKey {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    bool operator==(const RegisteredHotKey&) const = default;
};

/// What stands in for the parts of macOS that GNUstep does not have: what it answers, and what was asked of
/// it.
struct DoubleSystem {
    /// By application, user, host and key.
    std::map<std::tuple<std::string, std::string, std::string, std::string>, Object> preferences;
    std::vector<std::string> synchronizedScopes;

    bool makesEvents = true;
    /// Made so far.
    int eventSources = 0;
    std::vector<PostedMouseEvent> postedEvents;

    /// Absent: no answer.
    std::optional<NSArray> windowList;
    std::uint32_t windowListOption = 0;
    std::uint32_t relativeToWindow = 1;

    bool isTrusted = false;
    std::vector<bool> trustPrompts;
    bool mayCapture = false;
    int captureRequests = 0;
    /// Absent: no answer.
    std::optional<ShareableWindows> shareableWindows;
    /// Whether desktop windows are left out, and those that are not on screen.
    std::vector<std::pair<bool, bool>> contentRequests;
    std::vector<RequestedCapture> captures;
    bool capturesSucceed = true;
    /// Of bitmaps.
    bool makesContexts = true;

    std::int32_t hotKeyStatus = 0;
    bool installsHandlers = true;
    std::map<std::intptr_t, RegisteredHotKey> hotKeys;
    int handlerCount = 0;

    std::int64_t loginStatus = 0;
    /// Empty: registering succeeds.
    std::string loginError;
    /// What registering leads to.
    std::int64_t registeredStatus = 1;
    std::vector<std::string> loginCalls;

    std::vector<Object> statusItems;
    bool givesButtons = true;
    bool buttonsHaveWindows = true;
    bool buttonsAreFlipped = true;
    std::vector<Object> trackingAreas;
    /// Of the main menu.
    std::vector<Object> submenus;
    std::vector<ShownMenuRecord> shownMenus;
    std::function<void()> whileMenuIsOpen;
    /// By the image that is shown in its place.
    std::map<Id, std::string> symbols;
    /// Blocks.
    std::vector<std::shared_ptr<void>> drawingHandlers;
    double systemFontSize = 13;
    /// The last one is the one that the user works on.
    std::vector<Object> screens;

    /// True: GNUstep's own application and windows are used.
    bool hasDisplay = false;
    /// By the view or the window.
    std::map<Id, std::string> accessibilityLabels;
    std::map<Id, std::string> accessibilityHelps;
    std::map<Id, std::string> accessibilityRoles;
    /// Whether assistive programs are told of the view itself, where anything was said of that.
    std::map<Id, bool> accessibilityElements;
    /// Points that boxes leave free at each side of what is seen of them.
    double boxMargin = 0;
    /// Each with the button of a status item.
    std::vector<Object> barWindows;
    std::int64_t toolbarStyle = 0;
    /// Whether toolbars can be told who may choose how they show their items.
    bool hasDisplayModeCustomization = true;
    /// Absent: nothing was said.
    std::optional<bool> allowsDisplayModeCustomization;
    /// Each that was asked for.
    std::vector<CGSize> popoverSizes;
    /// False: the popover gets its size later, as it does where that is animated.
    bool resizesPopovers = true;
    std::int64_t popoverBehavior = 0;
    std::uint64_t popoverEdge = 0;
    bool popoverAnimates = false;
    std::uint64_t collectionBehavior = 0;
    std::int64_t animationBehavior = 0;
    /// Of visual effect views; -1: not said.
    std::int64_t material = -1;
    std::int64_t blendingMode = -1;
    std::int64_t materialState = -1;
    /// The last one that was asked for.
    Object layer;
    /// Those that were put in front of everything, and whether they were visible already.
    std::vector<std::pair<Id, bool>> windowsPutInFront;
    /// Those that were made for the content of a controller.
    std::vector<Id> windowsWithContent;
    /// Those that their controllers have shown, each time.
    std::vector<Id> windowsShownByControllers;
    bool showsToolTipsInBackground = false;
    /// The one that was shown, or got a size, last.
    Object popover;
    Object application;
    Id applicationDelegate = nullptr;
    std::int64_t activationPolicy = 0;
    std::function<void()> whileApplicationRuns;
    int activations = 0;
    int terminations = 0;
    Object currentEvent;

    Point mouseLocation;
    std::uint64_t pressedMouseButtons = 0;
    bool allowsMonitors = true;
    std::vector<InstalledMonitor> monitors;

    std::vector<std::string> scripts;
    std::vector<std::string> openedAddresses;
    /// Blocks that the main queue has been given.
    int queuedBlocks = 0;
    /// Of those with blocks.
    std::vector<double> timerIntervals;
    std::vector<double> timerTolerances;
    /// Those that have not been ended.
    std::vector<BegunActivity> activities;
    /// None: that of the tests' surroundings.
    NSTimeZone timeZone;
    /// What the program has been told, and is told again until it has that reset.
    NSTimeZone keptTimeZone;
    int timeZoneResets = 0;
    /// What a reset leads to is told in a later turn of the run loop, and not within the reset.
    bool tellsOfResetsLater = false;
};

/// The one that there is, as a fresh one.
DoubleSystem& freshSystem();
DoubleSystem& system();

/// Tells the installed handlers of an event, as the system does. `isReadable` false: it does not say of which
/// hot key. The result of the last one.
std::int32_t sendHotKeyEvent(std::uint32_t signature, std::uint32_t id, bool isReadable = true);
std::int32_t sendMissingHotKeyEvent();

/// Adds methods and classes that GNUstep lacks. Once is enough.
void addMissingMethods();

}  // namespace velmo::macos::doubles
