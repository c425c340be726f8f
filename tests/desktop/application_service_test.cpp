#include "built_files.h"
#include "bus_program.h"
#include "settings_session.h"

#include <systemd/sd-bus.h>

#include <array>
#include <fstream>

namespace velmo::desktop {

namespace {

constexpr const char* velmoName = "org.velmo.Velmo";
constexpr const char* velmoPath = "/org/velmo/Velmo";
constexpr const char* applicationInterface = "org.freedesktop.Application";

/// A program on the session's bus that starts others and asks them for something, as launchers do. Each call
/// waits for its answer, and gives the name of the error, empty for none.
class Launcher {
public:
    explicit Launcher(const std::string& address) {
        sd_bus_new(&bus_);
        sd_bus_set_address(bus_, address.c_str());
        sd_bus_set_bus_client(bus_, 1);
        if (sd_bus_start(bus_) < 0)
            throw std::runtime_error("cannot reach the bus");
    }
    ~Launcher() { sd_bus_flush_close_unref(bus_); }
    Launcher(const Launcher&) = delete;
    Launcher& operator=(const Launcher&) = delete;

    template <typename... Values>
    std::string call(const char* member, const char* signature, Values... values) {
        return callAt(velmoName, velmoPath, applicationInterface, member, signature, values...);
    }
    template <typename... Values>
    std::string callAt(const char* destination, const char* object, const char* type, const char* member,
                       const char* signature, Values... values) {
        sd_bus_error error = SD_BUS_ERROR_NULL;
        sd_bus_call_method(bus_, destination, object, type, member, &error, nullptr, signature, values...);
        const std::string problem = error.name ? error.name : "";
        sd_bus_error_free(&error);
        return problem;
    }
    /// As the bus tells it those whom it starts: with its own identity.
    static std::string fullAddress(const std::string& address) {
        const Launcher launcher(address);
        sd_id128_t identity{};
        sd_bus_get_bus_id(launcher.bus_, &identity);
        std::array<char, SD_ID128_STRING_MAX> text{};
        return address + ",guid=" + sd_id128_to_string(identity, text.data());
    }
    /// By what the bus calls the connection that has the name.
    std::string ownerOf(const char* name) {
        sd_bus_message* answer = nullptr;
        const char* owner = "";
        if (sd_bus_call_method(bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                               "GetNameOwner", nullptr, &answer, "s", name) >= 0)
            sd_bus_message_read(answer, "s", &owner);
        const std::string copy = owner;
        sd_bus_message_unref(answer);
        return copy;
    }
    std::string activate() { return call("Activate", "a{sv}", 0); }
    std::string action(const char* word) { return call("ActivateAction", "sava{sv}", word, 0, 0); }

private:
    sd_bus* bus_ = nullptr;
};

/// A display with a session bus that knows how Velmo is started.
class ApplicationService : public SettingsSession {
protected:
    void SetUp() override {
        SettingsSession::SetUp();
        startWindowManager();
        std::filesystem::create_directory(home_ / "services");
        std::ofstream(home_ / "services" / "org.velmo.Velmo.service")
            << "[D-BUS Service]\nName=" << velmoName << "\nExec=" << velmoProgram << "\n";
        startSessionBus();
        writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}});
        launcher_ = std::make_unique<Launcher>(busAddress());
    }

    void startVelmoOnBus() {
        startVelmo();
        awaitName();
    }
    void awaitName() const {
        BusProgram bystander(busAddress());
        ASSERT_TRUE(eventually([&] { return bystander.isTaken(velmoName); }));
    }
    /// In order, by whoever it was started.
    void endVelmo() {
        EXPECT_EQ(launcher_->action("quit"), "");
        EXPECT_TRUE(eventually([&] { return !isThere(); }));
    }

    bool isThere() const { return x().selectionOwner("_VELMO_INSTANCE_S0") != XCB_WINDOW_NONE; }
    bool hasBar() const {
        const auto window = x().windowTitled("Velmo.Toggle");
        return window && x().isViewable(*window);
    }
    bool opensNoSettings() const {
        return stays([&] { return !settingsWindow(); }, milliseconds(700));
    }

    std::unique_ptr<Launcher> launcher_;
};

TEST_F(ApplicationService, IsStartedByTheBusOnceAndAskedForItsSettingsFromThenOn) {
    EXPECT_EQ(launcher_->activate(), "");
    EXPECT_TRUE(eventually([&] { return hasBar(); }));
    EXPECT_TRUE(opensNoSettings());
    EXPECT_EQ(launcher_->activate(), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
    endVelmo();
}

TEST_F(ApplicationService, ThatTheBusHasStartedForNothingOpensItsSettingsWhenActivated) {
    EXPECT_EQ(launcher_->callAt("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                "StartServiceByName", "su", velmoName, 0),
              "");
    ASSERT_TRUE(eventually([&] { return hasBar(); }));
    EXPECT_TRUE(opensNoSettings());
    EXPECT_EQ(launcher_->activate(), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
    endVelmo();
}

TEST_F(ApplicationService, IsStartedByAnActionThatIsCarriedOut) {
    EXPECT_EQ(launcher_->action("toggle"), "");
    ASSERT_TRUE(eventually([&] { return hasBar() && !dividerIsExpanded(); }));
    EXPECT_EQ(launcher_->activate(), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); })) << "it runs already";
    endVelmo();
}

