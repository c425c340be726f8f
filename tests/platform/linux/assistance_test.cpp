#include "linux/dbus/assistance.h"

#include "bus_session.h"

namespace velmo {

namespace {

constexpr const char* path = "/org/a11y/bus";
constexpr const char* interface = "org.a11y.Status";

/// A program that says whether somebody assists.
class SessionAssistance : public BusSession {
protected:
    void SetUp() override {
        BusSession::SetUp();
        bool isMalformed = false;
        connection_ = dbus::Bus::open(
            loop_, bus_->address(), [] {}, isMalformed);
        ASSERT_NE(connection_, nullptr);
        status_ = program();
        status_->addItem(path, "status", interface);
        say("IsEnabled", false);
        say("ScreenReaderEnabled", false);
        status_->requestName("org.a11y.Bus");
        assistance_.emplace(loop_, connection_, [this] { ++starts_; });
        ASSERT_TRUE(until([&] { return questions() > 0; }));
    }
    void TearDown() override {
        assistance_.reset();
        connection_.reset();
        status_.reset();
        BusSession::TearDown();
    }

    void say(const char* property, bool isSo) {
        status_->setProperty(path, property, [isSo](sd_bus_message* message) {
            return sd_bus_message_append(message, "v", "b", isSo ? 1 : 0);
        });
    }
    void tellOfChange() {
        status_->emit(path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                      [](sd_bus_message* message) {
                          return sd_bus_message_append(message, "sa{sv}as", interface, 0, 0);
                      });
    }
    int questions() const { return status_->callsOf("GetAll"); }

    std::shared_ptr<dbus::Bus> connection_;
    std::unique_ptr<desktop::BusProgram> status_;
    std::optional<dbus::Assistance> assistance_;
    int starts_ = 0;
};

TEST_F(SessionAssistance, IsToldOnce) {
    runFor(0.1);
    EXPECT_EQ(starts_, 0);
    say("ScreenReaderEnabled", true);
    tellOfChange();
    EXPECT_TRUE(until([&] { return starts_ == 1; }));
    tellOfChange();
    runFor(1.5);
    EXPECT_EQ(starts_, 1);
}

TEST_F(SessionAssistance, IsAskedForAtLeisureHoweverOftenItChanges) {
    const int before = questions();
    for (int count = 0; count < 200; ++count) {
        tellOfChange();
        runFor(0.005);
    }
    const int asked = questions() - before;
    EXPECT_GE(asked, 1);
    EXPECT_LE(asked, 4);
    say("IsEnabled", true);
    tellOfChange();
    EXPECT_TRUE(until([&] { return starts_ == 1; })) << "the last change is not missed";
}

}  // namespace

}  // namespace velmo
