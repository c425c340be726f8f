#include "built_files.h"
#include "session_bus_desktop.h"

#include <algorithm>
#include <csignal>

namespace velmo::desktop {

namespace {

/// Real programs of several toolkits, hosted over the bus and over the X11 tray.
class TrayPrograms : public SessionBusDesktop {
protected:
    ChildProcess startQt() const { return run({qtTrayProgram, noteFile()}); }
    ChildProcess startGtk() const { return runScript("indicator.py"); }
    ChildProcess startWx() const { return runScript("wx_tray.py"); }

    ChildProcess runScript(const std::string& name) const {
        return run({"/usr/bin/python3", std::string(clientScripts) + "/" + name, noteFile()});
    }

    /// Hides an icon, reveals it, and shows that it is the same.
    void hideAndReveal(xcb_window_t icon) {
        superDrag(icon, farLeft);
        EXPECT_TRUE(eventually([&] { return isHidden(icon); }));
        click(toggle());
        EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
        click(toggle());
        EXPECT_TRUE(eventually([&] { return isHidden(icon); }));
        click(toggle());
        EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
    }
};

TEST_F(TrayPrograms, QtIsHiddenRevealedAndUsed) {
    const auto program = startQt();
    const auto icon = untilShown("qt-tray");
    hideAndReveal(icon);
    click(icon);
    EXPECT_TRUE(eventually([&] { return hasNoted("activated"); }));
    click(icon, 2);
    EXPECT_TRUE(eventually([&] { return hasNoted("middle"); }));
    openMenuOf(icon, rightButton);
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("refresh"); }));
    openMenuOf(icon, rightButton);
    chooseByKeys({"Down", "Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("details off"); })) << "it was marked";
    openMenuOf(icon, rightButton);
    chooseByKeys({"p", "Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("Lisbon"); })) << "by mnemonic, in a submenu";
    openMenuOf(icon, rightButton);
    chooseByKeys({"q"});
    EXPECT_TRUE(eventually([&] { return itemTitled("qt-tray") == XCB_WINDOW_NONE; })) << "it has quit";
}

TEST_F(TrayPrograms, GtkWithAnIndicatorIsHiddenRevealedAndUsed) {
    const auto program = startGtk();
    const auto icon = untilShown("Volume");
    hideAndReveal(icon);
    openMenuOf(icon, 1);
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("mute"); })) << "an indicator has but its menu";
    openMenuOf(icon, rightButton);
    chooseByKeys({"Down", "Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("louder on"); }));
    openMenuOf(icon, rightButton);
    chooseByKeys({"Up", "Right", "Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("Headphones"); }));
    click(icon, 4);
    EXPECT_TRUE(eventually([&] { return hasNoted("scroll 120 0") || hasNoted("scroll 120 1"); }));
}

TEST_F(TrayPrograms, WxIsHiddenRevealedAndUsed) {
    const auto program = startWx();
    const auto icon = iconOf("Wx_tray");
    hideAndReveal(icon);
    click(icon, rightButton);
    xdotool({"sleep", "0.4"});
    chooseByKeys({"Down", "Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("World"); }));
}

TEST_F(TrayPrograms, AnX11TrayIconIsHiddenRevealedAndUsed) {
    const auto icon = startTrayProgram("parcellite", "Parcellite");
    hideAndReveal(icon);
    click(icon, rightButton);
    xdotool({"sleep", "0.4"});
    chooseByKeys({"Up", "Return"});
    EXPECT_TRUE(eventually([&] { return !x().windowOfClass(bar(), "Parcellite"); }))
        << "its last entry quits it";
}

TEST_F(TrayPrograms, OfFourToolkitsAreHiddenRevealedAndUsedSideBySide) {
    std::vector<ChildProcess> programs;
    std::vector<xcb_window_t> icons;
    programs.push_back(startQt());
    icons.push_back(untilShown("qt-tray"));
    programs.push_back(startGtk());
    icons.push_back(untilShown("Volume"));
    programs.push_back(startWx());
    icons.push_back(iconOf("Wx_tray"));
    icons.push_back(startTrayProgram("parcellite", "Parcellite"));
    const auto areInOrder = [&] {
        return std::is_sorted(icons.begin(), icons.end(), [&](xcb_window_t one, xcb_window_t other) {
            return x().area(one)->x < x().area(other)->x;
        });
    };
    std::reverse(icons.begin(), icons.end());
    EXPECT_TRUE(eventually(areInOrder)) << "the newest stands next to the divider";
    std::reverse(icons.begin(), icons.end());
    for (const auto icon : icons) {
        superDrag(icon, farLeft);
        EXPECT_TRUE(eventually([&] { return isHidden(icon); }));
    }
    for (const bool isRevealed : {true, false, true}) {
        click(toggle());
        for (const auto icon : icons)
            EXPECT_TRUE(eventually([&] { return isRevealed ? isOnScreen(icon) : isHidden(icon); }));
    }
    EXPECT_TRUE(eventually(areInOrder)) << "each was dropped next to the divider";
    openMenuOf(icons[0], rightButton);
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("refresh"); }));
    openMenuOf(icons[1], rightButton);
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("mute"); }));
    click(icons[2], rightButton);
    xdotool({"sleep", "0.4"});
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("Hello"); }));
    click(icons[3], rightButton);
    xdotool({"sleep", "0.4"});
    chooseByKeys({"Up", "Return"});
    EXPECT_TRUE(eventually([&] { return !x().windowOfClass(bar(), "Parcellite"); }));
    EXPECT_EQ(notes().size(), 3U) << "an entry each";
}

