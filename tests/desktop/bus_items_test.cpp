#include "built_files.h"
#include "icon_files.h"
#include "session_bus_desktop.h"

#include <csignal>
#include <fstream>

namespace velmo::desktop {

namespace {

constexpr std::uint32_t red = 0xff0000;
constexpr std::uint32_t green = 0x00ff00;
constexpr std::uint32_t blue = 0x0000ff;

/// Items on the session's bus, as the bar shows them.
class BusItems : public SessionBusDesktop {
protected:
    std::uint32_t colorAt(int x, int y) const { return this->x().pixel(x, y); }

    std::uint32_t colorOf(xcb_window_t icon) const {
        const auto place = *x().area(icon);
        return colorAt(place.midX(), place.midY());
    }

    void addTheme(const std::string& name, const std::string& color) const {
        writeTheme(home_ / ".local" / "share" / "icons", name, color);
    }
};

TEST_F(BusItems, ShowTheirOverlayInTheLowerRightCorner) {
    const auto program = programWithItem("Overlaid");
    const auto icon = untilShown("Overlaid");
    const auto place = *x().area(icon);
    const auto corner = [&] { return colorAt(place.midX() + 5, place.midY() + 5); };
    ASSERT_TRUE(eventually([&] { return corner() == red; }));
    program->setProperty(itemPath, "OverlayIconPixmap", BusProgram::pixmaps({10}, 0xff00ff00));
    program->emit(itemPath, itemInterface, "NewOverlayIcon");
    EXPECT_TRUE(eventually([&] { return corner() == green; }));
    for (const auto& [right, down] : {std::pair(-5, -5), std::pair(5, -5), std::pair(-5, 5)})
        EXPECT_EQ(colorAt(place.midX() + right, place.midY() + down), red) << right << " " << down;
    program->setProperty(itemPath, "OverlayIconPixmap", BusProgram::pixmaps({}, 0));
    program->emit(itemPath, itemInterface, "NewOverlayIcon");
    EXPECT_TRUE(eventually([&] { return corner() == red; }));
}

TEST_F(BusItems, ShowIconsOfAFolderOfTheirOwn) {
    const auto program = programWithItem("Own");
    const auto icon = untilShown("Own");
    ASSERT_TRUE(eventually([&] { return colorOf(icon) == red; }));
    writeSquare(home_ / "own" / "mine.svg", "#00ff00");
    program->setText(itemPath, "IconThemePath", home_ / "own");
    program->setText(itemPath, "IconName", "mine");
    program->emit(itemPath, itemInterface, "NewIcon");
    EXPECT_TRUE(eventually([&] { return colorOf(icon) == green; }));
}

TEST_F(BusItems, FollowTheIconTheme) {
    addTheme("First", "#00ff00");
    addTheme("Second", "#0000ff");
    const auto settings = home_ / "xsettingsd.conf";
    const auto choose = [&](const std::string& theme) {
        std::ofstream(settings) << "Net/IconThemeName \"" << theme << "\"\n";
    };
    choose("First");
    const auto manager = run({"xsettingsd", "-c", settings});
    const auto program = programWithItem("Themed");
    const auto icon = untilShown("Themed");
    program->setText(itemPath, "IconName", "themed");
    program->emit(itemPath, itemInterface, "NewIcon");
    ASSERT_TRUE(eventually([&] { return colorOf(icon) == green; }));
    choose("Second");
    manager.signal(SIGHUP);
    EXPECT_TRUE(eventually([&] { return colorOf(icon) == blue; }));
}

TEST_F(BusItems, ThatWereHiddenAreHiddenWhenVelmoStartsAgain) {
    const auto program = run({qtTrayProgram, noteFile()});
    const auto visible = programWithItem("Visible");
    untilShown("Visible");
    superDrag(untilShown("qt-tray"), farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(itemTitled("qt-tray")); }));
    stopVelmo();
    startVelmo();
    ASSERT_TRUE(eventually([&] {
        const auto icon = itemTitled("qt-tray");
        EXPECT_FALSE(isOnScreen(icon)) << "not even for a moment";
        return isHidden(icon);
    }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(itemTitled("qt-tray")); }));
    click(itemTitled("qt-tray"));
    EXPECT_TRUE(eventually([&] { return hasNoted("activated"); })) << "it is the same program's";
}

TEST_F(BusItems, ComeWithABusThatWasNotThereAtTheStart) {
    stopVelmo();
    stopSessionBus();
    std::filesystem::remove(home_ / "bus");
    startVelmo();
    const auto xembed = startTrayProgram("parcellite", "Parcellite");
    EXPECT_TRUE(isOnScreen(xembed));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); })) << "all else works";
    startSessionBus();
    awaitWatcher();
    const auto program = programWithItem("Late");
    untilShown("Late");
    EXPECT_TRUE(isOnScreen(xembed));
}

TEST_F(BusItems, ComeWithABusOfWhichOnlyItsFolderIsKnownAtTheStart) {
    stopVelmo();
    stopSessionBus();
    std::filesystem::remove(home_ / "bus");
    // Programs find the bus in the session's folder, whose name alone Velmo is told.
    environment_["DBUS_SESSION_BUS_ADDRESS"] = "";
    startVelmo();
    startSessionBus();
    awaitWatcher();
    const auto program = programWithItem("Late");
    untilShown("Late");
}

}  // namespace

}  // namespace velmo::desktop
