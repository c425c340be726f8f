#include "built_files.h"
#include "bus_session.h"
#include "linux/icons/icon_loader.h"
#include "linux/icons/icon_protocol.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <functional>
#include <sstream>

namespace velmo {

namespace {

constexpr const char* blueSquare = R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">
<rect width="16" height="16" fill="#0000ff"/></svg>)";

/// Pictures that mean harm, and the process that reads them.
class HostileIcons : public BusSession {
protected:
    bool isHad(const std::string& picture) {
        IconRequest request;
        request.side = 20;
        request.data = picture;
        std::optional<bool> answer;
        const auto loading = icons_->load(request, [&](const auto& icon) { answer = icon.has_value(); });
        EXPECT_TRUE(until([&] { return answer.has_value(); }, 20));
        return answer.value_or(false);
    }

    std::string lineOf(const std::string& file, const std::string& beginning) const {
        std::ifstream stream("/proc/" + std::to_string(icons_->processIdentifier()) + "/" + file);
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with(beginning))
                return line.substr(beginning.size());
        }
        return {};
    }
    std::string limitOf(const std::string& name) const {
        std::istringstream words(lineOf("limits", name));
        std::string soft;
        std::string hard;
        words >> soft >> hard;
        return soft + " " + hard;
    }
};

TEST_F(HostileIcons, AreReadByAProcessThatCanDoLittle) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const auto nameOf = [](const std::filesystem::path& file) {
        std::error_code error;
        return std::filesystem::read_symlink(file, error).string();
    };
    const auto ours = nameOf("/proc/self/fd/" + std::to_string(ends[0]));
    ASSERT_TRUE(ours.starts_with("pipe:"));
    ASSERT_TRUE(isHad(blueSquare));
    const auto process = std::to_string(icons_->processIdentifier());
    for (const auto& file : std::filesystem::directory_iterator("/proc/" + process + "/fd"))
        EXPECT_NE(nameOf(file.path()), ours) << "files of ours are not open there";
    for (const auto& thread : std::filesystem::directory_iterator("/proc/" + process + "/task")) {
        const auto status = "task/" + thread.path().filename().string() + "/status";
        EXPECT_EQ(lineOf(status, "NoNewPrivs:"), "\t1");
        EXPECT_EQ(lineOf(status, "Seccomp:"), "\t2");
    }
    EXPECT_EQ(limitOf("Max file size"), "0 0");
    EXPECT_EQ(limitOf("Max core file size"), "0 0");
    EXPECT_EQ(limitOf("Max cpu time"), "60 60");
#ifndef __SANITIZE_ADDRESS__
    EXPECT_EQ(limitOf("Max address space"), "1073741824 1073741824");
#endif
    for (const int end : ends)
        close(end);
}

/// Where the system refuses what this adds to a filter that allows all. True where the process has read a
/// picture all the same.
bool isReadWhere(const std::function<void(void* filter)>& refuse) {
    std::array<int, 2> requests{};
    std::array<int, 2> answers{};
    if (pipe2(requests.data(), O_CLOEXEC) != 0 || pipe2(answers.data(), O_CLOEXEC) != 0)
        return false;
    const pid_t process = fork();
    if (process == 0) {
        dup2(requests[0], STDIN_FILENO);
        dup2(answers[1], STDOUT_FILENO);
        auto* const filter = seccomp_init(SCMP_ACT_ALLOW);
        refuse(filter);
        if (seccomp_load(filter) == 0)
            execl(iconLoaderProgram, iconLoaderProgram, nullptr);
        _exit(1);
    }
    close(answers[1]);
    icon_protocol::Request head;
    head.side = 20;
    head.dataSize = static_cast<std::uint32_t>(std::strlen(blueSquare));
    std::string request(reinterpret_cast<const char*>(&head), sizeof head);
    request += blueSquare;
    const bool isSent = write(requests[1], request.data(), request.size()) > 0;
    close(requests[0]);
    icon_protocol::Answer answer;
    const auto size = read(answers[0], &answer, sizeof answer);
    close(requests[1]);
    close(answers[0]);
    waitpid(process, nullptr, 0);
    return isSent && size == sizeof answer && answer.width == 20;
}

bool isReadWhereFiltersEndWith(int error) {
    return isReadWhere([error](void* filter) {
        const scmp_arg_cmp isSet = {0, SCMP_CMP_EQ, PR_SET_SECCOMP, 0};
        // A kernel that knows filters says of one that is none what it is; one that does not says the same of
        // all.
        const scmp_arg_cmp isFilter = {2, error == EINVAL ? SCMP_CMP_GE : SCMP_CMP_GT, 0, 0};
        const auto refused = SCMP_ACT_ERRNO(static_cast<unsigned>(error));
        seccomp_rule_add(filter, refused, SCMP_SYS(seccomp), 0);
        seccomp_rule_add(filter, refused, SCMP_SYS(prctl), 2, isSet, isFilter);
    });
}

