#include "heartbeat.h"
#include "hostile_session.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace velmo::desktop {

namespace {

BusProgram::MenuEntry numbered(int count, const std::string& text) {
    BusProgram::MenuEntry root;
    for (std::int32_t id = 1; id <= count; ++id)
        root.children.push_back({id, {{"label", text + std::to_string(id)}}, {}});
    return root;
}

class HostileMenus : public HostileSession {
protected:
    static void setMenu(BusProgram& program, const BusProgram::MenuEntry& root) {
        program.setMenu("/Menu", root);
        setMenuPath(program);
    }

    void closeMenu() {
        chooseByKeys({"Escape"});
        ASSERT_TRUE(eventually([&] { return !openMenu(); }));
    }
};

TEST_F(HostileMenus, AMenuThatNeverComes) {
    auto program = programWithItem("Silent");
    const auto icon = untilShown("Silent");
    setMenu(*program, {0, {}, {}});
    program->keepSilentOn("GetLayout");
    click(icon, rightButton);
    ASSERT_TRUE(eventually([&] { return program->callsOf("GetLayout") == 1; }));
    expectResponsive("a menu does not come");
    EXPECT_TRUE(stays([&] { return !openMenu(); }, milliseconds(500)));
    program.reset();
    expectNothingLeft();
}

TEST_F(HostileMenus, AMenuOfTenThousandEntriesThatChangesWithoutEnd) {
    auto program = programWithItem("Long");
    const auto icon = untilShown("Long");
    for (int round = 0; round < 2; ++round) {
        setMenu(*program, numbered(10000, "Entry "));
        program->pause();
        click(icon, rightButton);
        expectResponsive("a long menu is on its way");
        Heartbeat heartbeat(busAddress(), velmo().id());
        program->goOn();
        ASSERT_TRUE(eventually([&] { return openMenu().has_value(); }));
        for (int count = 0; count < 30; ++count) {
            program->setMenu("/Menu", numbered(1000, "Text " + std::to_string(count) + " of entry "));
            program->tellOfLayout();
            std::this_thread::sleep_for(milliseconds(50));
        }
        const double longest = heartbeat.longest();
        std::printf("busy while a long menu opens and changes: %.1f ms at worst\n", longest);
        EXPECT_LT(longest, responsive);
        closeMenu();
        expectResponsive("a long menu has just closed");
        if (round == 0)
            noteWhatIsHeld();
    }
    expectNothingLeft(1);
}

TEST_F(HostileMenus, AMenuOfTenThousandEntriesThatOpensAgainAndAgain) {
    const auto program = programWithItem("Long");
    const auto icon = untilShown("Long");
    setMenu(*program, numbered(10000, "Entry "));
    const auto openTenTimes = [&] {
        for (int count = 0; count < 10; ++count) {
            openMenuOf(icon, rightButton);
            closeMenu();
        }
    };
    // What an allocator keeps of the first times serves the others.
    openTenTimes();
    expectNoGrowth(openTenTimes);
}

TEST_F(HostileMenus, AMenuOfTheLongestTexts) {
    const auto program = programWithItem("Wordy");
    const auto icon = untilShown("Wordy");
    const auto wordy = [](const std::string& word) {
        auto root = numbered(1000, word);
        for (auto& entry : root.children) {
            auto& label = std::get<std::string>(entry.properties["label"]);
            while (label.size() < 600)
                label += ' ' + word + std::to_string(label.size() * static_cast<std::size_t>(entry.id));
            entry.properties["shortcut"] =
                std::vector<std::vector<std::string>>{{"Control", "Shift", std::string(100, 'w')}};
        }
        return root;
    };
    setMenu(*program, wordy("Work"));
    std::map<std::string, double> shortest;
    for (const auto* word : {"Другое", "其他", "Work", "Другое", "其他", "Work"}) {
        const auto other = wordy(word);
        Heartbeat heartbeat(busAddress(), velmo().id());
        openMenuOf(icon, rightButton);
        const int asked = program->callsOf("GetLayout");
        program->setMenu("/Menu", other);
        program->tellOfLayout();
        ASSERT_TRUE(eventually([&] { return program->callsOf("GetLayout") > asked; }));
        xdotool({"sleep", "0.5"});
        const double longest = heartbeat.longest();
        std::printf("busy while a wordy menu opens and changes: %.1f ms at worst\n", longest);
        closeMenu();
        // It is one long turn, which a busy machine makes longer; Velmo itself would do so each time.
        const auto known = shortest.try_emplace(word, longest).first;
        known->second = std::min(known->second, longest);
    }
    for (const auto& [word, longest] : shortest)
        EXPECT_LT(longest, responsive) << word;
}

TEST_F(HostileMenus, AMenuThatContainsItselfOpens) {
    auto program = programWithItem("Loop");
    const auto icon = untilShown("Loop");
    BusProgram::MenuEntry inner{
        1, {{"label", std::string("Again")}, {"children-display", std::string("submenu")}}, {}};
    for (int depth = 0; depth < 6; ++depth) {
        auto outer = inner;
        outer.children = {inner};
        inner = outer;
    }
    setMenu(*program, {0, {}, {inner}});
    for (int round = 0; round < 6; ++round) {
        openMenuOf(icon, rightButton);
        chooseByKeys({"Down", "Right", "Right", "Escape", "Escape"});
        EXPECT_TRUE(eventually([&] { return !openMenu(); }));
        expectResponsive("a menu contains itself");
        if (round == 0)
            noteWhatIsHeld();
    }
    expectNothingLeft(1);
}

}  // namespace

}  // namespace velmo::desktop
