#include "linux/icons/icon_loader.h"
#include "built_files.h"

#include "bus_session.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace velmo {

namespace {

using namespace std::string_literals;

constexpr const char* redSquare = R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">
<rect width="16" height="16" fill="#ff0000"/></svg>)";

class IconLoading : public BusSession {
protected:
    std::filesystem::path write(const std::string& name, const std::string& content) const {
        const auto file = folder_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << content;
        return file;
    }

    std::filesystem::path script(const std::string& content) const {
        const auto file = write("script", content);
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }

    std::optional<Image> load(const IconRequest& request) {
        std::optional<std::optional<Image>> answer;
        const auto loading = icons_->load(request, [&](const auto& icon) { answer = icon; });
        EXPECT_FALSE(answer) << "not before a later turn";
        EXPECT_TRUE(until([&] { return answer.has_value(); }));
        return answer.value_or(std::nullopt);
    }

    pid_t processThatLoads(const std::filesystem::path& file) {
        EXPECT_TRUE(load(request(file)));
        return icons_->processIdentifier();
    }

    static const Bitmap& bitmapOf(const std::optional<Image>& image) {
        return std::get<Bitmap>(image->content);
    }

    static IconRequest request(const std::string& name, int side = 20, const std::string& folder = {}) {
        IconRequest request;
        request.side = side;
        request.name = name;
        request.folder = folder;
        return request;
    }

    /// An icon that takes so many seconds, for an owner who is noted in `order_` when it is there.
    void loadFor(char owner, const std::string& seconds) {
        auto asked = request(seconds);
        asked.owner = owner;
        loading_.push_back(icons_->load(asked, [this, owner](const auto& icon) {
            EXPECT_TRUE(icon);
            order_ += owner;
        }));
    }

    std::vector<Registration> loading_;
    std::string order_;
};

TEST_F(IconLoading, DrawsAFileInTheSizeThatIsAskedFor) {
    const auto file = write("red.svg", redSquare);
    for (const int side : {20, 40, 7}) {
        const auto icon = load(request(file, side));
        ASSERT_TRUE(icon);
        EXPECT_EQ(bitmapOf(icon).width, side);
        EXPECT_EQ(bitmapOf(icon).height, side);
        EXPECT_FALSE(icon->isTemplate);
        const auto& pixels = *bitmapOf(icon).pixels;
        EXPECT_EQ((std::vector<std::uint8_t>(pixels.begin(), pixels.begin() + 4)),
                  (std::vector<std::uint8_t>{0, 0, 255, 255}));
    }
}

TEST_F(IconLoading, FindsNamesOfTheThemeAndTellsSymbols) {
    const auto symbol = load(request("audio-volume-high-symbolic"));
    ASSERT_TRUE(symbol);
    EXPECT_TRUE(symbol->isTemplate);
    EXPECT_EQ(bitmapOf(symbol).width, 16) << "symbols are drawn on their grid";
    EXPECT_FALSE(load(request("no-such-icon-anywhere")));
}

TEST_F(IconLoading, LooksIntoTheProgramsOwnFolderFirst) {
    write("own/audio-volume-high-symbolic.svg", redSquare);
    write("own/hicolor/16x16/apps/mine.svg", redSquare);
    ASSERT_TRUE(load(request("audio-volume-high-symbolic", 20, folder_ / "own")));
    const auto icon = load(request("mine", 20, folder_ / "own"));
    EXPECT_TRUE(icon) << "as a theme of its own";
    EXPECT_FALSE(load(request("mine"))) << "other programs do not see it";
}

