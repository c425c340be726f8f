#include "exported_menus_session.h"

namespace velmo {

namespace {

using Mark = ExportedMenuEntry::Mark;
using MarkState = ExportedMenuEntry::MarkState;

class ExportedMenus : public ExportedMenusSession {};

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