TEST_F(ApplicationService, OpensItsSettingsWhereItWasStartedOtherwise) {
    startVelmoOnBus();
    EXPECT_EQ(launcher_->activate(), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
}

TEST_F(ApplicationService, OpensItsSettingsForFilesAndAddresses) {
    startVelmoOnBus();
    EXPECT_EQ(launcher_->call("Open", "asa{sv}", 1, "file:///etc/passwd", 0), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
}

TEST_F(ApplicationService, HasTheWindowsThatItsEntryTellsOf) {
    startVelmoOnBus();
    launcher_->activate();
    ASSERT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
    std::ifstream entry(desktopEntry);
    std::string windowClass;
    for (std::string line; std::getline(entry, line);) {
        if (line.starts_with("StartupWMClass="))
            windowClass = line.substr(line.find('=') + 1);
    }
    ASSERT_NE(windowClass, "");
    const std::string ending = std::string(1, '\0') + windowClass;
    const auto found = x().property(*settingsWindow(), "WM_CLASS");
    EXPECT_TRUE(found.ends_with(ending + std::string(1, '\0')) || found.ends_with(ending)) << found;
}

TEST_F(ApplicationService, ActionsAreTheCommands) {
    startVelmoOnBus();
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    EXPECT_EQ(launcher_->action("toggle"), "");
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_EQ(launcher_->action("toggle"), "");
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    EXPECT_FALSE(settingsWindow());
    EXPECT_EQ(launcher_->action("settings"), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
    EXPECT_EQ(launcher_->action("quit"), "");
    EXPECT_EQ(velmo().wait(milliseconds(5000)), 0);
}

TEST_F(ApplicationService, WhatIsNoActionDoesNothing) {
    startVelmoOnBus();
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    for (const char* word : {"", "Toggle", "toggle ", "--help", "5", "reopen"})
        EXPECT_EQ(launcher_->action(word), SD_BUS_ERROR_INVALID_ARGS) << word;
    EXPECT_EQ(launcher_->call("ActivateAction", "sava{sv}", "toggle", 1, "s", "twice", 0),
              SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(launcher_->call("ActivateAction", "s", "toggle"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(launcher_->call("ActivateAction", "uava{sv}", 5U, 0, 0), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(launcher_->call("Activate", "", 0), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(launcher_->call("Open", "a{sv}", 0), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(launcher_->call("Quit", "", 0), SD_BUS_ERROR_UNKNOWN_METHOD);
    EXPECT_EQ(launcher_->callAt(velmoName, "/", applicationInterface, "Activate", "a{sv}", 0),
              SD_BUS_ERROR_UNKNOWN_OBJECT);
    EXPECT_TRUE(stays([&] { return dividerIsExpanded() && !settingsWindow(); }, milliseconds(500)));
    EXPECT_EQ(velmo().wait(milliseconds(0)), std::nullopt);
}

/// Filters of the bus let through what is sent to the connection itself where they let one of its names be
/// spoken to, such as that with which icons are registered.
TEST_F(ApplicationService, ObeysWhoSpeaksToItsNameAndNobodyElse) {
    startVelmoOnBus();
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    const std::string number = launcher_->ownerOf(velmoName);
    ASSERT_TRUE(number.starts_with(':'));
    for (const std::string& other : {number, std::string("org.kde.StatusNotifierWatcher")}) {
        ASSERT_EQ(launcher_->ownerOf(other.c_str()), number);
        const auto call = [&](const char* member, const char* signature, auto... values) {
            return launcher_->callAt(other.c_str(), velmoPath, applicationInterface, member, signature,
                                     values...);
        };
        EXPECT_EQ(call("Activate", "a{sv}", 0), SD_BUS_ERROR_ACCESS_DENIED);
        EXPECT_EQ(call("Open", "asa{sv}", 1, "file:///etc/passwd", 0), SD_BUS_ERROR_ACCESS_DENIED);
        for (const char* word : {"toggle", "toggle-all", "settings", "panel", "quit"})
            EXPECT_EQ(call("ActivateAction", "sava{sv}", word, 0, 0), SD_BUS_ERROR_ACCESS_DENIED) << word;
    }
    EXPECT_TRUE(stays([&] { return dividerIsExpanded() && !settingsWindow(); }, milliseconds(700)));
    EXPECT_EQ(velmo().wait(milliseconds(0)), std::nullopt);
    EXPECT_EQ(launcher_->activate(), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
}

TEST_F(ApplicationService, HasTheNameOnABusThatComesAnew) {
    environment_["DBUS_SESSION_BUS_ADDRESS"] = Launcher::fullAddress(busAddress());
    startVelmoOnBus();
    launcher_.reset();
    stopSessionBus();
    startSessionBus();
    awaitName();
    launcher_ = std::make_unique<Launcher>(busAddress());
    EXPECT_EQ(launcher_->activate(), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
}

TEST_F(ApplicationService, RunsWithoutTheNameForAsLongAsAnotherHasIt) {
    auto other = std::make_unique<BusProgram>(busAddress());
    other->requestName(velmoName);
    startVelmo();
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_NE(launcher_->activate(), "") << "the other one does not know that";
    EXPECT_TRUE(opensNoSettings());
    other.reset();
    EXPECT_TRUE(eventually([&] { return launcher_->activate().empty() && settingsWindow(); }));
}

TEST_F(ApplicationService, KeepsItsName) {
    startVelmoOnBus();
    BusProgram other(busAddress());
    other.requestName(velmoName);
    EXPECT_EQ(launcher_->activate(), "");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
}

TEST_F(ApplicationService, LoadsNoToolkitAndLetsTheProgramSleep) {
    startVelmoOnBus();
    EXPECT_EQ(launcher_->action("toggle"), "");
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_TRUE(comesToRest(milliseconds(2000)));
    EXPECT_FALSE(hasLoaded("velmo-qt"));
    EXPECT_FALSE(hasLoaded("libQt6"));
}

}  // namespace

}  // namespace velmo::desktop
