#include "macos/foundation/ns_number.h"
#include "macos/services/macos_accessibility.h"
#include "macos/services/macos_event_poster.h"
#include "macos/services/macos_global_preferences.h"
#include "macos/services/macos_login_service.h"
#include "macos/services/macos_process_info.h"
#include "macos/services/macos_session.h"
#include "macos/services/macos_workspace.h"
#include "platform/macos/macos_test.h"

#include <unistd.h>

namespace velmo::macos {
namespace {

class SystemServicesTest : public MacosTest {};

TEST_F(SystemServicesTest, ProcessInfoKnowsTheProcessAndItsEnvironment) {
    const MacosProcessInfo process;
    EXPECT_EQ(process.processIdentifier(), getpid());
    EXPECT_EQ(process.environment("TZ"), "Europe/Berlin");
    EXPECT_EQ(process.environment("VELMO_SET_AND_EMPTY"), "");
    EXPECT_EQ(process.environment("VELMO_NOT_SET"), std::nullopt);
}

TEST_F(SystemServicesTest, GlobalPreferencesAreThoseOfTheUserOnThisHost) {
    MacosGlobalPreferences preferences;
    EXPECT_EQ(preferences.value(statusItemSpacingKey), std::nullopt);
    preferences.setValue(statusItemSpacingKey, 6);
    EXPECT_EQ(preferences.value(statusItemSpacingKey), GlobalPreferences::Value(6.0));
    EXPECT_TRUE(system.preferences.contains(
        {"any application", "current user", "current host", "NSStatusItemSpacing"}));
    preferences.setValue(statusItemSpacingKey, std::nullopt);
    EXPECT_TRUE(system.preferences.empty());
}

TEST_F(SystemServicesTest, GlobalPreferencesTellNumbersFromOtherValues) {
    MacosGlobalPreferences preferences;
    const auto store = [&](const Object& value) {
        system.preferences[{"any application", "current user", "current host", "NSStatusItemSpacing"}] =
            value;
    };
    store(NSString::from("6"));
    EXPECT_EQ(preferences.value(statusItemSpacingKey), GlobalPreferences::Value(std::string("6")));
    store(NSMutableDictionary::create());
    EXPECT_EQ(preferences.value(statusItemSpacingKey), GlobalPreferences::Value(std::string()));
    store(NSNumber::with(7.5));
    EXPECT_EQ(preferences.value(statusItemSpacingKey), GlobalPreferences::Value(7.5));
}

TEST_F(SystemServicesTest, GlobalPreferencesAreWrittenInTheirScope) {
    MacosGlobalPreferences preferences;
    preferences.synchronize();
    EXPECT_EQ(system.synchronizedScopes,
              std::vector<std::string>{"any application, current user, current host"});
}

TEST_F(SystemServicesTest, LoggingOutIsAskedOfTheSystem) {
    MacosSession().requestLogOut();
    EXPECT_EQ(system.scripts,
              (std::vector<std::string>{"made: tell application \"System Events\" to log out", "executed"}));
}

TEST_F(SystemServicesTest, TheWorkspaceOpensAddressesAndNothingElse) {
    MacosWorkspace workspace;
    workspace.open("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
    EXPECT_EQ(system.openedAddresses,
              std::vector<std::string>{
                  "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"});
    workspace.open("\xff\xff");
    EXPECT_EQ(system.openedAddresses.size(), 1U);
}

TEST_F(SystemServicesTest, TrustIsAskedForOnlyWhereThatIsWanted) {
    MacosAccessibility accessibility;
    EXPECT_FALSE(accessibility.isProcessTrusted());
    EXPECT_TRUE(system.trustPrompts.empty());
    EXPECT_FALSE(accessibility.isProcessTrusted(true));
    EXPECT_FALSE(accessibility.isProcessTrusted(false));
    EXPECT_EQ(system.trustPrompts, (std::vector<bool>{true, false}));
    system.isTrusted = true;
    EXPECT_TRUE(accessibility.isProcessTrusted());
}

TEST_F(SystemServicesTest, TheLoginServiceSaysWhatTheSystemSays) {
    MacosLoginService login;
    EXPECT_EQ(login.status(), LoginServiceStatus::notRegistered);
    EXPECT_EQ(login.registerService(), std::nullopt);
    EXPECT_EQ(login.status(), LoginServiceStatus::enabled);
    EXPECT_EQ(login.unregisterService(), std::nullopt);
    EXPECT_EQ(login.status(), LoginServiceStatus::notRegistered);
    system.loginStatus = 2;
    EXPECT_EQ(login.status(), LoginServiceStatus::requiresApproval);
    EXPECT_EQ(system.loginCalls, (std::vector<std::string>{"register", "unregister"}));
}

TEST_F(SystemServicesTest, TheLoginServiceGivesTheSystemsWordsForWhatWentWrong) {
    MacosLoginService login;
    system.loginError = "Operation not permitted";
    EXPECT_EQ(login.registerService(), "Operation not permitted");
    EXPECT_EQ(login.unregisterService(), "Operation not permitted");
}

TEST_F(SystemServicesTest, MouseEventsAreMadeAsIfByTheHardware) {
    MacosEventPoster poster;
    poster.postMouseEvent(EventType::mouseMoved, {640.5, 11});
    poster.postMouseEvent(EventType::leftMouseDown, {640.5, 11});
    poster.postMouseEvent(EventType::leftMouseUp, {640.5, 11});
    const auto event = [](std::uint32_t type) {
        return doubles::PostedMouseEvent{.sourceState = 1, .type = type, .location = {640.5, 11}};
    };
    EXPECT_EQ(system.postedEvents, (std::vector{event(5), event(1), event(2)}));
}

TEST_F(SystemServicesTest, TheMouseEventsOfAClickComeOfOneSource) {
    MacosEventPoster poster;
    for (int click = 1; click <= 2; ++click) {
        for (const EventType type : {EventType::mouseMoved, EventType::leftMouseDown, EventType::leftMouseUp})
            poster.postMouseEvent(type, {1, 2});
        EXPECT_EQ(system.eventSources, click);
    }
}

TEST_F(SystemServicesTest, MouseEventsThatCannotBeMadeAreLeftOut) {
    system.makesEvents = false;
    MacosEventPoster().postMouseEvent(EventType::leftMouseDown, {1, 2});
    EXPECT_TRUE(system.postedEvents.empty());
}

}  // namespace
}  // namespace velmo::macos
