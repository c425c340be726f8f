#include "linux/status_notifier/menu_layout.h"

#include "bus_session.h"

#include <string>
#include <vector>

namespace velmo {

namespace {

using status_notifier::MenuLayout;
using Keys = std::vector<std::string>;

void check(int result) {
    ASSERT_GE(result, 0);
}

class MenuLayouts : public BusSession {
protected:
    void SetUp() override {
        BusSession::SetUp();
        check(sd_bus_new(&connection_));
        check(sd_bus_set_address(connection_, bus_->address().c_str()));
        check(sd_bus_set_bus_client(connection_, 1));
        check(sd_bus_start(connection_));
        check(sd_bus_message_new_signal(connection_, &message_, "/Menu", "org.example.Menu", "Layout"));
    }

    void TearDown() override {
        sd_bus_message_unref(message_);
        sd_bus_close(connection_);
        sd_bus_unref(connection_);
        BusSession::TearDown();
    }

    /// The layout of a menu whose entries `append` appends.
    MenuLayout layoutOf(const std::function<void()>& append) {
        check(sd_bus_message_append(message_, "u", 1));
        check(sd_bus_message_open_container(message_, 'r', "ia{sv}av"));
        check(sd_bus_message_append(message_, "ia{sv}", 0, 0));
        check(sd_bus_message_open_container(message_, 'a', "v"));
        append();
        check(sd_bus_message_close_container(message_));
        check(sd_bus_message_close_container(message_));
        check(sd_bus_message_seal(message_, 1, 0));
        auto layout = status_notifier::readMenuLayout(message_);
        EXPECT_TRUE(layout);
        return layout ? std::move(*layout) : MenuLayout();
    }

    void appendNamed(std::int32_t id, const std::string& icon) {
        check(sd_bus_message_append(message_, "v", "(ia{sv}av)", id, 1, "icon-name", "s", icon.c_str(), 0));
    }

    void appendWithShortcuts(std::int32_t id, const std::vector<Keys>& shortcuts) {
        check(sd_bus_message_open_container(message_, 'v', "(ia{sv}av)"));
        check(sd_bus_message_open_container(message_, 'r', "ia{sv}av"));
        check(sd_bus_message_append(message_, "i", id));
        check(sd_bus_message_open_container(message_, 'a', "{sv}"));
        check(sd_bus_message_open_container(message_, 'e', "sv"));
        check(sd_bus_message_append(message_, "s", "shortcut"));
        check(sd_bus_message_open_container(message_, 'v', "aas"));
        check(sd_bus_message_open_container(message_, 'a', "as"));
        for (const auto& shortcut : shortcuts) {
            check(sd_bus_message_open_container(message_, 'a', "s"));
            for (const auto& key : shortcut)
                check(sd_bus_message_append(message_, "s", key.c_str()));
            check(sd_bus_message_close_container(message_));
        }
        for (int depth = 0; depth < 4; ++depth)
            check(sd_bus_message_close_container(message_));
        check(sd_bus_message_append(message_, "av", 0));
        check(sd_bus_message_close_container(message_));
        check(sd_bus_message_close_container(message_));
    }

    sd_bus* connection_ = nullptr;
    sd_bus_message* message_ = nullptr;
};

TEST_F(MenuLayouts, HaveNoTwoEntriesOfOneIdWhateverItsType) {
    const auto layout = layoutOf([this] {
        for (std::int32_t id = -500; id < 0; ++id) {
            check(sd_bus_message_append(message_, "v", "(ia{sv}av)", id, 1, "label", "s", "signed", 0));
            check(sd_bus_message_append(message_, "v", "(ua{sv}av)", static_cast<std::uint32_t>(id), 1,
                                        "label", "s", "unsigned", 0));
        }
        check(sd_bus_message_append(message_, "v", "(ua{sv}av)", 7, 1, "label", "s", "unsigned", 0));
    });
    ASSERT_EQ(layout.root().children.size(), 501U);
    for (std::size_t index = 0; index < 500; ++index)
        EXPECT_EQ(layout.root().children[index].label, "signed");
    EXPECT_EQ(layout.root().children.back().id, 7);
}

TEST_F(MenuLayouts, TellShortcutsAsMenusShowThem) {
    const auto layout = layoutOf([this] {
        appendWithShortcuts(1, {{"Control", "Shift", "q"}, {"F4"}});
        appendWithShortcuts(2, {});
        check(sd_bus_message_append(message_, "v", "(ia{sv}av)", 3, 1, "shortcut", "s", "Control", 0));
    });
    const auto& entries = layout.root().children;
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].shortcut, "Ctrl+Shift+Q");
    EXPECT_EQ(entries[1].shortcut, "");
    EXPECT_EQ(entries[2].shortcut, "");
}

TEST_F(MenuLayouts, CutShortcutsThatNobodyCouldPress) {
    const auto layout = layoutOf([this] {
        appendWithShortcuts(1, {{"Control", std::string(55, 'x')}});
        appendWithShortcuts(2, {{"Control", std::string(56, 'x')}});
        appendWithShortcuts(3, {{std::string(16000, 'x'), std::string(16000, 'y')}});
        appendWithShortcuts(4, {Keys(10000, "F1")});
    });
    const auto& entries = layout.root().children;
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(entries[0].shortcut, "Ctrl+" + std::string(55, 'x'));
    EXPECT_EQ(entries[1].shortcut, entries[0].shortcut);
    EXPECT_EQ(entries[2].shortcut, std::string(60, 'x'));
    EXPECT_EQ(entries[3].shortcut.size(), 60U);
}

TEST_F(MenuLayouts, LeaveOutIconNamesThatNoFileHas) {
    const auto layout = layoutOf([this] {
        appendNamed(1, std::string(4096, 'x'));
        appendNamed(2, std::string(4097, 'x'));
    });
    EXPECT_EQ(layout.root().children.size(), 2U);
    ASSERT_EQ(layout.icons().size(), 1U);
    EXPECT_EQ(layout.icons().at(1).name, std::string(4096, 'x'));
}

TEST_F(MenuLayouts, HaveIconsOfFourMegabytesInAll) {
    MenuLayout layout;
    for (std::int32_t id = 1; id <= 100; ++id)
        layout.setIcon(id, {std::string(1 << 15, 'x'), std::string(1 << 15, 'x')});
    EXPECT_EQ(layout.icons().size(), 64U);
    EXPECT_TRUE(layout.icons().contains(64));
    layout.takeIcon(1);
    layout.setIcon(100, {"name", {}});
    EXPECT_TRUE(layout.icons().contains(100)) << "there is room again";
}

}  // namespace

}  // namespace velmo
