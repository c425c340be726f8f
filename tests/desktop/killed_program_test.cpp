#include "desktop_session.h"
#include "tray_client.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <random>
#include <string_view>
#include <thread>

namespace velmo::desktop {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr int killsWithASeed = 250;
constexpr const char* firstPart = "killed";
constexpr const char* lastPart = ".Icon";

/// Tells when files in a folder are made and renamed.
class FolderWatch {
public:
    explicit FolderWatch(const std::filesystem::path& folder) : descriptor_(inotify_init1(IN_CLOEXEC)) {
        inotify_add_watch(descriptor_, folder.c_str(), IN_CREATE | IN_MOVED_TO);
    }
    ~FolderWatch() { close(descriptor_); }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// False where nothing happens for long.
    bool wait() const {
        constexpr int limit = 5000;
        pollfd readable = {descriptor_, POLLIN, 0};
        if (poll(&readable, 1, limit) <= 0)
            return false;
        // What one write brings may come together.
        char events[4096];
        return read(descriptor_, events, sizeof events) > 0;
    }

private:
    int descriptor_;
};

void spin(microseconds time) {
    for (const auto end = Clock::now() + time; Clock::now() < end;) {
    }
}

/// The program itself, which writes its settings down when a new icon comes, and is killed while it does.
class KilledProgram : public DesktopSession, public testing::WithParamInterface<unsigned> {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        writeDefaults({{"rehideDelay", 7.5}, {"statusItemOrder", {"Velmo.Toggle", "Velmo.Divider"}}});
        program_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
    }
    void TearDown() override {
        program_.reset();
        DesktopSession::TearDown();
    }

    void dockNumber(int number) {
        icon_ = program_->makeIcon(firstPart + std::to_string(number));
        program_->dock(icon_);
    }
    void kill() {
        velmo().signal(SIGKILL);
        ASSERT_EQ(velmo().wait(milliseconds(5000)), 128 + SIGKILL);
        program_->destroy(icon_);
        ASSERT_TRUE(eventually([&] { return x().selectionOwner("_NET_SYSTEM_TRAY_S0") == XCB_WINDOW_NONE; }));
    }
    /// Of the last icon whose place is known; the others are all known, too.
    int lastNumber() const {
        int last = 0;
        int count = 0;
        for (const std::string_view identity : savedOrder()) {
            if (!identity.starts_with(firstPart))
                continue;
            const auto digits = identity.substr(std::string_view(firstPart).size());
            last = std::max(last, std::stoi(std::string(digits.substr(0, digits.find(lastPart)))));
            ++count;
        }
        EXPECT_EQ(count, last);
        return last;
    }
    std::size_t filesBeside() const {
        const std::filesystem::directory_iterator files(defaultsFile().parent_path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files))) - 1;
    }
    std::unique_ptr<TrayClient> program_;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
};

TEST_P(KilledProgram, LeavesTheLastSettingsOrThoseBeforeThemWhole) {
    std::mt19937 random(GetParam());
    const auto upTo = [&](double most) {
        return microseconds(static_cast<long>(std::uniform_real_distribution(0.0, most)(random)));
    };
    // In microseconds, from the first sign of a write: so that half of the kills come before its end.
    double longest = 500;
    int last = 0;
    int hits = 0;
    int writes = 0;
    for (int round = 0; round < killsWithASeed; ++round) {
        startVelmo();
        const FolderWatch watch(defaultsFile().parent_path());
        dockNumber(last + 1);
        if (round % 5 == 0) {
            spin(upTo(20000));
        } else {
            ASSERT_TRUE(watch.wait()) << "round " << round << ": it writes";
            spin(upTo(longest));
        }
        kill();
        const int known = lastNumber();
        ASSERT_TRUE(known == last || known == last + 1)
            << "round " << round << ": " << known << " after " << last;
        ASSERT_EQ(readDefaults()["rehideDelay"], 7.5);
        ASSERT_EQ(savedOrder().front(), "Velmo.Toggle");
        ASSERT_LE(filesBeside(), 1U) << "what is left does not pile up";
        const bool isHit = known == last && filesBeside() == 1;
        longest = std::clamp(longest * (isHit ? 1.05 : 0.95), 50.0, 50000.0);
        hits += isHit ? 1 : 0;
        writes += known - last;
        last = known;
    }
    std::printf("%d of %d kills in the middle of a write, %d writes done\n", hits, killsWithASeed, writes);
    EXPECT_GT(hits, killsWithASeed / 10);
    EXPECT_GT(writes, killsWithASeed / 10);
}

INSTANTIATE_TEST_SUITE_P(Seeds, KilledProgram, testing::Values(1U, 2U, 3U, 4U),
                         [](const auto& seed) { return std::to_string(seed.param); });

}  // namespace

}  // namespace velmo::desktop
