#include <gtest/gtest.h>

#include <unistd.h>
#include <array>
#include <cstdlib>
#include <filesystem>

namespace {

/// What GNUstep reads of its surroundings it reads before `main`, so that the program starts once more in
/// those that the tests count on: a home of their own, a time zone with summer time.
void startAgainInTestSurroundings(char** arguments) {
    std::array folder{'/', 't', 'm', 'p', '/', 'v', 'e', 'l', 'm',
                      'o', '-', 'X', 'X', 'X', 'X', 'X', 'X', '\0'};
    if (mkdtemp(folder.data()) == nullptr)
        return;
    setenv("VELMO_TEST_HOME", folder.data(), 1);
    setenv("HOME", folder.data(), 1);
    setenv("TZ", "Europe/Berlin", 1);
    setenv("GNUSTEP_TZ", "Europe/Berlin", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("VELMO_SET_AND_EMPTY", "", 1);
    execv("/proc/self/exe", arguments);
}

}  // namespace

int main(int argc, char** argv) {
    const char* home = std::getenv("VELMO_TEST_HOME");
    if (home == nullptr)
        startAgainInTestSurroundings(argv);
    testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    if (home != nullptr)
        std::filesystem::remove_all(home);
    return result;
}
