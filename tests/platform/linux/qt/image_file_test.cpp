#include "linux/icon_loader/image_file.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace velmo {

namespace {

class ImageFiles : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = std::filesystem::temp_directory_path() / "velmo-images-XXXXXX";
        folder_ = mkdtemp(pattern.data());
        ASSERT_EQ(pipe(ends_.data()), 0);
    }
    void TearDown() override {
        close(ends_[0]);
        close(ends_[1]);
        std::filesystem::remove_all(folder_);
    }

    std::filesystem::path folder_;
    std::array<int, 2> ends_{};
};

TEST_F(ImageFiles, TakeNoMoreMemoryThanTheyAreLong) {
    const auto file = folder_ / "image";
    std::ofstream(file) << std::string(5000, 'x');
    const auto content = readImageFile(QString::fromStdString(file));
    EXPECT_EQ(content, QByteArray(5000, 'x'));
    EXPECT_LT(content.capacity(), 10000);
}

TEST_F(ImageFiles, ThatComeInPiecesAreReadToTheirEnd) {
    ASSERT_EQ(write(ends_[1], "one", 3), 3);
    std::thread writer([this] {
        // The next one is there only when the last one has been read.
        for (int left = 1; left > 0;) {
            pollfd reading = {ends_[0], POLLIN, 0};
            left = poll(&reading, 1, 0);
            std::this_thread::yield();
        }
        EXPECT_EQ(write(ends_[1], "two", 3), 3);
        close(ends_[1]);
    });
    EXPECT_EQ(readWhole(ends_[0], 6), "onetwo");
    writer.join();
    ends_[1] = -1;
}

TEST_F(ImageFiles, ThatHaveBecomeLongerAreRefused) {
    ASSERT_EQ(write(ends_[1], "seven..", 7), 7);
    EXPECT_EQ(readWhole(ends_[0], 6), QByteArray());
    ASSERT_EQ(write(ends_[1], "shorter", 7), 7);
    close(ends_[1]);
    EXPECT_EQ(readWhole(ends_[0], 12), "shorter") << "what is there counts";
    ends_[1] = -1;
}

}  // namespace

}  // namespace velmo
