#include "linux/icons/icon_loader.h"

#include "bus_session.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include <sys/stat.h>

namespace velmo {

namespace {

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

    std::optional<Image> load(const IconRequest& request) {
        std::optional<std::optional<Image>> answer;
        const auto loading = icons_->load(request, [&](const auto& icon) { answer = icon; });
        EXPECT_FALSE(answer) << "not before a later turn";
        EXPECT_TRUE(until([&] { return answer.has_value(); }));
        return answer.value_or(std::nullopt);
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

TEST_F(IconLoading, SeesAFileThatHasChanged) {
    const auto file = write("own/icon.svg", redSquare);
    ASSERT_EQ((*bitmapOf(load(request("icon", 20, folder_ / "own"))).pixels)[2], 255);
    write("own/icon.svg", std::string(redSquare).replace(std::string(redSquare).find("ff0000"), 6, "0000ff"));
    EXPECT_EQ((*bitmapOf(load(request("icon", 20, folder_ / "own"))).pixels)[0], 255);
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

TEST_F(IconLoading, AnswersAfterItsProcessHasDied) {
    const auto file = write("red.svg", redSquare);
    ASSERT_TRUE(load(request(file)));
    const pid_t first = icons_->processIdentifier();
    ASSERT_GT(first, 0);
    kill(first, SIGKILL);
    EXPECT_TRUE(load(request(file)));
    EXPECT_NE(icons_->processIdentifier(), first);
}

TEST_F(IconLoading, GivesUpOnAProcessThatHangsAndGoesOn) {
    const auto file = write("red.svg", redSquare);
    ASSERT_TRUE(load(request(file)));
    const pid_t first = icons_->processIdentifier();
    ASSERT_GT(first, 0);
    kill(first, SIGSTOP);
    EXPECT_FALSE(load(request(file)));
    EXPECT_TRUE(load(request(file)));
    EXPECT_TRUE(until([&] { return kill(first, 0) != 0; })) << "nothing is left of it";
}

TEST_F(IconLoading, WithoutItsProgramNoIconIsHad) {
    icons_ = std::make_unique<IconLoader>(loop_, "/no/such/program");
    EXPECT_FALSE(load(request("audio-volume-high-symbolic")));
    icons_ = std::make_unique<IconLoader>(loop_, "");
    EXPECT_FALSE(load(request("audio-volume-high-symbolic")));
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