TEST_F(TrayPrograms, OfAllKindsShareOneOrderThatIsRemembered) {
    const auto xembed = startTrayProgram("parcellite", "Parcellite");
    auto program = std::make_unique<ChildProcess>(startQt());
    auto icon = untilShown("qt-tray");
    ASSERT_LT(x().area(icon)->x, x().area(xembed)->x) << "the newest stands next to the divider";
    superDrag(icon, x().area(xembed)->midX() + 5);
    EXPECT_TRUE(eventually([&] { return x().area(icon)->x > x().area(xembed)->x; }));
    EXPECT_EQ(savedOrder(), (std::vector<std::string>{"Velmo.Toggle", "qt_tray.qt-tray",
                                                      "parcellite.Parcellite", "Velmo.Divider"}));
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    program.reset();
    ASSERT_TRUE(eventually([&] { return itemTitled("qt-tray") == XCB_WINDOW_NONE; }));
    program = std::make_unique<ChildProcess>(startQt());
    ASSERT_TRUE(eventually([&] { return isHidden(itemTitled("qt-tray")); })) << "it was hidden when it left";
    stopVelmo();
    startVelmoOnBus();
    EXPECT_TRUE(eventually([&] { return isOnScreen(iconOf("Parcellite")); }));
}

TEST_F(TrayPrograms, TwoItemsOfOneProgramHavePlacesOfTheirOwn) {
    const auto first = programWithItem("same");
    untilShown("same");
    const auto second = programWithItem("same");
    const std::string name = "desktop_tests.same";
    EXPECT_TRUE(eventually([&] {
        const auto order = savedOrder();
        return std::count(order.begin(), order.end(), name) == 1 &&
               std::count(order.begin(), order.end(), name + "#2") == 1;
    }));
}

TEST_F(TrayPrograms, APassiveItemTakesNoRoom) {
    const auto program = programWithItem("Quiet");
    const auto icon = untilShown("Quiet");
    program->setText(itemPath, "Status", "Passive");
    program->emit(itemPath, itemInterface, "NewStatus");
    EXPECT_TRUE(eventually([&] { return !x().isViewable(icon); }));
    program->setText(itemPath, "Status", "Active");
    program->emit(itemPath, itemInterface, "NewStatus");
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
}

TEST_F(TrayPrograms, ItemsAtRestWakeNobody) {
    BusProgram program(busAddress());
    for (int index = 0; index < 10; ++index) {
        const std::string object = "/Item" + std::to_string(index);
        program.addItem(object, "rest");
        program.setText(object, "Title", "Rest" + std::to_string(index));
        program.registerItem(object);
    }
    for (int index = 0; index < 10; ++index)
        untilShown("Rest" + std::to_string(index));
    // What they have set off comes to its end, and their order is written.
    xdotool({"sleep", "3"});
    const long before = sleeps();
    xdotool({"sleep", "2"});
    EXPECT_LE(sleeps() - before, 1);
}

