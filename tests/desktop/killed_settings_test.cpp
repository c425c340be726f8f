#include "settings_by_keyboard.h"

#include <iterator>
#include <random>
#include <thread>

namespace velmo::desktop {

namespace {

/// The slider of the Hiding tab, which is written to the file at each step.
class KilledSettings : public SettingsByKeyboard, public testing::WithParamInterface<unsigned> {
protected:
    void goToSlider() {
        goToTab(1);
        next();
        next();
    }
    /// Steps it to and fro until the program has gone.
    ChildProcess moveSlider() const {
        std::vector<std::string> command = {"xdotool", "key", "--delay", "4"};
        for (int round = 0; round < 60; ++round) {
            command.insert(command.end(), 5, "Right");
            command.insert(command.end(), 5, "Left");
        }
        return run(command);
    }
    std::size_t filesBeside() const {
        const std::filesystem::directory_iterator files(defaultsFile().parent_path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }
    std::filesystem::file_time_type written() const {
        return std::filesystem::last_write_time(defaultsFile());
    }
};

TEST_P(KilledSettings, AreWholeWheneverTheProgramIsKilled) {
    constexpr int kills = 25;
    std::mt19937 random(GetParam());
    std::uniform_int_distribution<int> milli(0, 120);
    const auto order = readDefaults()["statusItemOrder"];
    std::filesystem::permissions(defaultsFile(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    for (int round = 0; round < kills; ++round) {
        if (round > 0) {
            startVelmo();
            openSettings();
            ASSERT_TRUE(eventually([&] { return x().keyboardOwner() == *settingsWindow(); })) << round;
        }
        goToSlider();
        const auto before = written();
        auto slider = moveSlider();
        ASSERT_TRUE(eventually([&] { return written() != before; })) << round;
        std::this_thread::sleep_for(milliseconds(milli(random)));
        velmo().signal(SIGKILL);
        EXPECT_FALSE(slider.wait(milliseconds(0))) << "it would still move";
        ASSERT_TRUE(velmo().wait(milliseconds(5000)).has_value());
        slider.end();
        // One that it held would go on repeating.
        xdotool({"keyup", "Right", "keyup", "Left"});
        const auto stored = nlohmann::json::parse(textOf(defaultsFile()), nullptr, false);
        ASSERT_TRUE(stored.is_object()) << "round " << round;
        EXPECT_EQ(stored["hasCompletedFirstLaunch"], true);
        EXPECT_EQ(stored["statusItemOrder"], order);
        const double delay = stored.value("rehideDelay", 5.0);
        EXPECT_TRUE(delay >= 1 && delay <= 60) << delay;
        ASSERT_LE(filesBeside(), 2U) << "round " << round;
        EXPECT_EQ(std::filesystem::status(defaultsFile()).permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, KilledSettings, testing::Values(20261121U, 20261122U),
                         [](const auto& seed) { return std::to_string(seed.param); });

}  // namespace

}  // namespace velmo::desktop
