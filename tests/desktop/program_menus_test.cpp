#include "session_bus_desktop.h"

namespace velmo::desktop {

namespace {

/// Menus that programs export over the bus, as the bar opens them.
class ProgramMenus : public SessionBusDesktop {};

TEST_F(ProgramMenus, AMenuKeepsIconsRevealedAsOtherProgramsMenusDo) {
    stopVelmo();
    writeDefaults({{"autoRehide", true}, {"rehideDelay", 1}});
    startVelmoOnBus();
    const auto program = programWithItem("Menu");
    program->setMenuPath(itemPath);
    program->setProperty(itemPath, "ItemIsMenu",
                         [](auto* message) { return sd_bus_message_append(message, "v", "b", 1); });
    program->setMenu(
        "/Menu",
        {0, {}, {{1, {{"label", std::string("One")}}, {}}, {2, {{"label", std::string("Two")}}, {}}}});
    program->emit(itemPath, itemInterface, "NewMenu");
    const auto icon = untilShown("Menu");
    // This test is the program: Velmo's own menus would not count.
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    click(toggle());
    ASSERT_TRUE(eventually([&] { return isOnScreen(icon); }));
    openMenuOf(icon, 1);
    EXPECT_EQ(program->callsOf("Activate"), 0) << "it is a menu";
    movePointer(300, 400);
    EXPECT_TRUE(stays([&] { return isOnScreen(icon); }, milliseconds(2500)));
    xdotool({"key", "Escape"});
    ASSERT_TRUE(eventually([&] { return !openMenu(); }));
    EXPECT_TRUE(eventually([&] { return isHidden(icon); }, milliseconds(6000))) << "once it has closed";
}

TEST_F(ProgramMenus, AnOpenMenuFollowsItsProgram) {
    auto program = programWithItem("Changing");
    BusProgram::MenuEntry root{
        0, {}, {{1, {{"label", std::string("One")}}, {}}, {2, {{"label", std::string("Two")}}, {}}}};
    program->setMenu("/Menu", root);
    const auto icon = untilShown("Changing");
    setMenuPath(*program);
    openMenuOf(icon, rightButton);
    const int height = openMenu()->height;
    root.children.insert(root.children.begin() + 1, {3, {{"label", std::string("Between")}}, {}});
    program->setMenu("/Menu", root);
    program->tellOfLayout();
    EXPECT_TRUE(eventually([&] { return openMenu() && openMenu()->height > height; }));
    const auto opened = program->lastTime();
    chooseByKeys({"Down", "Down", "Return"});
    EXPECT_TRUE(eventually([&] { return program->wasCalled("Event 3 clicked value time"); }));
    EXPECT_GE(program->lastTime(), opened + 3 * keyPause) << "that of the choice, in milliseconds";
    openMenuOf(icon, rightButton);
    program.reset();
    EXPECT_TRUE(eventually([&] { return !openMenu(); })) << "it goes with its program";
    EXPECT_EQ(itemTitled("Changing"), xcb_window_t{XCB_WINDOW_NONE});
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
}

TEST_F(ProgramMenus, AnOpenMenuGoesWithTheBus) {
    auto program = programWithItem("Bound");
    program->setMenu("/Menu", {0, {}, {{1, {{"label", std::string("One")}}, {}}}});
    const auto icon = untilShown("Bound");
    setMenuPath(*program);
    openMenuOf(icon, rightButton);
    stopSessionBus();
    EXPECT_TRUE(eventually([&] { return !openMenu() && itemTitled("Bound") == XCB_WINDOW_NONE; }));
    program.reset();
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    startSessionBus();
    awaitWatcher();
    program = programWithItem("Next");
    program->setMenu("/Menu", {0, {}, {{1, {{"label", std::string("One")}}, {}}}});
    const auto next = untilShown("Next");
    setMenuPath(*program);
    openMenuOf(next, rightButton);
}

TEST_F(ProgramMenus, AMenuThatIsNotThereIsLeftToItsProgram) {
    const auto program = programWithItem("Refusing");
    const auto icon = untilShown("Refusing");
    setMenuPath(*program);
    click(icon, rightButton);
    const auto place = *x().area(icon);
    const std::string where = std::to_string(place.midX()) + " " + std::to_string(place.midY());
    EXPECT_TRUE(eventually([&] { return program->wasCalled("ContextMenu " + where); }));
}

TEST_F(ProgramMenus, AMenuThatHasNotComeInTimeIsForgotten) {
    const auto program = programWithItem("Late");
    const auto icon = untilShown("Late");
    program->setMenu("/Menu", {0, {}, {}});
    setMenuPath(*program);
    click(icon, rightButton);
    ASSERT_TRUE(eventually([&] { return program->callsOf("GetLayout") == 1; }));
    xdotool({"sleep", "0.1"});
    program->tellOfLayout();
    ASSERT_TRUE(eventually([&] { return program->callsOf("GetLayout") == 2; })) << "it may still come";
    xdotool({"sleep", "3"});
    program->setMenu("/Menu", {0, {}, {{1, {{"label", std::string("One")}}, {}}}});
    program->tellOfLayout();
    EXPECT_TRUE(stays([&] { return program->callsOf("GetLayout") == 2 && !openMenu(); }, milliseconds(500)));
    openMenuOf(icon, rightButton);
}

TEST_F(ProgramMenus, AMenuOfAnItemThatIsHiddenMeanwhileIsForgotten) {
    const auto program = programWithItem("Hidden");
    const auto icon = untilShown("Hidden");
    program->setMenu("/Menu", {0, {}, {{1, {{"label", std::string("One")}}, {}}}});
    setMenuPath(*program);
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    click(toggle());
    ASSERT_TRUE(eventually([&] { return isOnScreen(icon); }));
    program->pause();
    click(icon, rightButton);
    click(toggle());
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    program->goOn();
    ASSERT_TRUE(eventually([&] { return program->callsOf("GetLayout") == 1; }));
    xdotool({"sleep", "0.2"});
    program->tellOfLayout();
    EXPECT_TRUE(stays([&] { return program->callsOf("GetLayout") == 1 && !openMenu(); }, milliseconds(500)));
}

}  // namespace

}  // namespace velmo::desktop
