#include "linux/dbus/session_bus.h"

#include "bus_session.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

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

/// The loop's own, at the beginning and at the end.
constexpr int wakeupsOfRest = 3;

class Session : public BusSession {
protected:
    /// Asleep as the program is: nothing but what the loop itself waits for.
    int wakeupsIn(Seconds time) {
        int wakeups = 0;
        const auto counting = loop_.addBeforeSleep([&] { ++wakeups; });
        bool isOver = false;
        loop_.schedule(time, [&] {
            isOver = true;
            loop_.stop();
        });
        loop_.run();
        EXPECT_TRUE(isOver);
        return wakeups;
    }
};

TEST_F(Session, AddressComesFromTheEnvironment) {
    const SavedVariable address("DBUS_SESSION_BUS_ADDRESS");
    const SavedVariable folder("XDG_RUNTIME_DIR");
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/some/where", 1);
    EXPECT_EQ(dbus::sessionBusAddress(), "unix:path=/some/where");
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/a,guid=0123;unix:abstract=b,guid=4567,c=d", 1);
    EXPECT_EQ(dbus::sessionBusAddress(), "unix:path=/a;unix:abstract=b,c=d") << "its identity changes";
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

TEST_F(Session, AStartByTheBusIsToldOnceAndToNobodyElse) {
    EXPECT_FALSE(dbus::takeStartByBus());
    setenv("DBUS_STARTER_BUS_TYPE", "system", 1);
    EXPECT_FALSE(dbus::takeStartByBus());
    setenv("DBUS_STARTER_BUS_TYPE", "session", 1);
    setenv("DBUS_STARTER_ADDRESS", bus_->address().c_str(), 1);
    EXPECT_TRUE(dbus::takeStartByBus());
    EXPECT_FALSE(dbus::takeStartByBus());
    EXPECT_EQ(std::getenv("DBUS_STARTER_ADDRESS"), nullptr);
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

/// A bus that is looked for in a folder of its own, in which there is none yet.
class SessionInAFolder : public Session {
protected:
    void SetUp() override {
        Session::SetUp();
        runFolder_ = folder_ / "run";
        std::filesystem::create_directory(runFolder_);
        session_.start("unix:path=" + (runFolder_ / "bus").string());
    }

    /// Attempts are far between then.
    void waitInVain() {
        runFor(7);
        EXPECT_EQ(timesUp_, 0);
    }

    void expectToBeFoundWhenItComes() {
        desktop::PrivateBus bus(runFolder_);
        bus.start();
        EXPECT_TRUE(until([&] { return timesUp_ > 0; }, 3));
    }

    std::filesystem::path runFolder_;
    dbus::SessionBus session_{loop_, [this](const auto&) { ++timesUp_; }, [] {}};
};

TEST_F(SessionInAFolder, ThatIsReplacedAtFirstIsFound) {
    std::filesystem::remove(runFolder_);
    std::filesystem::create_directory(runFolder_);
    waitInVain();
    expectToBeFoundWhenItComes();
}

TEST_F(SessionInAFolder, ThatIsReplacedLaterIsFound) {
    waitInVain();
    std::filesystem::remove(runFolder_);
    runFor(0.5);
    std::filesystem::create_directory(runFolder_);
    expectToBeFoundWhenItComes();
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
    EXPECT_LE(wakeupsIn(1), wakeupsOfRest);
}

TEST_F(Session, ABusThatHasComeLateIsNoReasonToWatchItsFolder) {
    bus_->stop();
    std::filesystem::remove(folder_ / "bus");
    startHost();
    bus_->start();
    ASSERT_TRUE(until([&] { return host_ != nullptr; }));
    runFor(0.5);
    std::thread others([this] {
        for (int count = 0; count < 10; ++count) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            std::ofstream(folder_ / std::to_string(count)) << "of somebody else";
        }
    });
    EXPECT_LE(wakeupsIn(1), wakeupsOfRest);
    others.join();
}

}  // namespace

}  // namespace velmo
