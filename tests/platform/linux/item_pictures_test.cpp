#include "bus_session.h"

#include <fstream>

namespace velmo {

namespace {

using desktop::BusProgram;

constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";

/// One pixmap that says to be of that size, with so many bytes of white.
BusProgram::Append pixmap(int width, int height, std::size_t size) {
    return [=](sd_bus_message* message) {
        const std::vector<std::uint8_t> bytes(size, 0xff);
        sd_bus_message_open_container(message, 'v', "a(iiay)");
        sd_bus_message_open_container(message, 'a', "(iiay)");
        sd_bus_message_open_container(message, 'r', "iiay");
        sd_bus_message_append(message, "ii", width, height);
        sd_bus_message_append_array(message, 'y', bytes.data(), bytes.size());
        sd_bus_message_close_container(message);
        sd_bus_message_close_container(message);
        return sd_bus_message_close_container(message);
    };
}

class ItemPictures : public BusSession {
protected:
    void SetUp() override {
        BusSession::SetUp();
        startHost();
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
        pixmap(20, 20, 0),      pixmap(20, 20, 1599),  pixmap(20, 20, 1601),
        pixmap(-20, -20, 1600), pixmap(0, 0, 0),       pixmap(65536, 65536, 1600),
        pixmap(1 << 30, 4, 16), pixmap(-1, 400, 1600), pixmap(4097, 1, 4097 * 4)};
    for (std::size_t index = 0; index < lies.size(); ++index) {
        const std::string place = "/Item" + std::to_string(index);
        owner->addItem(place, "lie" + std::to_string(index));
        owner->setProperty(place, "IconPixmap", lies[index]);
        owner->registerItem(place);
    }
    owner->addItem("/Largest", "largest");
    owner->setProperty("/Largest", "IconPixmap", pixmap(4096, 1, 4096 * 4));
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
    owner->setProperty(itemPath, "IconPixmap", pixmap(4095, 4095, 8000000));
    const auto tellFor = [&](Seconds time) {
        for (Seconds passed = 0; passed < time; passed += 0.02) {
            owner->emit(itemPath, itemInterface, "NewIcon");
            runFor(0.02);
        }
    };
    tellFor(0.2);
    const int before = owner->callsOf("GetAll");
    tellFor(3);
    EXPECT_LE(owner->callsOf("GetAll") - before, 3);
    EXPECT_GE(owner->callsOf("GetAll") - before, 1);
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
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "mine.svg") << R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">
<rect width="16" height="16" fill="#00ff00"/></svg>)";
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
    const auto addTheme = [&](const std::string& name, const std::string& color) {
        const auto folder = folder_ / "icons" / name;
        std::filesystem::create_directories(folder / "16");
        std::ofstream(folder / "index.theme")
            << "[Icon Theme]\nName=" << name
            << "\nComment=Of a test\nDirectories=16\n\n[16]\nSize=16\nType=Fixed\n";
        std::ofstream(folder / "16" / "themed.svg")
            << R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">)"
            << R"(<rect width="16" height="16" fill=")" << color << R"("/></svg>)";
    };
    addTheme("First", "#00ff00");
    addTheme("Second", "#0000ff");
    const std::string file = folder_ / "with-themes";
    std::ofstream(file) << "#!/bin/sh\nXDG_DATA_HOME='" << folder_.string()
                        << "' exec " VELMO_ICON_LOADER "\n";
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
