#include "desktop_session.h"

#include <fstream>
#include <thread>

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
    std::string processFile(const std::string& name) {
        std::ifstream stream("/proc/" + std::to_string(velmo().id()) + "/" + name);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    bool hasLoaded(const std::string& library) {
        return processFile("maps").find(library) != std::string::npos;
    }
    int sleeps() {
        const std::string name = "\nvoluntary_ctxt_switches:";
        const auto status = processFile("status");
        return std::stoi(status.substr(status.find(name) + name.size()));
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
    std::this_thread::sleep_for(milliseconds(500));
    const int before = sleeps();
    std::this_thread::sleep_for(milliseconds(2500));
    EXPECT_LE(sleeps() - before, 1);
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
    std::this_thread::sleep_for(milliseconds(500));
    const auto pictureBefore = picture();
    const int before = sleeps();
    std::this_thread::sleep_for(milliseconds(4000));
    const int wakeups = sleeps() - before;
    EXPECT_GE(wakeups, 3);
    EXPECT_LE(wakeups, 6);
    EXPECT_EQ(picture(), pictureBefore);
}

}  // namespace

}  // namespace velmo::desktop