TEST_F(IconLoading, LooksForThemesInNoFolderThatDependsOnWhereItWasStarted) {
    write("icons/hicolor/16x16/apps/mine.svg", redSquare);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder_);
    const auto isFound = [&](const std::string& variable, std::string folder) {
        // Where the theme is described in which it lies.
        if (variable == "XDG_DATA_DIRS")
            folder += ":/usr/share";
        setenv(variable.c_str(), folder.c_str(), 1);
        icons_ = std::make_unique<IconLoader>(loop_, iconLoaderProgram);
        const bool isThere = load(request("mine")).has_value();
        unsetenv(variable.c_str());
        return isThere;
    };
    for (const auto* variable : {"XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
        EXPECT_TRUE(isFound(variable, folder_)) << variable;
        EXPECT_FALSE(isFound(variable, ".")) << variable;
    }
    std::filesystem::current_path(before);
}

TEST_F(IconLoading, SeesAFileThatHasChanged) {
    const auto file = write("own/icon.svg", redSquare);
    ASSERT_EQ((*bitmapOf(load(request("icon", 20, folder_ / "own"))).pixels)[2], 255);
    write("own/icon.svg", std::string(redSquare).replace(std::string(redSquare).find("ff0000"), 6, "0000ff"));
    EXPECT_EQ((*bitmapOf(load(request("icon", 20, folder_ / "own"))).pixels)[0], 255);
}

TEST_F(IconLoading, DecodesWhatIconsComeAs) {
    const std::string png =
        "\x89PNG\r\n\x1a\n"s
        "\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\2\0\0\0\x90wS\xde"s
        "\0\0\0\x0cIDATx\x9c"
        "c\xf8\xcf\xc0\0\0\3\1\1\0\xc9\xfe\x92\xef"s
        "\0\0\0\0IEND\xae"
        "B`\x82"s;
    const std::string ico =
        "\0\0\1\0\1\0\1\1\0\0\1\0\x20\0"s
        "\x30\0\0\0\x16\0\0\0"s
        "\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x20\0\0\0\0\0\4\0\0\0"s
        "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s
        "\0\0\xff\xff\0\0\0\0"s;
    const std::string xpm = "/* XPM */\nstatic char *x[] = {\n\"1 1 1 1\",\n\"a c #ff0000\",\n\"a\"};\n";
    const std::string drawing =
        std::string(redSquare).insert(std::string(redSquare).find("</svg>"), R"(<text x="1" y="9">a</text>)");
    for (const auto& content : {png, ico, xpm, std::string(redSquare), drawing}) {
        auto data = request("", 16);
        data.data = content;
        const auto icon = load(data);
        ASSERT_TRUE(icon) << content;
        const auto& pixels = *bitmapOf(icon).pixels;
        EXPECT_EQ((std::vector<std::uint8_t>(pixels.begin(), pixels.begin() + 4)),
                  (std::vector<std::uint8_t>{0, 0, 255, 255}))
            << content;
    }
}

TEST_F(IconLoading, DecodesDataAndRefusesWhatIsNoImage) {
    IconRequest data;
    data.side = 16;
    data.data = redSquare;
    EXPECT_TRUE(load(data));
    data.data = "no image";
    EXPECT_FALSE(load(data));
    data.data = std::string(1 << 20, 'x');
    EXPECT_FALSE(load(data)) << "more than a request may hold";
}

