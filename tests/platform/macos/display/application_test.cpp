#include "macos/desktop/macos_application.h"
#include "macos/services/macos_run_loop.h"
#include "platform/macos/display/display_test.h"

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace velmo::macos {
namespace {

class NotingDelegate : public ApplicationDelegate {
public:
    explicit NotingDelegate(std::function<void()> launched) : launched_(std::move(launched)) {}
    void applicationDidFinishLaunching() override { launched_(); }
    bool applicationShouldHandleReopen(bool /*hasVisibleWindows*/) override { return false; }
    void applicationPerform(ApplicationCommand /*command*/) override {}

private:
    std::function<void()> launched_;
};

/// Ends the process by `terminate` where everything has happened in its order, and otherwise with other
/// codes.
[[noreturn]] void runAndTerminate() {
    MacosApplication application;
    MacosRunLoop loop;
    std::vector<std::string> done;
    NotingDelegate delegate([&] {
        done.emplace_back("launched");
        loop.post([&] { done.emplace_back("posted"); });
        loop.schedule(0.05, [&] {
            if (done != std::vector<std::string>{"launched", "posted"})
                std::_Exit(2);
            application.terminate();
        });
    });
    application.setDelegate(&delegate);
    application.run();
    std::_Exit(3);
}

TEST_F(DisplayTest, TheApplicationTellsThatItHasLaunchedTurnsTheLoopAndEndsTheProcess) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(runAndTerminate(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace velmo::macos
