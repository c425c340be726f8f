#include "platform/macos/doubles/double_system.h"
#include "scenarios/scenario_test.h"

#include <stdexcept>

namespace velmo::macos {
namespace {

class ScenarioDesktopOfMacos : public ScenarioTest {};

TEST_F(ScenarioDesktopOfMacos, ForgetsWhoWaitedForAMenuThatIsNotThere) {
    run([&] {
        EXPECT_THROW(titlesAt(clock), std::logic_error);
        EXPECT_FALSE(doubles::system().whileMenuIsOpen);
    });
}

}  // namespace
}  // namespace velmo::macos