TEST_F(IconLoading, WaitsForNoPipeAndReadsNoDeviceNorHugeFile) {
    const auto pipe = folder_ / "pipe.png";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const auto huge = write("huge.png", "");
    std::filesystem::resize_file(huge, std::uintmax_t{1} << 32);
    const auto start = std::chrono::steady_clock::now();
    for (const std::string& path : {pipe.string(), std::string("/dev/zero"), huge.string(), folder_.string(),
                                    std::string("/proc/self/mem"), std::string("../../etc/passwd")})
        EXPECT_FALSE(load(request(path))) << path;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

/// The toolkit opens what a drawing refers to.
TEST_F(IconLoading, ADrawingThatRefersToAPipeCostsOnlyItself) {
    const auto pipe = folder_ / "pipe.png";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const auto drawing = std::string(redSquare).insert(
        std::string(redSquare).find("</svg>"),
        "<image href='" + pipe.string() + "' xlink:href='" + pipe.string() + "' width='9' height='9'/>");
    EXPECT_FALSE(load(request(write("waits.svg", drawing))));
    EXPECT_TRUE(load(request(write("red.svg", redSquare))));
}

/// Whoever waits to write into one would go on, and find that nobody reads.
TEST_F(IconLoading, OpensNoPipeToLookAtIt) {
    const auto pipe = folder_ / "pipe.png";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const pid_t writer = fork();
    if (writer == 0)
        _exit(open(pipe.c_str(), O_WRONLY) < 0 ? 1 : 0);
    ASSERT_GT(writer, 0);
    runFor(0.2);
    EXPECT_FALSE(load(request(pipe)));
    runFor(0.2);
    EXPECT_EQ(waitpid(writer, nullptr, WNOHANG), 0) << "it waits still";
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
}

TEST_F(IconLoading, AnswersAfterItsProcessHasDied) {
    const auto file = write("red.svg", redSquare);
    const pid_t first = processThatLoads(file);
    ASSERT_GT(first, 0);
    kill(first, SIGKILL);
    EXPECT_TRUE(load(request(file)));
    EXPECT_NE(icons_->processIdentifier(), first);
}

TEST_F(IconLoading, AnswersWhereItsProcessHasDiedWithoutNotice) {
    const auto file = write("red.svg", redSquare);
    const pid_t first = processThatLoads(file);
    ASSERT_GT(first, 0);
    kill(first, SIGKILL);
    siginfo_t ended{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(first), &ended, WEXITED | WNOWAIT), 0);
    EXPECT_TRUE(load(request(file)));
}

TEST_F(IconLoading, AsksAnotherProcessWhereOneHangs) {
    const auto file = write("red.svg", redSquare);
    const pid_t first = processThatLoads(file);
    ASSERT_GT(first, 0);
    kill(first, SIGSTOP);
    EXPECT_TRUE(load(request(file)));
    EXPECT_TRUE(until([&] { return kill(first, 0) != 0; })) << "nothing is left of it";
}

TEST_F(IconLoading, EndsAProcessThatStaysOrAnswersUnasked) {
    const auto program = script("#!/bin/sh\nhead -c 12 /dev/zero\nexec sleep 60");
    icons_ = std::make_unique<IconLoader>(loop_, program);
    EXPECT_FALSE(load(request("stays")));
    const pid_t first = icons_->processIdentifier();
    ASSERT_GT(first, 0);
    EXPECT_TRUE(until([&] { return kill(first, 0) != 0; }, 12)) << "nobody asks it any longer";

    script("#!/bin/sh\nexec cat /dev/zero");
    EXPECT_FALSE(load(request("floods")));
    const pid_t second = icons_->processIdentifier();
    EXPECT_TRUE(second == 0 || until([&] { return kill(second, 0) != 0; }, 3)) << "at once";
}

TEST_F(IconLoading, GivesUpOnAnIconThatHangsTwiceAndTriesItAnewLater) {
    const auto slow = write("slow", "");
    const auto program = script("#!/bin/sh\nif [ -e '" + slow.string() +
                                "' ]; then exec sleep 60; fi\nexec " + std::string(iconLoaderProgram));
    icons_ = std::make_unique<IconLoader>(loop_, program);
    EXPECT_FALSE(load(request("audio-volume-high-symbolic")));
    std::filesystem::remove(slow);
    EXPECT_TRUE(load(request("audio-volume-high-symbolic"))) << "that it was slow once is not remembered";
}

TEST_F(IconLoading, WhoWaitsComesBeforeWhoHasHadMoreTime) {
    useSlowIcons();
    for (const auto* seconds : {"0.8", "0.801", "0.802"})
        loadFor('a', seconds);
    for (const auto* seconds : {"0.01", "0.011", "0.012"})
        loadFor('b', seconds);
    ASSERT_TRUE(until([&] { return order_.size() == 6; }));
    EXPECT_EQ(order_, "abbbaa");
}