TEST_F(TrayPrograms, AnIconChangesWithoutFlicker) {
    const auto program = programWithItem("Live");
    const auto icon = untilShown("Live");
    const auto place = *x().area(icon);
    const auto color = [&] { return x().pixel(place.midX(), place.midY()); };
    ASSERT_TRUE(eventually([&] { return color() == 0xff0000; }));
    for (int round = 0; round < 20; ++round) {
        const std::uint32_t next = round % 2 ? 0xff0000 : 0x00ff00;
        program->setProperty(itemPath, "IconPixmap", BusProgram::pixmaps({20}, 0xff000000 | next));
        program->emit(itemPath, itemInterface, "NewIcon");
        EXPECT_TRUE(eventually([&] {
            const auto seen = color();
            EXPECT_TRUE(seen == 0xff0000 || seen == 0x00ff00) << std::hex << seen;
            return seen == next;
        }));
    }
}

TEST_F(TrayPrograms, ClicksTellTheirPlaceAndATokenComesFirst) {
    const auto other = programWithItem("Other");
    const auto program = programWithItem("Clicked");
    untilShown("Other");
    const auto icon = untilShown("Clicked");
    const auto place = *x().area(icon);
    ASSERT_EQ(program->callsOf("ProvideXdgActivationToken"), 0) << "nobody has clicked";
    const std::string where = std::to_string(place.midX()) + " " + std::to_string(place.midY());
    click(icon);
    ASSERT_TRUE(eventually([&] { return program->wasCalled("Activate " + where); }));
    const auto calls = program->calls();
    const auto activation = std::find(calls.begin(), calls.end(), "Activate " + where);
    ASSERT_NE(activation, calls.begin());
    EXPECT_TRUE((activation - 1)->starts_with("ProvideXdgActivationToken velmo-"));
    EXPECT_NE((activation - 1)->find("_TIME"), std::string::npos);
    click(icon, 2);
    EXPECT_TRUE(eventually([&] { return program->wasCalled("SecondaryActivate " + where); }));
    click(icon, rightButton);
    EXPECT_TRUE(eventually([&] { return program->wasCalled("ContextMenu " + where); })) << "it has no menu";
    for (const auto& [button, scroll] : std::vector<std::pair<int, std::string>>{
             {4, "120 vertical"}, {5, "-120 vertical"}, {6, "120 horizontal"}, {7, "-120 horizontal"}}) {
        click(icon, button);
        EXPECT_TRUE(eventually([&, call = "Scroll " + scroll] { return program->wasCalled(call); }))
            << scroll;
    }
    EXPECT_EQ(program->callsOf("Activate"), 1);
    EXPECT_EQ(other->callsOf("ProvideXdgActivationToken"), 0);
}

TEST_F(TrayPrograms, ATooltipFollowsItsItemAndOutlivesOthers) {
    auto program = programWithItem("Hovered");
    const auto icon = untilShown("Hovered");
    auto other = programWithItem("Other");
    ASSERT_LT(x().area(untilShown("Other"))->x, x().area(icon)->x) << "its leaving moves nothing";
    const auto place = *x().area(icon);
    movePointer(place.midX(), place.midY());
    ASSERT_TRUE(eventually([&] { return openToolTip().has_value(); }));
    const auto title = *openToolTip();
    EXPECT_GE(title.y, place.y + place.height);
    other.reset();
    ASSERT_TRUE(eventually([&] { return itemTitled("Other") == XCB_WINDOW_NONE; }));
    EXPECT_TRUE(stays([&] { return openToolTip() == title; }, milliseconds(500)));
    program->setProperty(itemPath, "ToolTip", [](sd_bus_message* message) {
        return sd_bus_message_append(message, "v", "(sa(iiay)ss)", "", 0, "A good deal more than its name",
                                     "and a second line");
    });
    program->emit(itemPath, itemInterface, "NewToolTip");
    EXPECT_TRUE(eventually([&] {
        const auto now = openToolTip();
        return now && now->width > title.width && now->height > title.height;
    }));
    program.reset();
    EXPECT_TRUE(eventually([&] { return !openToolTip(); }));
}

TEST_F(TrayPrograms, ABusThatGoesAndReturnsLeavesTheRestAlone) {
    const auto xembed = startTrayProgram("parcellite", "Parcellite");
    auto program = programWithItem("First");
    untilShown("First");
    stopSessionBus();
    EXPECT_TRUE(eventually([&] { return itemTitled("First") == XCB_WINDOW_NONE; }));
    EXPECT_TRUE(isOnScreen(xembed));
    program.reset();
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    startSessionBus();
    awaitWatcher();
    program = programWithItem("Second");
    untilShown("Second");
    EXPECT_TRUE(isOnScreen(xembed));
}

}  // namespace

}  // namespace velmo::desktop
