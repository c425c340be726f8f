#include "linux/process/beside_program.h"
#include "linux/process/find_program.h"

#include "fake_programs_test.h"

namespace velmo {

namespace {

namespace fs = std::filesystem;

/// Programs and parts of ours, in a working folder that somebody else has filled.
class ProgramFiles : public FakeProgramsTest {
protected:
    void SetUp() override {
        FakeProgramsTest::SetUp();
        former_ = fs::current_path();
        fs::create_directories(folder_ / "bin");
        fs::current_path(folder_);
    }
    void TearDown() override {
        fs::current_path(former_);
        FakeProgramsTest::TearDown();
    }

    fs::path former_;
};

TEST_F(ProgramFiles, AreNotTakenFromTheWorkingFolder) {
    install("bait");
    process_.values["PATH"] = folder_.string();
    ASSERT_EQ(findProgram("bait", process_), folder_ / "bait");
    for (const auto* path : {"", ".", "./", ":", "bin/..", "/nowhere:.:"}) {
        process_.values["PATH"] = path;
        EXPECT_EQ(findProgram("bait", process_), std::nullopt) << path;
    }
    EXPECT_EQ(findProgram("./bait", process_), std::nullopt);
    EXPECT_EQ(findBesideProgram("bait"), "");
    EXPECT_NE(findBesideProgram("linux_tests"), "") << "it looks beside the program";
}

}  // namespace

}  // namespace velmo
