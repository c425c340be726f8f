#include "linux/dbus/session_bus.h"

#include "bus_session.h"

#include <cstdlib>
#include <fstream>

namespace velmo {

namespace {

/// Of this test's environment, as it was before.
class SavedVariable {
public:
    explicit SavedVariable(const char* name) : name_(name) {
        if (const char* value = std::getenv(name))
            value_ = value;
    }
    ~SavedVariable() {
        if (value_)
            setenv(name_, value_->c_str(), 1);
        else
            unsetenv(name_);
    }
    SavedVariable(const SavedVariable&) = delete;
    SavedVariable& operator=(const SavedVariable&) = delete;

private:
    const char* name_;
    std::optional<std::string> value_;
};

class Session : public BusSession {};

TEST_F(Session, AddressComesFromTheEnvironment) {
    const SavedVariable address("DBUS_SESSION_BUS_ADDRESS");
    const SavedVariable folder("XDG_RUNTIME_DIR");
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/some/where", 1);
    EXPECT_EQ(dbus::sessionBusAddress(), "unix:path=/some/where");
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    EXPECT_EQ(dbus::sessionBusAddress(), std::nullopt);
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    setenv("XDG_RUNTIME_DIR", folder_.c_str(), 1);
    EXPECT_EQ(dbus::sessionBusAddress(), bus_->address()) << "where sessions usually have it";
    bus_->stop();
    std::filesystem::remove(folder_ / "bus");
    EXPECT_EQ(dbus::sessionBusAddress(), bus_->address()) << "it may come later";
    setenv("XDG_RUNTIME_DIR", "nowhere", 1);
    EXPECT_EQ(dbus::sessionBusAddress(), std::nullopt);
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(dbus::sessionBusAddress(), std::nullopt);
}

TEST_F(Session, WithoutAnAddressNothingIsDone) {
    int times = 0;
    dbus::SessionBus session(
        loop_, [&](const auto&) { ++times; }, [&] { ++times; });
    session.start(std::nullopt);
    session.start("no address at all");
    runFor(0.5);
    EXPECT_EQ(times, 0);
}

TEST_F(Session, ABusThatIsAbsentAtFirstIsFoundWhenItComes) {
    bus_->stop();
    std::filesystem::remove(folder_ / "bus");
    startHost();
    runFor(0.5);
    EXPECT_EQ(timesUp_, 0);
    bus_->start();
    EXPECT_TRUE(until([&] { return timesUp_ >= 1 && host_; }));
}

TEST_F(Session, ABusIsFoundInAFolderThatIsReplacedAtFirst) {
    const auto folder = folder_ / "run";
    std::filesystem::create_directory(folder);
    int timesUp = 0;
    dbus::SessionBus session(
        loop_, [&](const auto&) { ++timesUp; }, [] {});
    session.start("unix:path=" + (folder / "bus").string());
    std::filesystem::remove(folder);
    std::filesystem::create_directory(folder);
    // Attempts are far between by now.
    runFor(7);
    EXPECT_EQ(timesUp, 0);
    desktop::PrivateBus bus(folder);
    bus.start();
    EXPECT_TRUE(until([&] { return timesUp > 0; }, 3));
}

TEST_F(Session, ABusIsFoundInAFolderThatIsReplacedLater) {
    const auto folder = folder_ / "run";
    std::filesystem::create_directory(folder);
    int timesUp = 0;
    dbus::SessionBus session(
        loop_, [&](const auto&) { ++timesUp; }, [] {});
    session.start("unix:path=" + (folder / "bus").string());
    runFor(7);
    EXPECT_EQ(timesUp, 0);
    std::filesystem::remove(folder);
    runFor(0.5);
    std::filesystem::create_directory(folder);
    desktop::PrivateBus bus(folder);
    bus.start();
    EXPECT_TRUE(until([&] { return timesUp > 0; }, 3));
}

TEST_F(Session, AServerThatNeverAnswersBlocksNothing) {
    const auto file = folder_ / "mute";
    const auto mute =
        desktop::ChildProcess({"/usr/bin/python3", "-c",
                               "import socket,sys,time\n"
                               "s=socket.socket(socket.AF_UNIX);s.bind(sys.argv[1]);s.listen()\n"
                               "time.sleep(60)",
                               file.string()},
                              {});
    ASSERT_TRUE(until([&] { return std::filesystem::exists(file); }));
    dbus::SessionBus session(
        loop_,
        [&](const auto& bus) {
            bus->send({"a.b", "/a", "a.b", "C"});
        },
        [] {});
    const auto start = std::chrono::steady_clock::now();
    session.start("unix:path=" + file.string());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
    bool ran = false;
    loop_.schedule(0.05, [&] { ran = true; });
    EXPECT_TRUE(until([&] { return ran; }, 1));
}

TEST_F(Session, ARestingConnectionWakesNobody) {
    startHost();
    runFor(0.5);
    int wakeups = 0;
    const auto counting = loop_.addBeforeSleep([&] { ++wakeups; });
    // Asleep as the program is: nothing but what the loop itself waits for.
    bool over = false;
    loop_.schedule(1, [&] {
        over = true;
        loop_.stop();
    });
    loop_.run();
    EXPECT_TRUE(over);
    EXPECT_LE(wakeups, 3);
}

}  // namespace

}  // namespace velmo
