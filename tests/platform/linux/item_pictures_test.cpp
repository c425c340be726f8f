#include "built_files.h"
#include "bus_session.h"
#include "icon_files.h"

#include <fstream>

namespace velmo {

namespace {

using desktop::BusProgram;

constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";

class ItemPictures : public BusSession {
protected:
    void SetUp() override {
        BusSession::SetUp();
        startHost();
    }

    /// Says again and again that the icon has changed.
    void tellFor(BusProgram& owner, Seconds time) {
        for (Seconds passed = 0; passed < time; passed += 0.02) {
            owner.emit(itemPath, itemInterface, "NewIcon");
            runFor(0.02);
        }
    }

    /// Its icons have names, and take longer to load than it takes to change them.
    std::unique_ptr<BusProgram> restlessProgram() {
        stopHost();
        useSlowIcons();
        startHost();
        return programWithItem("restless");
    }

    /// True where one of its named icons is shown while it changes on and on. Its icons of attention cannot
    /// be had, and each takes a while to be looked for.
    bool isSeenToChange(BusProgram& owner) {
        for (int round = 0; round < 30 && width() != 1; ++round) {
            owner.setText(itemPath, "IconName", "0.2" + std::to_string(round));
            owner.setText(itemPath, "AttentionIconName", "none" + std::to_string(round));
            owner.emit(itemPath, itemInterface, "NewIcon");
            runFor(0.06);
        }
        return width() == 1;
    }

