#include "linux/status_notifier/menu_client.h"

#include "bus_session.h"

#include <set>

namespace velmo {

namespace {

using desktop::BusProgram;
using status_notifier::MenuClient;
using Entry = BusProgram::MenuEntry;
using Mark = ExportedMenuEntry::Mark;
using MarkState = ExportedMenuEntry::MarkState;
using Outcome = MenuClient::Outcome;

constexpr const char* menuInterface = "com.canonical.dbusmenu";
constexpr std::uint32_t clickTime = 1234;

Entry entry(std::int32_t id, const std::string& label, std::vector<Entry> children = {}) {
    Entry made{id, {{"label", label}}, std::move(children)};
    if (!made.children.empty())
        made.properties["children-display"] = std::string("submenu");
    return made;
}

std::size_t count(const ExportedMenuEntry& menu) {
    std::size_t sum = menu.children.size();
    for (const auto& child : menu.children)
        sum += count(child);
    return sum;
}

class ExportedMenus : public BusSession {
protected:
    void SetUp() override {
        BusSession::SetUp();
        startHost();
        owner_ = program();
        owner_->addItem("/StatusNotifierItem", "owner");
        owner_->setMenuPath("/StatusNotifierItem");
        owner_->registerItem("/StatusNotifierItem");
        ASSERT_TRUE(untilItems(1));
    }

    void TearDown() override {
        menu_.reset();
        owner_.reset();
        BusSession::TearDown();
    }

    void ask(const Entry& root) {
        owner_->setMenu("/Menu", root);
        ask();
    }

    void changeProperty(std::int32_t id, const std::string& name, const std::string& value) {
        owner_->emit("/Menu", menuInterface, "ItemsPropertiesUpdated", [&](auto* message) {
            return sd_bus_message_append(message, "a(ia{sv})a(ias)", 1, id, 1, name.c_str(), "s",
                                         value.c_str(), 0);
        });
    }

    void ask() {
        menu_ = std::make_unique<MenuClient>(*items_.front(), 16, "", clickTime);
        outcome_.reset();
        menu_->prepare([this](auto outcome) { outcome_ = outcome; });
    }

    /// The menu, once it can be shown.
    const ExportedMenuEntry& shown(const Entry& root) {
        ask(root);
        EXPECT_TRUE(until([&] { return outcome_ == Outcome::ready; }));
        return menu_->root();
    }

