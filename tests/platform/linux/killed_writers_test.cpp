#include "linux/defaults/atomic_file.h"
#include "linux/defaults/file_user_defaults.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

namespace velmo {

namespace {

namespace fs = std::filesystem;

constexpr const char* numberKey = "number";
constexpr const char* textKey = "text";

/// So that contents of different length follow each other, from one page to several.
std::string textOfWrite(std::int64_t number) {
    return std::string(static_cast<std::size_t>(number * 7919 % 12000), static_cast<char>('a' + number % 26));
}

/// A folder with a file that processes write to until they are killed.
class KilledWriters : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = fs::temp_directory_path() / "velmo-killed-XXXXXX";
        folder_ = mkdtemp(pattern.data());
        file_ = folder_ / "defaults.json";
    }
    void TearDown() override { fs::remove_all(folder_); }

    /// Writes numbers that go on from the one in the file, and says on the pipe which of them are written:
    /// number and text are two settings, and the number comes last.
    [[noreturn]] void writeForEver(int pipe) const {
        FileUserDefaults defaults(file_);
        const std::int64_t ready = 0;
        if (write(pipe, &ready, sizeof ready) != sizeof ready)
            _exit(EXIT_FAILURE);
        for (auto number = static_cast<std::int64_t>(defaults.doubleForKey(numberKey)) + 1;; ++number) {
            defaults.setObject(textOfWrite(number), textKey);
            defaults.setDouble(static_cast<double>(number), numberKey);
            if (write(pipe, &number, sizeof number) != sizeof number)
                _exit(EXIT_FAILURE);
        }
    }
    /// Lets one write for that long once it is ready. Returns the last number that it has called written, or
    /// 0.
    std::int64_t killWriterAfter(useconds_t microseconds) const {
        std::array<int, 2> pipes{};
        EXPECT_EQ(pipe2(pipes.data(), O_CLOEXEC), 0);
        const pid_t child = fork();
        if (child == 0)
            writeForEver(pipes[1]);
        close(pipes[1]);
        std::int64_t written = 0;
        EXPECT_EQ(read(pipes[0], &written, sizeof written), sizeof written);
        usleep(microseconds);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        while (read(pipes[0], &written, sizeof written) == sizeof written) {
        }
        close(pipes[0]);
        return written;
    }
    /// What one number and its text take here, in microseconds.
    unsigned timeForOne() const {
        constexpr int rounds = 20;
        FileUserDefaults defaults(file_);
        const auto begin = std::chrono::steady_clock::now();
        for (int round = 0; round < rounds; ++round) {
            defaults.setObject(textOfWrite(round), textKey);
            defaults.setDouble(0, numberKey);
        }
        const auto time = std::chrono::steady_clock::now() - begin;
        return static_cast<unsigned>(std::chrono::duration_cast<std::chrono::microseconds>(time).count()) /
               rounds;
    }
    std::vector<fs::path> files() const { return {fs::directory_iterator(folder_), {}}; }

    fs::path folder_;
    fs::path file_;
};

TEST_F(KilledWriters, LeaveTheLastWriteOrTheOneThatWasUnderWayWhole) {
    constexpr int kills = 1000;
    constexpr unsigned seed = 20261121;
    // Half of them get the time for one, however slow the disk is.
    const unsigned longest = std::max(2 * timeForOne(), 6000U);
    std::printf("seed %u, up to %u microseconds each\n", seed, longest);
    std::mt19937 random(seed);
    std::uniform_int_distribution<unsigned> microseconds(0, longest);
    FileUserDefaults(file_).setObject(textOfWrite(0), textKey);
    std::int64_t before = 0;
    std::size_t mostFiles = 1;
    int leftovers = 0;
    for (int round = 0; round < kills; ++round) {
        const auto reported = std::max(killWriterAfter(microseconds(random)), before);
        mostFiles = std::max(mostFiles, files().size());
        leftovers += files().size() > 1 ? 1 : 0;
        for (const auto& file : files())
            ASSERT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write) << file;
        const FileUserDefaults defaults(file_);
        const auto number = static_cast<std::int64_t>(defaults.doubleForKey(numberKey));
        ASSERT_GE(number, reported) << "round " << round << ": what was written stays written";
        ASSERT_LE(number, reported + 1) << "round " << round;
        const auto text = defaults.stringForKey(textKey).value_or("");
        ASSERT_TRUE(text == textOfWrite(number) || text == textOfWrite(number + 1)) << "round " << round;
        before = number;
    }
    std::printf("%lld writes, %d of %d kills left something beside the file\n",
                static_cast<long long>(before), leftovers, kills);
    EXPECT_GT(before, kills / 10) << "they had the time to write";
    EXPECT_GT(leftovers, 0) << "some were hit in the middle of it";
    EXPECT_LE(mostFiles, 2U) << "leftovers do not pile up";
    FileUserDefaults(file_).setDouble(-1, numberKey);
    EXPECT_EQ(files(), std::vector{file_}) << "and go with the next write";
}

TEST_F(KilledWriters, LeaveNothingThatIsTakenForSomebodyElsesFile) {
    const auto write = [](const fs::path& file) { std::ofstream(file) << "x"; };
    const auto backup = folder_ / "defaults.json.backup";
    const auto other = folder_ / "other.json.next-abcdef";
    const auto leftover = folder_ / "defaults.json.next-abcdef";
    for (const auto& file : {backup, other, leftover})
        write(file);
    EXPECT_FALSE(replaceFile(file_, "{}"));
    EXPECT_TRUE(fs::exists(backup));
    EXPECT_TRUE(fs::exists(other));
    EXPECT_FALSE(fs::exists(leftover));
}

TEST_F(KilledWriters, AreToldFromThoseThatLive) {
    const auto underWay = folder_ / "defaults.json.next-abcdef";
    const int descriptor = open(underWay.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(descriptor, LOCK_EX), 0);
    EXPECT_FALSE(replaceFile(file_, "{}"));
    EXPECT_TRUE(fs::exists(underWay));
    close(descriptor);
    EXPECT_FALSE(replaceFile(file_, "{\"a\": 1}"));
    EXPECT_FALSE(fs::exists(underWay));
}

TEST_F(KilledWriters, AreNotThoseThatWriteAtTheSameTime) {
    constexpr int writers = 4;
    constexpr int writes = 200;
    std::vector<pid_t> children;
    for (int writer = 0; writer < writers; ++writer) {
        const pid_t child = fork();
        if (child == 0) {
            int failures = 0;
            for (int count = 0; count < writes; ++count)
                failures += replaceFile(file_, "{\"writer\": " + std::to_string(writer) + "}") ? 1 : 0;
            _exit(failures);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(WEXITSTATUS(status), 0) << "writes that failed";
    }
    EXPECT_EQ(files(), std::vector{file_});
    EXPECT_TRUE(nlohmann::json::parse(std::ifstream(file_), nullptr, false).is_object());
}

}  // namespace

}  // namespace velmo
