#include "platform/macos/doubles/double_system.h"
#include "scenarios/scenario_test.h"

#include <chrono>
#include <functional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace velmo::macos {
namespace {

class ScenarioDesktopOfMacos : public ScenarioTest {};

TEST_F(ScenarioDesktopOfMacos, ForgetsWhoWaitedForAMenuThatIsNotThere) {
    run([&] {
        EXPECT_THROW(titlesAt(clock), std::logic_error);
        EXPECT_FALSE(doubles::system().whileMenuIsOpen);
    });
}

TEST_F(ScenarioDesktopOfMacos, CountsFromWhateverWasDoneLast) {
    const std::pair<const char*, std::function<void()>> actions[] = {
        {"click", [&] { desktop_->click(toggle); }},
        {"store", [&] { desktop_->store("clockEnabled", false); }},
        {"capture", [&] { desktop_->setMayCapture(true); }},
        {"trust", [&] { desktop_->setTrusted(true); }},
        {"login", [&] { desktop_->setLoginError(""); }},
        {"icons", [&] { desktop_->setHiddenIcons({}); }},
    };
    constexpr Seconds limit = 0.8;
    run([&] {
        for (const auto& [name, act] : actions) {
            // Long enough for the limit, were it counted.
            std::this_thread::sleep_for(std::chrono::duration<double>(limit / 2));
            act();
            EXPECT_FALSE(desktop_->happensAfter(limit, [] { return true; })) << name;
        }
    });
}

}  // namespace
}  // namespace velmo::macos
