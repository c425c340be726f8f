#include "exported_menus_session.h"
#include "linux/status_notifier/names.h"

#include <unistd.h>

namespace velmo {

namespace {

constexpr const char* watchersName = "org.kde.StatusNotifierWatcher";
constexpr const char* watchersPath = "/StatusNotifierWatcher";
constexpr const char* itemsPath = "/StatusNotifierItem";

/// Another program, which sends us what somebody else might say: what is sent to a connection comes there,
/// also where nobody has asked the bus for it.
class Impostors : public ExportedMenusSession {
protected:
    void SetUp() override {
        ExportedMenusSession::SetUp();
        impostor_ = program();
        runFor(0.2);
    }
    void TearDown() override {
        impostor_.reset();
        ExportedMenusSession::TearDown();
    }

    /// To us, who are the watcher.
    void say(const std::string& path, const std::string& interface, const std::string& member,
             const desktop::BusProgram::Append& append = nullptr) {
        impostor_->emitTo(watchersName, path, interface, member, append);
        runFor(0.3);
    }

    void sayOwnerChanged(const std::string& name, const std::string& former, const std::string& owner) {
        say("/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged", [&](auto* message) {
            return sd_bus_message_append(message, "sss", name.c_str(), former.c_str(), owner.c_str());
        });
    }

    std::unique_ptr<desktop::BusProgram> impostor_;
};

TEST_F(Impostors, DoNotSpeakForAnItem) {
    const int asked = owner_->callsOf("GetAll");
    say(itemsPath, "org.kde.StatusNotifierItem", "NewIcon");
    EXPECT_EQ(owner_->callsOf("GetAll"), asked);
    owner_->emitTo(watchersName, itemsPath, "org.kde.StatusNotifierItem", "NewIcon");
    EXPECT_TRUE(until([&] { return owner_->callsOf("GetAll") > asked; }))
        << "it is heard itself, in this way too";
}

TEST_F(Impostors, DoNotSpeakForAMenu) {
    const auto& menu = shown({0, {}, {entry(1, "One")}});
    const int asked = owner_->callsOf("GetLayout");
    say("/Menu", menuInterface, "LayoutUpdated",
        [](auto* message) { return sd_bus_message_append(message, "ui", 2, 0); });
    EXPECT_EQ(owner_->callsOf("GetLayout"), asked);
    say("/Menu", menuInterface, "ItemsPropertiesUpdated", [](auto* message) {
        return sd_bus_message_append(message, "a(ia{sv})a(ias)", 1, 1, 1, "label", "s", "Theirs", 0);
    });
    EXPECT_EQ(menu.children[0].label, "One");
    changeProperty(1, "label", "Ours");
    EXPECT_TRUE(until([&] { return menu.children[0].label == "Ours"; }));
}

TEST_F(Impostors, DoNotSpeakForTheBus) {
    impostor_->addObject(watchersPath);
    sayOwnerChanged(watchersName, "", impostor_->name());
    EXPECT_EQ(impostor_->callsOf("RegisterStatusNotifierHost"), 0) << "it is no watcher";
    sayOwnerChanged(owner_->name(), owner_->name(), "");
    EXPECT_EQ(items_.size(), 1U) << "its program is there";
}

TEST_F(Impostors, DoNotSpeakForAnotherWatcher) {
    const auto watcher = program();
    watcher->addItem(watchersPath, "none", watchersName);
    watcher->setProperty(watchersPath, "RegisteredStatusNotifierItems",
                         [](auto* message) { return sd_bus_message_append(message, "v", "as", 0); });
    watcher->requestName(watchersName);
    ASSERT_TRUE(until([&] { return watcher->callsOf("RegisterStatusNotifierHost") == 1; }));
    runFor(0.2);
    const auto other = program();
    other->addItem(itemsPath, "theirs");
    const auto tell = [&](desktop::BusProgram& teller, const std::string& member) {
        teller.emitTo(status_notifier::hostName("org.kde", getpid()), watchersPath, watchersName,
                      "StatusNotifierItem" + member, [&](auto* message) {
                          return sd_bus_message_append(message, "s", (other->name() + itemsPath).c_str());
                      });
        runFor(0.3);
    };
    tell(*impostor_, "Registered");
    EXPECT_EQ(items_.size(), 1U);
    tell(*watcher, "Registered");
    EXPECT_TRUE(untilItems(2));
    tell(*impostor_, "Unregistered");
    EXPECT_EQ(items_.size(), 2U);
    tell(*watcher, "Unregistered");
    EXPECT_TRUE(untilItems(1));
}

}  // namespace

}  // namespace velmo
