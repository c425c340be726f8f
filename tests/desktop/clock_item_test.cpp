#include "built_files.h"
#include "desktop_session.h"
#include "process_figures.h"

#include <thread>
#include <utility>

namespace velmo::desktop {

namespace {

class ClockItem : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
    }

    void start(bool clockEnabled, const std::string& format = "HH:mm:ss") {
        environment_["TZ"] = "Asia/Tokyo";
        writeDefaults({{"hasCompletedFirstLaunch", true},
                       {"clockEnabled", clockEnabled},
                       {"clockFormat", format},
                       {"statusItemOrder", {"Velmo.Clock", "Velmo.Toggle", "Velmo.Divider"}}});
        startVelmo();
    }
    /// Lets it tick, and expects that it wakes for that alone.
    void expectOneWakeupASecond() {
        using std::chrono::steady_clock;
        const auto start = steady_clock::now();
        const SleepCounter sleeps(velmo().id());
        std::this_thread::sleep_for(milliseconds(6000));
        const long wakeups = sleeps.count();
        const auto seconds = std::chrono::duration<double>(steady_clock::now() - start).count();
        EXPECT_GE(wakeups, 5);
        EXPECT_LE(wakeups, static_cast<long>(seconds) + 1) << "in " << seconds << " seconds";
    }
    /// The same where each time takes several steps, for which its threads wait for each other and for the
    /// display: these follow each other at once.
    void expectOneBurstASecond() {
        using std::chrono::steady_clock;
        constexpr auto pause = milliseconds(60);
        const auto start = steady_clock::now();
        auto lastStep = start;
        const SleepCounter sleeps(velmo().id());
        long steps = 0;
        int bursts = 0;
        while (steady_clock::now() - start < milliseconds(6000)) {
            std::this_thread::sleep_for(milliseconds(5));
            if (steps == std::exchange(steps, sleeps.count()))
                continue;
            bursts += steady_clock::now() - lastStep > pause ? 1 : 0;
            lastStep = steady_clock::now();
        }
        EXPECT_GE(bursts, 5);
        EXPECT_LE(bursts, 7);
    }
    std::vector<std::uint32_t> picture() const {
        const auto place = x().area(*x().windowTitled("Velmo.Clock")).value_or(Area{});
        std::vector<std::uint32_t> pixels;
        for (int row = 6; row < 20; ++row) {
            for (int column = 0; column < place.width; ++column)
                pixels.push_back(x().pixel(place.x + column, place.y + row));
        }
        return pixels;
    }
};

TEST_F(ClockItem, BarWithoutOneLoadsNothingForItAndSleeps) {
    start(false);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    for (const char* library : {"libicu", "libpango", "velmo-dates", "velmo-text"})
        EXPECT_FALSE(hasLoaded(library)) << library;
    EXPECT_FALSE(x().windowTitled("Velmo.Clock"));
    ASSERT_TRUE(comesToRest());
    const SleepCounter sleeps(velmo().id());
    std::this_thread::sleep_for(milliseconds(2500));
    EXPECT_EQ(sleeps.count(), 0);
}

TEST_F(ClockItem, TicksInItsPlace) {
    start(true);
    ASSERT_TRUE(eventually([&] { return x().windowTitled("Velmo.Clock").has_value(); }));
    const auto clock = *x().windowTitled("Velmo.Clock");
    ASSERT_TRUE(eventually([&] { return x().isViewable(clock) && x().area(clock)->width > 40; }));
    const auto place = *x().area(clock);
    EXPECT_EQ(place.x + place.width, 1280 - 6);
    for (int second = 0; second < 3; ++second) {
        const auto before = picture();
        EXPECT_TRUE(eventually([&] { return picture() != before; }, milliseconds(3000)));
        EXPECT_EQ(*x().area(clock), place);
    }
}

TEST_F(ClockItem, WakesOnceASecondAndDrawsNothingNew) {
    start(true, "y");
    ASSERT_TRUE(eventually([&] { return hasLoaded("libpango"); }));
    ASSERT_TRUE(comesToRest());
    const auto pictureBefore = picture();
    expectOneWakeupASecond();
    EXPECT_EQ(picture(), pictureBefore);
}

TEST_F(ClockItem, WakesOnceASecondToShowTheNextOne) {
    start(true);
    ASSERT_TRUE(eventually([&] { return hasLoaded("libpango"); }));
    ASSERT_TRUE(comesToRest());
    expectOneWakeupASecond();
}

TEST_F(ClockItem, WakesOnceASecondWithItsCalendarOpen) {
    start(true);
    ASSERT_TRUE(eventually([&] {
        const auto window = x().windowTitled("Velmo.Clock");
        return window && x().area(*window)->width > 40;
    }));
    // Between two ticks.
    ASSERT_TRUE(comesToRest());
    click(*x().windowTitled("Velmo.Clock"));
    ASSERT_TRUE(eventually([&] {
        const auto window = x().windowTitled("Velmo.Popover");
        return window && x().isViewable(*window);
    }));
    movePointer(300, 400);
    ASSERT_TRUE(comesToRest());
    expectOneBurstASecond();
}

TEST_F(ClockItem, WakesNoMoreOftenOnceWindowsHaveBeenShown) {
    start(true);
    const auto calendar = [&] {
        const auto window = x().windowTitled("Velmo.Popover");
        return window && x().isViewable(*window);
    };
    ASSERT_TRUE(eventually([&] { return x().windowTitled("Velmo.Clock").has_value(); }));
    click(*x().windowTitled("Velmo.Clock"));
    ASSERT_TRUE(eventually(calendar));
    click(*x().windowTitled("Velmo.Clock"));
    ASSERT_TRUE(eventually([&] { return !calendar(); }));
    EXPECT_TRUE(hasLoaded("velmo-qt"));
    movePointer(300, 400);
    ASSERT_TRUE(comesToRest());
    expectOneWakeupASecond();
}

TEST_F(ClockItem, WakesOnceASecondAfterTheSettingsWereOpen) {
    startWindowManager();
    start(true);
    ASSERT_TRUE(eventually([&] { return x().windowTitled("Velmo.Clock").has_value(); }));
    // Between two ticks.
    ASSERT_TRUE(comesToRest());
    outputOf({velmoProgram}, environment_);
    ASSERT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
    closeWindow(*settingsWindow());
    ASSERT_TRUE(eventually([&] { return !settingsWindow(); }));
    // What the permissions are is looked at for ever.
    ASSERT_TRUE(comesToRest());
    expectOneBurstASecond();
}

}  // namespace

}  // namespace velmo::desktop