    std::unique_ptr<BusProgram> owner_;
    std::unique_ptr<MenuClient> menu_;
    std::optional<Outcome> outcome_;
};

TEST_F(ExportedMenus, TellOfEntriesAndSubmenus) {
    const Entry root{
        0,
        {},
        {entry(1, "_Open"),
         {2, {{"type", std::string("separator")}}, {}},
         {3, {{"label", std::string("Off")}, {"enabled", false}}, {}},
         {4, {{"label", std::string("Gone")}, {"visible", false}}, {}},
         {5,
          {{"label", std::string("Check")}, {"toggle-type", std::string("checkmark")}, {"toggle-state", 1}},
          {}},
         {6,
          {{"label", std::string("Radio")}, {"toggle-type", std::string("radio")}, {"toggle-state", 0}},
          {}},
         entry(7, "More", {entry(8, "Inner", {entry(9, "Innermost")})})}};
    const auto& menu = shown(root);
    ASSERT_EQ(menu.children.size(), 7U);
    EXPECT_EQ(menu.children[0].label, "_Open");
    EXPECT_TRUE(menu.children[0].isEnabled);
    EXPECT_TRUE(menu.children[1].isSeparator);
    EXPECT_FALSE(menu.children[2].isEnabled);
    EXPECT_FALSE(menu.children[3].isVisible);
    EXPECT_EQ(menu.children[4].mark, Mark::check);
    EXPECT_EQ(menu.children[4].markState, MarkState::on);
    EXPECT_EQ(menu.children[5].mark, Mark::radio);
    EXPECT_EQ(menu.children[5].markState, MarkState::off);
    EXPECT_TRUE(menu.children[6].isSubmenu);
    EXPECT_EQ(menu.children[6].children[0].children[0].label, "Innermost");
    EXPECT_EQ(owner_->callsOf("AboutToShow"), 1) << "the program may prepare it";
}

TEST_F(ExportedMenus, ShowPicturesOfTheTheme) {
    Entry named = entry(1, "Louder");
    named.properties["icon-name"] = std::string("audio-volume-high-symbolic");
    Entry missing = entry(2, "Missing");
    missing.properties["icon-name"] = std::string("no-such-icon");
    const auto& menu = shown({0, {}, {named, missing}});
    ASSERT_TRUE(until([&] { return menu.children[0].icon.has_value(); }));
    EXPECT_TRUE(menu.children[0].icon->isTemplate);
    EXPECT_FALSE(menu.children[1].icon);
}

TEST_F(ExportedMenus, TellTheProgramWhatHappens) {
    shown({0, {}, {entry(1, "One"), entry(2, "Two", {entry(3, "Three")})}});
    menu_->opened(0);
    menu_->opened(2);
    menu_->closed(2);
    menu_->closed(0);
    menu_->chosen(3, clickTime + 1);
    for (const auto* call :
         {"Event 0 opened value time", "Event 2 opened value time", "AboutToShow 2",
          "Event 2 closed value time", "Event 0 closed value time", "Event 3 clicked value time"})
        EXPECT_TRUE(until([&] { return owner_->wasCalled(call); })) << call;
    EXPECT_EQ(owner_->lastTime(), clickTime + 1) << "that of the choice";
    menu_->opened(0);
    EXPECT_TRUE(until([&] { return owner_->lastTime() == clickTime; }));
    menu_->chosen(3, 0);
    EXPECT_TRUE(until([&] { return owner_->callsOf("Event 3 clicked") == 2; }));
    EXPECT_EQ(owner_->lastTime(), clickTime) << "where it is not known";
}

TEST_F(ExportedMenus, FollowChangesOfTheLayoutAndOfProperties) {
    const auto& menu = shown({0, {}, {entry(1, "One")}});
    int changes = 0;
    menu_->setOnChange([&] { ++changes; });
    owner_->setMenu("/Menu", {0, {}, {entry(1, "One"), entry(2, "Two")}});
    owner_->tellOfLayout();
    EXPECT_TRUE(until([&] { return menu.children.size() == 2 && changes > 0; }));
    const int before = changes;
    owner_->emit("/Menu", menuInterface, "ItemsPropertiesUpdated", [](auto* message) {
        return sd_bus_message_append(message, "a(ia{sv})a(ias)", 2, 2, 2, "label", "s", "Deux", "enabled",
                                     "b", 0, 77, 1, "label", "s", "nobody", 1, 1, 1, "label");
    });
    EXPECT_TRUE(until([&] { return changes > before; }));
    EXPECT_EQ(menu.children[1].label, "Deux");
    EXPECT_FALSE(menu.children[1].isEnabled);
    EXPECT_EQ(menu.children[0].label, "") << "taken back";
}

TEST_F(ExportedMenus, DoNotKnowTheMarksThatTheirProgramDoesNot) {
    const auto marked = [](std::int32_t id, std::int32_t state) {
        return Entry{id, {{"toggle-type", std::string("checkmark")}, {"toggle-state", state}}, {}};
    };
    const Entry unsaid{3, {{"toggle-type", std::string("checkmark")}}, {}};
    const auto& menu = shown({0, {}, {marked(1, -1), marked(2, 2), unsaid, marked(4, 1)}});
    for (const std::size_t index : {0U, 1U, 2U})
        EXPECT_EQ(menu.children[index].markState, MarkState::mixed) << index;
    EXPECT_EQ(menu.children[3].markState, MarkState::on);
}

TEST_F(ExportedMenus, WithoutAnAnswerNothingIsShown) {
    owner_->keepSilentOn("GetLayout");
    ask({0, {}, {entry(1, "One")}});
    runFor(2);
    EXPECT_FALSE(outcome_);
    EXPECT_TRUE(until([&] { return outcome_ == Outcome::missing; }, 1));
}

TEST_F(ExportedMenus, ThatTheirProgramDoesNotHaveAreToldApart) {
    owner_->refuse("GetLayout");
    ask({0, {}, {entry(1, "One")}});
    EXPECT_TRUE(until([&] { return outcome_ == Outcome::refused; }, 1));
}

TEST_F(ExportedMenus, AreShownWhereThePreparationIsNotAnswered) {
    owner_->keepSilentOn("AboutToShow");
    ask({0, {}, {entry(1, "One")}});
    EXPECT_TRUE(until([&] { return outcome_ == Outcome::ready; }, 2));
}

TEST_F(ExportedMenus, WithNothingToShowAreNotShown) {
    Entry hidden = entry(1, "Hidden");
    hidden.properties["visible"] = false;
    ask({0, {}, {hidden}});
    runFor(0.5);
    EXPECT_FALSE(outcome_);
    EXPECT_TRUE(until([&] { return outcome_ == Outcome::missing; }, 4));
}

TEST_F(ExportedMenus, ThatAreFilledLaterAreShownOnceTheyAre) {
    ask({0, {}, {}});
    ASSERT_TRUE(until([&] { return owner_->callsOf("GetLayout") == 1; }));
    runFor(0.2);
    EXPECT_FALSE(outcome_);
    owner_->setMenu("/Menu", {0, {}, {entry(1, "One")}});
    owner_->tellOfLayout();
    EXPECT_TRUE(until([&] { return outcome_ == Outcome::ready; }, 1));
}

TEST_F(ExportedMenus, WhoseProgramWasBusyAtFirstAreAskedForWhenItTellsOfThem) {
    owner_->refuse("GetLayout", SD_BUS_ERROR_FAILED);
    ask({0, {}, {entry(1, "One")}});
    ASSERT_TRUE(until([&] { return owner_->callsOf("GetLayout") == 1; }));
    owner_->answerAgain("GetLayout");
    runFor(0.2);
    EXPECT_FALSE(outcome_);
    EXPECT_EQ(owner_->callsOf("GetLayout"), 1);
    owner_->tellOfLayout();
    EXPECT_TRUE(until([&] { return outcome_ == Outcome::ready; }, 1));
}

TEST_F(ExportedMenus, WhoseEntriesBecomeVisibleLaterAreShownOnceTheyAre) {
    Entry hidden = entry(1, "Hidden");
    hidden.properties["visible"] = false;
    ask({0, {}, {hidden}});
    ASSERT_TRUE(until([&] { return owner_->callsOf("GetLayout") == 1; }));
    runFor(0.2);
    changeProperty(1, "label", "Still hidden");
    runFor(0.2);
    EXPECT_FALSE(outcome_);
    owner_->emit("/Menu", menuInterface, "ItemsPropertiesUpdated", [](auto* message) {
        return sd_bus_message_append(message, "a(ia{sv})a(ias)", 1, 1, 1, "visible", "b", 1, 0);
    });
    EXPECT_TRUE(until([&] { return outcome_ == Outcome::ready; }, 1));
    EXPECT_EQ(owner_->callsOf("GetLayout"), 1);
}

TEST_F(ExportedMenus, ThatAreFilledTooLateDoNotComeByThemselves) {
    ask({0, {}, {}});
    ASSERT_TRUE(until([&] { return outcome_.has_value(); }, 4));
    owner_->setMenu("/Menu", {0, {}, {entry(1, "One")}});
    owner_->tellOfLayout();
    runFor(0.5);
    EXPECT_EQ(outcome_, Outcome::missing);
}

TEST_F(ExportedMenus, AreAskedForAgainWhereShowingASubmenuChangesThem) {
    const auto& menu = shown({0, {}, {entry(1, "More", {entry(2, "Old")})}});
    owner_->setMenuWhenShown("/Menu", {0, {}, {entry(1, "More", {entry(2, "New")})}});
    EXPECT_EQ(menu.children[0].children[0].label, "Old");
    menu_->opened(1);
    EXPECT_TRUE(until([&] { return menu.children[0].children[0].label == "New"; }));
}

TEST_F(ExportedMenus, ShowPicturesThatComeAsFiles) {
    const std::string file = R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">
<rect width="16" height="16" fill="#0000ff"/></svg>)";
    Entry pictured = entry(1, "Pictured");
    pictured.properties["icon-data"] = std::vector<std::uint8_t>(file.begin(), file.end());
    Entry broken = entry(2, "Broken");
    broken.properties["icon-data"] = std::vector<std::uint8_t>{1, 2, 3};
    const auto& menu = shown({0, {}, {pictured, broken}});
    ASSERT_TRUE(until([&] { return menu.children[0].icon.has_value(); }));
    const auto& pixels = *std::get<Bitmap>(menu.children[0].icon->content).pixels;
    EXPECT_EQ((std::vector<std::uint8_t>(pixels.begin(), pixels.begin() + 4)),
              (std::vector<std::uint8_t>{255, 0, 0, 255}));
    EXPECT_FALSE(menu.children[1].icon);
}

TEST_F(ExportedMenus, KeepAPictureUntilTheNextOneIsThere) {
    Entry named = entry(1, "Louder");
    named.properties["icon-name"] = std::string("audio-volume-high-symbolic");
    const auto& menu = shown({0, {}, {named}});
    ASSERT_TRUE(until([&] { return menu.children[0].icon.has_value(); }));
    bool blinked = false;
    const auto pixels = [&] {
        const auto& icon = menu.children[0].icon;
        blinked = blinked || !icon;
        return icon ? std::get<Bitmap>(icon->content).pixels : nullptr;
    };
    const auto first = pixels();
    changeProperty(1, "icon-name", "audio-volume-low-symbolic");
    ASSERT_TRUE(until([&] { return blinked || pixels() != first; }));
    const auto second = pixels();
    named.properties["icon-name"] = std::string("audio-volume-muted-symbolic");
    owner_->setMenu("/Menu", {0, {}, {named}});
    owner_->tellOfLayout();
    EXPECT_TRUE(until([&] { return blinked || pixels() != second; }));
    EXPECT_FALSE(blinked);
    changeProperty(1, "icon-name", "no-such-icon");
    EXPECT_TRUE(until([&] { return !menu.children[0].icon; })) << "the next one is none";
}

TEST_F(ExportedMenus, LoadPicturesHoweverManyThereHaveBeen) {
    const auto pictured = [](int number) {
        const std::string file =
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"16\">"
            "<rect width=\"16\" height=\"16\" fill=\"rgb(0,0," +
            std::to_string(number) + ")\"/></svg>";
        Entry made = entry(number, "Pictured");
        made.properties["icon-data"] = std::vector<std::uint8_t>(file.begin(), file.end());
        return made;
    };
    const auto& menu = shown({0, {}, {pictured(1)}});
    constexpr int step = 50;
    for (int first = 1; first <= 250; first += step) {
        Entry root{0, {}, {}};
        for (int number = first; number < first + step; ++number)
            root.children.push_back(pictured(number));
        owner_->setMenu("/Menu", root);
        owner_->tellOfLayout();
        const int last = first + step - 1;
        ASSERT_TRUE(until([&] { return menu.children.back().id == last && menu.children.back().icon; }));
        const auto& pixels = *std::get<Bitmap>(menu.children.back().icon->content).pixels;
        EXPECT_EQ(pixels[0], last);
    }
}

TEST_F(ExportedMenus, AreAskedForAnewWhereMoreChangesThanTheyHaveEntries) {
    const auto& menu = shown({0, {}, {entry(1, "One"), entry(2, "Two")}});
    owner_->setMenu("/Menu", {0, {}, {entry(1, "One"), entry(2, "Deux")}});
    owner_->emit("/Menu", menuInterface, "ItemsPropertiesUpdated", [&](auto* message) {
        sd_bus_message_open_container(message, 'a', "(ia{sv})");
        for (std::size_t count = 0; count < status_notifier::mostMenuEntries; ++count)
            sd_bus_message_append(message, "(ia{sv})", 1, 1, "label", "s", "Un");
        sd_bus_message_append(message, "(ia{sv})", 2, 1, "label", "s", "Deux");
        sd_bus_message_close_container(message);
        return sd_bus_message_append(message, "a(ias)", 0);
    });
    EXPECT_TRUE(until([&] { return menu.children[0].label == "Un"; }));
    EXPECT_EQ(menu.children[1].label, "Two");
    EXPECT_TRUE(until([&] { return menu.children[1].label == "Deux"; }));
    EXPECT_EQ(owner_->callsOf("GetLayout"), 2);
}

TEST_F(ExportedMenus, ThatChangeWithoutEndLeaveTheLoopFree) {
    Entry root{0, {}, {}};
    for (std::int32_t id = 1; id <= 1000; ++id)
        root.children.push_back(entry(id, "Entry " + std::to_string(id)));
    const auto& menu = shown(root);
    for (int count = 0; count < 30; ++count) {
        owner_->emit("/Menu", menuInterface, "ItemsPropertiesUpdated", [&](auto* message) {
            sd_bus_message_open_container(message, 'a', "(ia{sv})");
            for (int index = 0; index < 40000; ++index)
                sd_bus_message_append(message, "(ia{sv})", index < 39000 ? 5000 : 1000, 0);
            sd_bus_message_close_container(message);
            return sd_bus_message_append(message, "a(ias)", 0);
        });
    }
    owner_->setMenu("/Menu", {0, {}, {entry(1, "The end")}});
    owner_->tellOfLayout();
    std::chrono::steady_clock::duration longest{};
    ASSERT_TRUE(until(
        [&] {
            const auto start = std::chrono::steady_clock::now();
            loop_.turn();
            longest = std::max(longest, std::chrono::steady_clock::now() - start);
            return menu.children.size() == 1;
        },
        30));
    EXPECT_LT(longest, std::chrono::milliseconds(50));
}

TEST_F(ExportedMenus, AreCutWhereTheyHaveTooManyEntries) {
    Entry root{0, {}, {}};
    for (std::int32_t id = 1; id <= 10000; ++id)
        root.children.push_back(entry(id, "Entry " + std::to_string(id)));
    const auto start = std::chrono::steady_clock::now();
    const auto& menu = shown(root);
    EXPECT_EQ(menu.children.size(), status_notifier::mostMenuEntries);
    EXPECT_EQ(menu.children.back().label, "Entry 1000");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
}

TEST_F(ExportedMenus, ThatContainThemselvesAreCut) {
    Entry inner = entry(1, "Again", {entry(2, "Leaf"), entry(0, "Root")});
    for (int depth = 0; depth < 5; ++depth)
        inner = entry(1, "Again", {inner, entry(2, "Leaf")});
    const auto& menu = shown({0, {}, {inner, entry(1, "Again"), entry(3, "Other")}});
    EXPECT_EQ(count(menu), 3U);
}

TEST_F(ExportedMenus, AreCutWhereTheyAreTooDeep) {
    Entry inner = entry(100, "Leaf");
    // As deep as messages may be.
    for (std::int32_t id = 99; id > 80; --id)
        inner = entry(id, "Level", {inner});
    const auto& menu = shown({0, {}, {inner}});
    EXPECT_EQ(count(menu), static_cast<std::size_t>(status_notifier::deepestMenu));
}

TEST_F(ExportedMenus, EndWithTheirProgram) {
    shown({0, {}, {entry(1, "One")}});
    bool told = false;
    menu_->setOnChange([&] { told = true; });
    EXPECT_FALSE(menu_->hasEnded());
    menu_->end();
    EXPECT_TRUE(until([&] { return told; }));
    EXPECT_TRUE(menu_->hasEnded());
}

}  // namespace

}  // namespace velmo
