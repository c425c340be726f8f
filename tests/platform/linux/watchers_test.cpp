#include "bus_session.h"
#include "child_process.h"

#include <sys/types.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <thread>

namespace velmo {

namespace {

using desktop::BusProgram;

constexpr const char* usualItem = "/StatusNotifierItem";
constexpr const char* watcherObject = "/StatusNotifierWatcher";
constexpr const char* kdeWatcher = "org.kde.StatusNotifierWatcher";

class Watchers : public BusSession {
protected:
    void SetUp() override {
        BusSession::SetUp();
        startHost();
    }

    /// Another program that plays the watcher, and knows these items.
    std::unique_ptr<BusProgram> otherWatcher(const std::string& listedItem = {},
                                             const std::string& name = kdeWatcher) const {
        auto watcher = program();
        watcher->addItem(watcherObject, "none", name);
        watcher->setProperty(watcherObject, "RegisteredStatusNotifierItems", [listedItem](auto* message) {
            return listedItem.empty() ? sd_bus_message_append(message, "v", "as", 0)
                                      : sd_bus_message_append(message, "v", "as", 1, listedItem.c_str());
        });
        watcher->requestName(name);
        return watcher;
    }
    /// So many items that the owner has besides.
    void registerInTheNameOf(BusProgram& owner, int count, BusProgram& registrant) {
        for (int index = 0; index < count; ++index) {
            const auto path = "/Item" + std::to_string(registered_++);
            owner.addItem(path, "one of many");
            registrant.registerItem(owner.name() + path);
        }
    }
    /// A program that leaves room for so many items, and never says what its own are.
    std::unique_ptr<BusProgram> fillBut(int room) {
        auto greedy = program();
        greedy->keepSilentOn("GetAll");
        registerInTheNameOf(*greedy, 1000 - room, *greedy);
        EXPECT_TRUE(until([&] { return greedy->callsOf("GetAll") >= 1000 - room; }, 20));
        return greedy;
    }
    /// The host fills with what is said to be another program's items, which that one has not registered.
    void fillInTheNameOf(BusProgram& victim, BusProgram& registrant) {
        victim.keepSilentOn("GetAll");
        registerInTheNameOf(victim, 1100, registrant);
        ASSERT_TRUE(until([&] { return victim.callsOf("GetAll") >= 1000; }, 20));
        victim.answerAgain("GetAll");
    }
    void expectRoomForTheNext(BusProgram& victim) {
        victim.addItem("/Next", "next");
        victim.registerItem("/Next");
        EXPECT_TRUE(until([&] { return item("next") != nullptr; }));
        const auto late = programWithItem("late");
        EXPECT_NE(item("next"), nullptr);
    }

private:
    int registered_ = 0;
};

/// The parameter is the name of the watcher in one family of names.
class WatchersOfEachFamily : public Watchers, public testing::WithParamInterface<const char*> {};

TEST_P(WatchersOfEachFamily, YieldToAnotherWatcherAndFollowIt) {
    const auto mine = programWithItem("mine");
    auto watcher = otherWatcher({}, GetParam());
    EXPECT_TRUE(until([&] { return watcher->callsOf("RegisterStatusNotifierHost") == 1; }))
        << "we are a host of the new watcher";
    const auto other = program();
    other->addItem(usualItem, "theirs");
    const auto tell = [&](const std::string& member) {
        watcher->emit(watcherObject, GetParam(), member, [&](auto* message) {
            return sd_bus_message_append(message, "s", (other->name() + usualItem).c_str());
        });
    };
    tell("StatusNotifierItemRegistered");
    ASSERT_TRUE(untilItems(2));
    EXPECT_NE(item("theirs"), nullptr);
    EXPECT_NE(item("mine"), nullptr) << "it is still there";
    tell("StatusNotifierItemUnregistered");
    EXPECT_TRUE(untilItems(1));
    watcher.reset();
    runFor(0.1);
    const auto later = program();
    later->addItem(usualItem, "later");
    later->registerItem(usualItem, GetParam());
    EXPECT_TRUE(until([&] { return item("later") != nullptr; })) << "we are the watcher again";
}

INSTANTIATE_TEST_SUITE_P(Both, WatchersOfEachFamily,
                         testing::Values(kdeWatcher, "org.freedesktop.StatusNotifierWatcher"),
                         [](const auto& family) { return family.index == 0 ? "Kde" : "Freedesktop"; });

TEST_F(Watchers, ListsItemsForOtherHosts) {
    const auto owner = programWithItem("listed");
    std::string output;
    std::atomic<bool> done = false;
    std::thread asking([&] {
        output = desktop::outputOf({"busctl", "--user", "get-property", "org.kde.StatusNotifierWatcher",
                                    "/StatusNotifierWatcher", "org.kde.StatusNotifierWatcher",
                                    "RegisteredStatusNotifierItems", "IsStatusNotifierHostRegistered"},
                                   {{"DBUS_SESSION_BUS_ADDRESS", bus_->address()}});
        done = true;
    });
    EXPECT_TRUE(until([&] { return done.load(); }));
    asking.join();
    EXPECT_EQ(output, "as 1 \"" + owner->name() + "/StatusNotifierItem\"\nb true\n");
}

TEST_F(Watchers, ManyItemsComeAndGo) {
    auto owner = program();
    constexpr std::size_t count = 500;
    for (std::size_t index = 0; index < count; ++index) {
        owner->addItem("/Item" + std::to_string(index), "item" + std::to_string(index));
        owner->registerItem("/Item" + std::to_string(index));
    }
    EXPECT_TRUE(until([&] { return items_.size() == count; }, 20));
    owner.reset();
    EXPECT_TRUE(untilItems(0));
}

TEST_F(Watchers, MalformedRegistrationsCostNothing) {
    const auto owner = program();
    for (const auto* text : {"", "/", "no dots", "org.example.Nobody", "//", ":1.99999", "a b/c"})
        owner->registerItem(text);
    const auto good = programWithItem("good");
    EXPECT_TRUE(untilItems(1));
}

/// A program may name the service of another one, to which it has no way of its own.
TEST_F(Watchers, WhoeverIsRegisteredByAnotherIsOnlyAsked) {
    const auto victim = program();
    victim->addObject("/Victim");
    const auto stranger = program();
    stranger->registerItem(victim->name() + "/Victim");
    ASSERT_TRUE(until([&] { return victim->callsOf("GetAll") > 0; }));
    runFor(0.5);
    for (const auto& call : victim->calls())
        EXPECT_TRUE(call.starts_with("GetAll ")) << call;
}

TEST_F(Watchers, ARegistrationStartsNobody) {
    stopHost();
    const auto services = folder_ / "services";
    const auto mark = folder_ / "started";
    std::filesystem::create_directory(services);
    std::ofstream(services / "org.example.Sleeper.service")
        << "[D-BUS Service]\nName=org.example.Sleeper\nExec=/usr/bin/touch " << mark.string() << "\n";
    bus_->stop();
    bus_->start();
    startHost();
    const auto stranger = program();
    stranger->registerItem("org.example.Sleeper");
    stranger->registerItem("org.example.Sleeper/Item");
    runFor(0.5);
    EXPECT_FALSE(std::filesystem::exists(mark));
    desktop::outputOf({"dbus-send", "--session", "--dest=org.example.Sleeper", "/", "org.example.Any.Call"},
                      {{"DBUS_SESSION_BUS_ADDRESS", bus_->address()}});
    EXPECT_TRUE(until([&] { return std::filesystem::exists(mark); })) << "others start it";
}

TEST_F(Watchers, AnotherOneLearnsOfAHostUnderANameOfItsOwn) {
    const auto watcher = otherWatcher();
    ASSERT_TRUE(until([&] { return watcher->callsOf("RegisterStatusNotifierHost") == 1; }));
    const std::string host = "org.kde.StatusNotifierHost-" + std::to_string(getpid());
    EXPECT_TRUE(watcher->wasCalled("RegisterStatusNotifierHost " + host)) << watcher->calls().back();
    EXPECT_TRUE(watcher->isTaken(host));
}

TEST_F(Watchers, BesideOneThatRunsBeforeItsItemsAreShownAndItIsFollowedWhenItEnds) {
    stopHost();
    const auto other = program();
    other->addItem("/Theirs", "theirs");
    auto watcher = otherWatcher(other->name() + "/Theirs");
    startHost();
    ASSERT_TRUE(untilItems(1));
    EXPECT_NE(item("theirs"), nullptr);
    EXPECT_EQ(watcher->callsOf("RegisterStatusNotifierHost"), 1);
    other->registerItem(usualItem);
    EXPECT_TRUE(until([&] { return watcher->callsOf("RegisterStatusNotifierItem") == 1; }))
        << "the name stays with the one that had it";
    watcher.reset();
    runFor(0.1);
    EXPECT_NE(item("theirs"), nullptr) << "an item does not leave with the watcher";
    const auto later = programWithItem("later");
    EXPECT_EQ(items_.size(), 2U) << "we are the watcher now";
}

TEST_F(Watchers, AnotherOneThatIsBusyAtFirstIsAskedAgainInGrowingPauses) {
    stopHost();
    const auto other = program();
    other->addItem("/Theirs", "theirs");
    auto watcher = otherWatcher(other->name() + "/Theirs");
    watcher->keepSilentOn("Get");
    startHost();
    std::vector<std::chrono::steady_clock::time_point> times;
    for (int asked = 1; asked <= 3; ++asked) {
        ASSERT_TRUE(until([&] { return watcher->callsOf("Get") == asked; }));
        times.push_back(std::chrono::steady_clock::now());
    }
    // With the three seconds in which it may answer.
    const std::chrono::duration<double> first = times[1] - times[0];
    const std::chrono::duration<double> second = times[2] - times[1];
    EXPECT_NEAR(first.count(), 4, 0.5);
    EXPECT_NEAR(second.count(), 5, 0.5);
    EXPECT_TRUE(items_.empty());
    watcher->answerAgain("Get");
    ASSERT_TRUE(untilItems(1));
    EXPECT_NE(item("theirs"), nullptr);
    EXPECT_EQ(watcher->callsOf("Get"), 4);
    runFor(3);
    EXPECT_EQ(watcher->callsOf("Get"), 4) << "it has answered";
    EXPECT_EQ(watcher->callsOf("RegisterStatusNotifierHost"), 1) << "what it was told was in its queue";
}

TEST_F(Watchers, AnotherOneThatHasItsNameBeforeItsObjectIsAskedAgain) {
    stopHost();
    const auto other = program();
    other->addItem("/Theirs", "theirs");
    auto watcher = otherWatcher(other->name() + "/Theirs");
    watcher->refuse("Get", SD_BUS_ERROR_UNKNOWN_OBJECT);
    watcher->refuse("RegisterStatusNotifierHost", SD_BUS_ERROR_UNKNOWN_OBJECT);
    startHost();
    ASSERT_TRUE(until([&] { return watcher->callsOf("Get") == 1; }));
    EXPECT_EQ(watcher->callsOf("RegisterStatusNotifierHost"), 1);
    runFor(0.9);
    EXPECT_EQ(watcher->callsOf("Get"), 1);
    watcher->answerAgain("Get");
    watcher->answerAgain("RegisterStatusNotifierHost");
    ASSERT_TRUE(untilItems(1));
    EXPECT_NE(item("theirs"), nullptr);
    EXPECT_EQ(watcher->callsOf("RegisterStatusNotifierHost"), 2) << "the first one was lost";
}

TEST_F(Watchers, AProgramThatFillsTheHostLeavesRoomForOthers) {
    const auto greedy = program();
    greedy->keepSilentOn("GetAll");
    for (int index = 0; index < 1100; ++index) {
        greedy->addItem("/Item" + std::to_string(index), "greedy");
        greedy->registerItem("/Item" + std::to_string(index));
    }
    ASSERT_TRUE(until([&] { return greedy->callsOf("GetAll") >= 1000; }, 20));
    const auto modest = programWithItem("modest");
    const auto second = programWithItem("second");
    EXPECT_EQ(items_.size(), 2U);
}

TEST_F(Watchers, AProgramThatFillsTheHostInAnothersNameIsTheOneThatGivesWay) {
    const auto victim = programWithItem("victim");
    const auto greedy = program();
    fillInTheNameOf(*victim, *greedy);
    expectRoomForTheNext(*victim);
}

TEST_F(Watchers, WhatAProgramRegistersInAnothersNameIsNotThatOnesOnceItHasGone) {
    const auto victim = programWithItem("victim");
    auto greedy = program();
    fillInTheNameOf(*victim, *greedy);
    greedy.reset();
    runFor(0.2);
    expectRoomForTheNext(*victim);
}

TEST_F(Watchers, AProgramThatFillsTheHostByWayOfAnotherWatcherLeavesRoomForOthers) {
    const auto watcher = otherWatcher();
    ASSERT_TRUE(until([&] { return watcher->callsOf("RegisterStatusNotifierHost") == 1; }));
    const auto greedy = program();
    greedy->keepSilentOn("GetAll");
    const auto tell = [&](const BusProgram& owner, const std::string& path) {
        watcher->emit(watcherObject, kdeWatcher, "StatusNotifierItemRegistered", [&](auto* message) {
            return sd_bus_message_append(message, "s", (owner.name() + path).c_str());
        });
    };
    for (int index = 0; index < 1100; ++index) {
        const auto path = "/Item" + std::to_string(index);
        greedy->addItem(path, "one of many");
        tell(*greedy, path);
    }
    ASSERT_TRUE(until([&] { return greedy->callsOf("GetAll") >= 1000; }, 20));
    const auto modest = program();
    modest->addItem(usualItem, "modest");
    tell(*modest, usualItem);
    EXPECT_TRUE(untilItems(1));
}

/// The parameter is what the item's own program registers.
class WatchersOfItemsTwiceRegistered : public Watchers, public testing::WithParamInterface<const char*> {};

// A name of theirs is what most programs register.
INSTANTIATE_TEST_SUITE_P(By, WatchersOfItemsTwiceRegistered, testing::Values(usualItem, "org.example.Victim"),
                         [](const auto& by) { return by.index == 0 ? "Path" : "Name"; });

TEST_P(WatchersOfItemsTwiceRegistered, AnItemIsItsProgramsThoughAnotherHasRegisteredItBefore) {
    const auto greedy = fillBut(2);
    const auto victim = program();
    victim->addItem(usualItem, "victim");
    victim->requestName("org.example.Victim");
    greedy->registerItem(victim->name() + usualItem);
    ASSERT_TRUE(untilItems(1));
    victim->registerItem(GetParam());
    runFor(0.2);
    const auto late = programWithItem("late");
    const auto last = programWithItem("last");
    EXPECT_EQ(items_.size(), 3U);
    EXPECT_NE(item("victim"), nullptr);
}

TEST_F(Watchers, AnItemIsItsProgramsThoughItRegistersBeforeItIsKnownWhoItIs) {
    const auto greedy = fillBut(1);
    const auto victim = program();
    victim->addItem(usualItem, "victim");
    victim->requestName("org.example.Victim");
    const auto another = program();
    another->addItem(usualItem, "another");
    // All arrive before the bus says whose name that is, and the last one finds the host full.
    greedy->registerItem("org.example.Victim");
    ASSERT_TRUE(greedy->isTaken("org.example.Victim")) << "the bus has what was sent before";
    victim->registerItem("org.example.Victim");
    ASSERT_TRUE(victim->isTaken("org.example.Victim"));
    another->registerItem(usualItem);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    ASSERT_TRUE(untilItems(2));
    const auto late = programWithItem("late");
    EXPECT_EQ(items_.size(), 3U);
    EXPECT_NE(item("victim"), nullptr);
}

TEST_F(Watchers, AnItemDoesNotGoWithANameByWhichAnotherHasRegisteredIt) {
    const auto victim = program();
    victim->addItem(usualItem, "victim");
    victim->requestName("org.example.Victim");
    const auto stranger = program();
    stranger->registerItem("org.example.Victim");
    ASSERT_TRUE(untilItems(1));
    victim->registerItem(usualItem);
    ASSERT_TRUE(until([&] { return victim->callsOf("GetAll") == 2; })) << "under two names it is one";
    ASSERT_TRUE(untilItems(1));
    victim->releaseName("org.example.Victim");
    runFor(0.2);
    EXPECT_NE(item("victim"), nullptr);
}

TEST_F(Watchers, WhatOnesThatHaveGoneHaveRegisteredGivesWayFirst) {
    const auto silent = program();
    silent->keepSilentOn("GetAll");
    for (int count = 0; count < 60; ++count) {
        const auto other = program();
        registerInTheNameOf(*silent, 20, *other);
    }
    ASSERT_TRUE(until([&] { return silent->callsOf("GetAll") >= 1000; }, 20));
    runFor(0.2);
    const auto late = programWithItem("late");
    EXPECT_EQ(items_.size(), 1U);
}

TEST_F(Watchers, ManyThatFillTheHostLeaveWhatIsThere) {
    const auto pair = programWithItem("first");
    pair->addItem("/Second", "second");
    pair->registerItem("/Second");
    ASSERT_TRUE(untilItems(2));
    std::vector<std::unique_ptr<desktop::BusProgram>> many;
    for (int index = 0; index < 60; ++index) {
        many.push_back(program());
        many.back()->keepSilentOn("GetAll");
        for (int item = 0; item < 20; ++item) {
            many.back()->addItem("/Item" + std::to_string(item), "one of many");
            many.back()->registerItem("/Item" + std::to_string(item));
        }
    }
    const auto asked = [&] {
        std::size_t calls = 0;
        for (const auto& one : many)
            calls += one->callsOf("GetAll");
        return calls;
    };
    ASSERT_TRUE(until([&] { return asked() >= 998; }, 20));
    runFor(0.5);
    EXPECT_EQ(asked(), 998U) << "the last ones go without";
    EXPECT_EQ(items_.size(), 2U);
    many.erase(many.begin());
    const auto late = programWithItem("late");
    EXPECT_EQ(items_.size(), 3U) << "there is room again";
}

TEST_F(Watchers, AnItemSurvivesAStallInWhichTheBusHasAnswered) {
    const auto owner = program();
    owner->addItem(usualItem, "stalled");
    owner->requestName("org.example.Stalled");
    owner->registerItem("org.example.Stalled");
    const auto unique = program();
    unique->addItem(usualItem, "unique");
    unique->registerItem(unique->name());
    // The registrations have arrived, and the bus answers what they make us ask no sooner than we stall.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    kill(bus_->id(), SIGSTOP);
    runFor(0.1);
    kill(bus_->id(), SIGCONT);
    std::this_thread::sleep_for(std::chrono::milliseconds(3200));
    ASSERT_TRUE(untilItems(2));
    ASSERT_NE(item("stalled"), nullptr);
    for (const auto* shown : items_)
        EXPECT_EQ(shown->processIdentifier(), getpid()) << shown->application();
}

}  // namespace

}  // namespace velmo