    /// The width of what is shown, in pixels.
    int width() const { return std::get<Bitmap>(items_.front()->icon()->content).width; }
};

TEST_F(ItemPictures, PrefersIconNamesAndFallsBackToPixmaps) {
    const auto owner = program();
    owner->addItem(itemPath, "named");
    owner->setText(itemPath, "IconName", "audio-volume-high-symbolic");
    owner->registerItem(itemPath);
    ASSERT_TRUE(untilItems(1));
    EXPECT_TRUE(items_.front()->icon()->isTemplate);
    owner->setText(itemPath, "IconName", "no-such-icon");
    owner->emit(itemPath, itemInterface, "NewIcon");
    EXPECT_TRUE(until([&] { return !items_.front()->icon()->isTemplate; }));
    EXPECT_EQ(colorOf(*items_.front()), 0xff0000U);
}

TEST_F(ItemPictures, ChoosesThePixmapForTheScale) {
    const auto owner = program();
    owner->addItem(itemPath, "sizes");
    owner->setProperty(itemPath, "IconPixmap", BusProgram::pixmaps({16, 22, 44, 64}, 0xff123456));
    owner->registerItem(itemPath);
    ASSERT_TRUE(untilItems(1));
    EXPECT_EQ(width(), 22);
    look_.side = 40;
    host_->setLook(look_);
    EXPECT_TRUE(until([&] { return width() == 44; }));
}

TEST_F(ItemPictures, PixmapsThatLieAreLeftOut) {
    const auto owner = program();
    const std::vector<BusProgram::Append> lies = {
        BusProgram::whitePixmap(20, 20, 0),        BusProgram::whitePixmap(20, 20, 1599),
        BusProgram::whitePixmap(20, 20, 1601),     BusProgram::whitePixmap(-20, -20, 1600),
        BusProgram::whitePixmap(0, 0, 0),          BusProgram::whitePixmap(65536, 65536, 1600),
        BusProgram::whitePixmap(1 << 30, 4, 16),   BusProgram::whitePixmap(-1, 400, 1600),
        BusProgram::whitePixmap(4097, 1, 4097 * 4)};
    for (std::size_t index = 0; index < lies.size(); ++index) {
        const std::string place = "/Item" + std::to_string(index);
        owner->addItem(place, "lie" + std::to_string(index));
        owner->setProperty(place, "IconPixmap", lies[index]);
        owner->registerItem(place);
    }
    owner->addItem("/Largest", "largest");
    owner->setProperty("/Largest", "IconPixmap", BusProgram::whitePixmap(4096, 1, 4096 * 4));
    owner->registerItem("/Largest");
    ASSERT_TRUE(untilItems(lies.size() + 1));
    for (std::size_t index = 0; index < lies.size(); ++index)
        EXPECT_FALSE(item("lie" + std::to_string(index))->icon()) << index;
    EXPECT_TRUE(item("largest")->icon());
}

TEST_F(ItemPictures, OneThatIsOnlyOfferedLargeIsScaled) {
    const auto owner = program();
    owner->addItem(itemPath, "large");
    owner->setProperty(itemPath, "IconPixmap", BusProgram::pixmaps({1024}, 0xff123456));
    owner->registerItem(itemPath);
    ASSERT_TRUE(untilItems(1));
    ASSERT_TRUE(items_.front()->icon());
    EXPECT_EQ(width(), 20);
    EXPECT_EQ(colorOf(*items_.front()), 0x123456U);
}

TEST_F(ItemPictures, WhatIsLargeAndLiesIsAskedForSeldomToo) {
    const auto owner = programWithItem("liar");
    owner->setProperty(itemPath, "IconPixmap", BusProgram::whitePixmap(4095, 4095, 8000000));
    tellFor(*owner, 0.2);
    const int before = owner->callsOf("GetAll");
    tellFor(*owner, 3);
    EXPECT_LE(owner->callsOf("GetAll") - before, 3);
    EXPECT_GE(owner->callsOf("GetAll") - before, 1);
}

TEST_F(ItemPictures, WhatCannotBeReadToItsEndIsAskedForSeldomToo) {
    const auto owner = programWithItem("endless");
    owner->setProperty(itemPath, "Category", [](sd_bus_message* message) {
        sd_bus_message_open_container(message, 'v', "as");
        sd_bus_message_open_container(message, 'a', "s");
        for (int count = 0; count < 250000; ++count)
            sd_bus_message_append(message, "s", "");
        sd_bus_message_close_container(message);
        return sd_bus_message_close_container(message);
    });
    tellFor(*owner, 0.5);
    const int before = owner->callsOf("GetAll");
    tellFor(*owner, 2);
    EXPECT_EQ(owner->callsOf("GetAll"), before);
}

TEST_F(ItemPictures, ThatChangeFasterThanTheyLoadAreSeenToChange) {
    const auto owner = restlessProgram();
    ASSERT_EQ(width(), 20);
    EXPECT_TRUE(isSeenToChange(*owner));
    owner->setText(itemPath, "IconName", "");
    owner->emit(itemPath, itemInterface, "NewIcon");
    EXPECT_TRUE(until([&] { return width() == 20; })) << "the newest wins";
    runFor(0.5);
    EXPECT_EQ(width(), 20);
}

TEST_F(ItemPictures, ThatChangeAllTheTimeAreSeenAlsoWhereTheFirstCannotBeHad) {
    const auto owner = restlessProgram();
    owner->setText(itemPath, "Status", "NeedsAttention");
    EXPECT_TRUE(isSeenToChange(*owner));
}

TEST_F(ItemPictures, WithoutAnAttentionIconThatCanBeHadTheOrdinaryOneStays) {
    const auto owner = programWithItem("calls");
    owner->setText(itemPath, "AttentionIconName", "no-such-icon");
    owner->setText(itemPath, "Status", "NeedsAttention");
    owner->emit(itemPath, itemInterface, "NewStatus");
    const auto& shown = *items_.front();
    ASSERT_TRUE(
        until([&] { return shown.properties().status == status_notifier::ItemStatus::needsAttention; }));
    runFor(0.5);
    ASSERT_TRUE(shown.icon());
    EXPECT_EQ(colorOf(shown), 0xff0000U);
    owner->setText(itemPath, "AttentionIconName", "audio-volume-high-symbolic");
    owner->emit(itemPath, itemInterface, "NewAttentionIcon");
    EXPECT_TRUE(until([&] { return shown.icon() && shown.icon()->isTemplate; }));
}

TEST_F(ItemPictures, ThatAreSlowAreWaitedForShortly) {
    stopHost();
    useSlowIcons();
    startHost();
    const auto owner = program();
    owner->addItem(itemPath, "slow");
    owner->setText(itemPath, "IconName", "2");
    owner->registerItem(itemPath);
    runFor(0.6);
    EXPECT_TRUE(items_.empty()) << "most icons come soon";
    ASSERT_TRUE(until([&] { return items_.size() == 1; }, 1));
    EXPECT_FALSE(items_.front()->icon());
    const int before = changes_;
    EXPECT_TRUE(until([&] { return items_.front()->icon().has_value(); }, 3));
    EXPECT_EQ(width(), 1);
    EXPECT_TRUE(until([&] { return changes_ > before; }));
}

TEST_F(ItemPictures, AFolderOfTheItemsOwnIsLookedInto) {
    const auto folder = folder_ / "own";
    desktop::writeSquare(folder / "mine.svg", "#00ff00");
    const auto owner = program();
    owner->addItem(itemPath, "own");
    owner->setText(itemPath, "IconName", "mine");
    owner->registerItem(itemPath);
    ASSERT_TRUE(untilItems(1));
    EXPECT_EQ(colorOf(*items_.front()), 0xff0000U) << "the pixmap, since no theme has it";
    owner->setText(itemPath, "IconThemePath", folder);
    owner->emit(itemPath, itemInterface, "NewIconThemePath");
    EXPECT_TRUE(until([&] { return colorOf(*items_.front()) == 0x00ff00; }));
}

TEST_F(ItemPictures, AnotherThemeBringsItsIcons) {
    desktop::writeTheme(folder_ / "icons", "First", "#00ff00");
    desktop::writeTheme(folder_ / "icons", "Second", "#0000ff");
    const std::string file = folder_ / "with-themes";
    std::ofstream(file) << "#!/bin/sh\nXDG_DATA_HOME='" << folder_.string() << "' exec " << iconLoaderProgram
                        << "\n";
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    stopHost();
    icons_ = std::make_unique<IconLoader>(loop_, file);
    look_.theme = "First";
    startHost();
    const auto owner = program();
    owner->addItem(itemPath, "themed");
    owner->setText(itemPath, "IconName", "themed");
    owner->registerItem(itemPath);
    ASSERT_TRUE(untilItems(1));
    EXPECT_EQ(colorOf(*items_.front()), 0x00ff00U);
    look_.theme = "Second";
    host_->setLook(look_);
    EXPECT_TRUE(until([&] {
        EXPECT_NE(colorOf(*items_.front()), 0xff0000U) << "nothing else is shown meanwhile";
        return colorOf(*items_.front()) == 0x0000ff;
    }));
}

TEST_F(ItemPictures, APropertyThatComesAgainIsReadOnce) {
    const auto owner = program();
    owner->addItem(itemPath, "again");
    owner->setProperty(itemPath, "Title", [](sd_bus_message* message) {
        sd_bus_message_append(message, "v", "s", "first");
        sd_bus_message_close_container(message);
        sd_bus_message_open_container(message, 'e', "sv");
        return sd_bus_message_append(message, "sv", "Title", "s", "second");
    });
    owner->registerItem(itemPath);
    ASSERT_TRUE(untilItems(1));
    EXPECT_EQ(items_.front()->properties().title, "first");
}

}  // namespace

}  // namespace velmo