bool isReadWhereCallEndsWith(int call, int error) {
    return isReadWhere([call, error](void* filter) {
        seccomp_rule_add(filter, SCMP_ACT_ERRNO(static_cast<unsigned>(error)), call, 0);
    });
}

TEST_F(HostileIcons, AreNotReadWhereConfinementFailsButWhereTheSystemHasNone) {
    EXPECT_FALSE(isReadWhereFiltersEndWith(ENOMEM));
    EXPECT_TRUE(isReadWhereFiltersEndWith(EINVAL)) << "as old kernels answer";
}

TEST_F(HostileIcons, AreNotReadWhereFoldersCannotBeClosedButWhereTheSystemHasNoRules) {
    const int make = SCMP_SYS(landlock_create_ruleset);
    EXPECT_FALSE(isReadWhereCallEndsWith(make, ENOMEM));
    EXPECT_TRUE(isReadWhereCallEndsWith(make, ENOSYS)) << "as old kernels answer";
    EXPECT_TRUE(isReadWhereCallEndsWith(make, EOPNOTSUPP)) << "as those answer where it is switched off";
    if (syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) > 0) {
        EXPECT_FALSE(isReadWhereCallEndsWith(SCMP_SYS(landlock_restrict_self), ENOMEM));
    }
}

TEST_F(HostileIcons, AreReadByAProcessThatIsNotToldOfTheSession) {
    const auto own = folder_.string();
    for (const auto* variable :
         {"DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "SSH_AUTH_SOCK", "SECRET"})
        setenv(variable, "told", 0);
    setenv("XDG_DATA_HOME", own.c_str(), 1);
    ASSERT_TRUE(isHad(blueSquare));
    std::ifstream stream("/proc/" + std::to_string(icons_->processIdentifier()) + "/environ");
    bool knowsThemes = false;
    for (std::string variable; std::getline(stream, variable, '\0');) {
        const auto name = variable.substr(0, variable.find('='));
        knowsThemes = knowsThemes || variable == "XDG_DATA_HOME=" + own;
        for (const auto* ending : {"DISPLAY", "XAUTHORITY", "ADDRESS", "_DIR", "_SOCK", "SECRET"})
            EXPECT_FALSE(name.ends_with(ending)) << variable;
    }
    EXPECT_TRUE(knowsThemes);
    unsetenv("XDG_DATA_HOME");
}

/// Those are found and read by the toolkit, in a program's own folder too.
TEST_F(HostileIcons, OfThemesThatAreHugeAreNotDecodedEither) {
    const auto pictures = folder_ / "hicolor" / "16x16" / "apps";
    std::filesystem::create_directories(pictures);
    const auto isShown = [&](const std::string& name, std::uintmax_t side) {
        const auto file = pictures / (name + ".png");
        const auto sides = std::to_string(side);
        std::ofstream(file) << "P6 " << sides << " " << sides << " 255\n";
        std::filesystem::resize_file(file, std::filesystem::file_size(file) + 3 * side * side);
        IconRequest request;
        request.side = 20;
        request.name = name;
        request.folder = folder_;
        std::optional<bool> answer;
        const auto loading = icons_->load(request, [&](const auto& icon) { answer = icon.has_value(); });
        EXPECT_TRUE(until([&] { return answer.has_value(); }, 20));
        return answer.value_or(false);
    };
    EXPECT_TRUE(isShown("large", 4000)) << "64 MB";
    const auto process = icons_->processIdentifier();
    EXPECT_FALSE(isShown("too-large", 4200));
    EXPECT_EQ(icons_->processIdentifier(), process) << "it goes on";
}

TEST_F(HostileIcons, ThatAreHugeAreNotDecoded) {
    EXPECT_TRUE(isHad("P5 200 200 255\n" + std::string(40000, '\0'))) << "others are";
    for (const auto* picture :
         {"P5 5000 100 255\n", "P6 60000 60000 255\n", "P6 2000000000 2000000000 255\n",
          R"(<svg xmlns="http://www.w3.org/2000/svg" width="900000" height="900000"></svg>)"})
        EXPECT_FALSE(isHad(picture)) << picture;
    EXPECT_TRUE(isHad(blueSquare));
}

/// Thousands of curves far outside of the picture, time and again: minutes of work in 64 KB.
TEST_F(HostileIcons, ThatAreDrawnForeverCostOnlyThemselves) {
    std::ostringstream picture;
    picture << R"(<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" )"
            << R"(width="16" height="16"><defs><path id="p" fill="red" stroke="blue" stroke-width="3" d=")";
    for (int count = 0; count < 1500; ++count)
        picture << "M0 0 C 1e3 1e9 -1e9 5 16 16 ";
    picture << R"("/></defs>)";
    for (int count = 0; count < 100; ++count)
        picture << "<use xlink:href='#p'/>";
    picture << "</svg>";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(isHad(picture.str()));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(12));
    EXPECT_TRUE(isHad(blueSquare));
}

}  // namespace

}  // namespace velmo
