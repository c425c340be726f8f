#include "linux/dbus/message_reader.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <memory>
#include <string>

namespace velmo::dbus {

namespace {

/// Messages as whoever reads one gets them, without a bus.
class MessageReading : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends_.data()), 0);
        ASSERT_GE(sd_bus_new(&bus_), 0);
        ASSERT_GE(sd_bus_set_fd(bus_, ends_[0], ends_[0]), 0);
        ASSERT_GE(sd_bus_start(bus_), 0);
    }
    void TearDown() override {
        message_.reset();
        sd_bus_close_unref(bus_);
        close(ends_[1]);
    }

    /// What the operation appends, and a text behind it.
    MessageReader reading(const std::function<void(sd_bus_message*)>& append) {
        sd_bus_message* message = nullptr;
        EXPECT_GE(sd_bus_message_new_signal(bus_, &message, "/", "org.example.Foreign", "Told"), 0);
        append(message);
        EXPECT_GE(sd_bus_message_append(message, "s", "behind"), 0);
        EXPECT_GE(sd_bus_message_seal(message, 1, 0), 0);
        message_.reset(message);
        return MessageReader(message);
    }
    MessageReader readingTexts(int count) {
        return reading([&](sd_bus_message* message) {
            sd_bus_message_open_container(message, 'a', "s");
            for (int index = 0; index < count; ++index)
                sd_bus_message_append_basic(message, 's', "");
            sd_bus_message_close_container(message);
        });
    }
    MessageReader readingVariants(int depth) {
        return reading([&](sd_bus_message* message) {
            for (int level = 1; level < depth; ++level)
                sd_bus_message_open_container(message, 'v', "v");
            sd_bus_message_append(message, "v", "i", 7);
            for (int level = 1; level < depth; ++level)
                sd_bus_message_close_container(message);
        });
    }

private:
    struct Release {
        void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
    };

    std::array<int, 2> ends_{};
    sd_bus* bus_ = nullptr;
    std::unique_ptr<sd_bus_message, Release> message_;
};

/// The array is one value, and each text is looked for and read.
TEST_F(MessageReading, EndsBehindMoreValuesThanAnybodyNeeds) {
    for (const int count : {99'999, 100'000}) {
        auto reader = readingTexts(count);
        int read = 0;
        reader.array([&] {
            read += reader.text() ? 1 : 0;
            return true;
        });
        EXPECT_EQ(read, 99'999);
        EXPECT_EQ(reader.hasFailed(), count > 99'999);
        EXPECT_EQ(reader.text(), count > 99'999 ? std::nullopt : std::optional<std::string>("behind"));
    }
}

/// The array, and the text behind it, are one each.
TEST_F(MessageReading, SkipsNoMoreValuesThanAnybodyNeeds) {
    for (const int count : {199'998, 199'999}) {
        auto reader = readingTexts(count);
        reader.skip();
        EXPECT_EQ(reader.text(), count > 199'998 ? std::nullopt : std::optional<std::string>("behind"));
    }
}

TEST_F(MessageReading, EndsWhereValuesLieTooDeepInEachOther) {
    for (const int depth : {60, 61}) {
        auto reader = readingVariants(depth);
        std::optional<std::int64_t> found;
        int level = 0;
        const std::function<void()> enter = [&] {
            if (++level < depth)
                reader.variant(enter);
            else
                found = reader.integer();
        };
        reader.variant(enter);
        EXPECT_EQ(found, depth > 60 ? std::nullopt : std::optional<std::int64_t>(7));
        EXPECT_EQ(reader.text(), depth > 60 ? std::nullopt : std::optional<std::string>("behind"));
    }
}

}  // namespace

}  // namespace velmo::dbus