TEST_F(IconLoading, AProgramWhoseIconsHangHoldsUpOthersForOneOfThem) {
    useSlowIcons();
    loadFor('a', "60");
    loadFor('a', "61");
    loadFor('b', "0.01");
    EXPECT_TRUE(until([&] { return !order_.empty(); }, 5)) << "before the first is tried again";
    EXPECT_EQ(order_, "b");
}

TEST_F(IconLoading, ManyWhoWaitForTheSameIconAreAnsweredTogether) {
    useSlowIcons();
    std::vector<Registration> loading;
    int answers = 0;
    for (int count = 0; count < 2000; ++count) {
        auto asked = request("0.2");
        asked.owner = std::to_string(count);
        loading.push_back(icons_->load(asked, [&](const auto& icon) { answers += icon ? 1 : 0; }));
    }
    loading[5] = {};
    EXPECT_TRUE(until([&] { return answers > 0; }));
    EXPECT_TRUE(until([&] { return answers == 1999; }, 0.5));
}

TEST_F(IconLoading, WhatNobodyWantsAnyLongerTakesNoRoom) {
    const auto mark = (folder_ / "mark").string();
    // Only the first process hangs.
    icons_ = std::make_unique<IconLoader>(
        loop_, script("#!/bin/sh\nif mkdir '" + mark + "'; then exec sleep 60; fi\nexec " +
                      std::string(iconLoaderProgram)));
    const auto slow = icons_->load(request("slow"), [](const auto&) {});
    runFor(0.1);
    for (int count = 0; count < 5000; ++count) {
        const auto cancelled = icons_->load(request("cancelled"), [](const auto&) { FAIL(); });
    }
    EXPECT_TRUE(load(request("audio-volume-high-symbolic")));
}

TEST_F(IconLoading, WhoeverIsOneTooManyIsAnsweredToo) {
    icons_ = std::make_unique<IconLoader>(loop_, script("#!/bin/sh\nexec sleep 60"));
    std::vector<Registration> waiting;
    int answers = 0;
    for (int count = 0; count < 10000; ++count) {
        waiting.push_back(icons_->load(request("waiting"), [&](const auto& icon) {
            EXPECT_FALSE(icon);
            ++answers;
        }));
    }
    EXPECT_EQ(answers, 0) << "not before a later turn";
    runFor(0.2);
    EXPECT_GT(answers, 0);
    EXPECT_LT(answers, 9000);
}

TEST_F(IconLoading, WithoutItsProgramNoIconIsHad) {
    icons_ = std::make_unique<IconLoader>(loop_, "/no/such/program");
    EXPECT_FALSE(load(request("audio-volume-high-symbolic")));
    icons_ = std::make_unique<IconLoader>(loop_, "");
    EXPECT_FALSE(load(request("audio-volume-high-symbolic")));
}

TEST_F(IconLoading, WhereItsProgramCannotBeStartedAllWhoWaitAreAnsweredAfterOneAttempt) {
    const auto lastProcess = [] {
        std::ifstream file("/proc/loadavg");
        std::string word;
        long process = 0;
        file >> word >> word >> word >> word >> process;
        return process;
    };
    icons_ = std::make_unique<IconLoader>(loop_, "/no/such/program");
    constexpr int count = 3000;
    std::vector<Registration> loading;
    int answers = 0;
    for (int index = 0; index < count; ++index)
        loading.push_back(icons_->load(request("icon"), [&](const auto& icon) { answers += icon ? 0 : 1; }));
    const long before = lastProcess();
    EXPECT_TRUE(until([&] { return answers == count; }));
    EXPECT_LT(lastProcess() - before, count / 3) << "others start some, too";
}

TEST_F(IconLoading, WhoeverHasLostInterestIsNotAnswered) {
    bool answered = false;
    {
        const auto loading =
            icons_->load(request("audio-volume-high-symbolic"), [&](const auto&) { answered = true; });
    }
    EXPECT_TRUE(load(request("audio-volume-high-symbolic")));
    EXPECT_FALSE(answered);
}

}  // namespace

}  // namespace velmo
