#include "built_files.h"
#include "session_bus_desktop.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace velmo::desktop {

namespace {

constexpr std::uint32_t panelColor = 0xfafafc;
int channel(std::uint32_t pixel, int shift) {
    return static_cast<int>((pixel >> shift) & 0xff);
}

/// The panel with real programs of both protocols in both of its sections.
class PanelOfPrograms : public SessionBusDesktop {
protected:
    void SetUp() override { DesktopSession::SetUp(); }
    void TearDown() override {
        programs_.clear();
        SessionBusDesktop::TearDown();
    }

    void start(int scale) {
        scale_ = scale;
        startServer(scale == 2 ? "2560x1440x24" : "1280x720x24");
        addToResources("Xft.dpi:\t" + std::to_string(96 * scale) + "\n");
        startWindowManager();
        startSessionBus();
        writeDefaults({{"alwaysHiddenEnabled", true},
                       {"clickAction", "showPanel"},
                       {"autoRehide", false},
                       {"hideOnClickOutside", false},
                       {"statusItemOrder",
                        {"Velmo.Toggle", "Velmo.Divider", "python3.velmo-indicator", "parcellite.Parcellite",
                         "Velmo.AlwaysHiddenDivider", "qt_tray.qt-tray", "wx_tray.py.Wx_tray"}}});
        startVelmoOnBus();
        programs_.push_back(run({"parcellite"}));
        programs_.push_back(
            run({"/usr/bin/python3", std::string(clientScripts) + "/indicator.py", noteFile()}));
        programs_.push_back(
            run({"/usr/bin/python3", std::string(clientScripts) + "/wx_tray.py", noteFile()}));
        programs_.push_back(run({qtTrayProgram, noteFile(), "popup"}));
        const auto onBus = [&](const std::string& title) {
            EXPECT_TRUE(eventually([&] { return isHidden(itemTitled(title)); }, milliseconds(20000)))
                << title;
            return itemTitled(title);
        };
        icons_ = {x().parent(iconOf("Parcellite")), onBus("Volume"), x().parent(iconOf("Wx_tray")),
                  onBus("qt-tray")};
        ASSERT_TRUE(eventually([&] { return allAreHidden(); }));
    }

    bool allAreHidden() const {
        return std::all_of(icons_.begin(), icons_.end(), [&](auto icon) { return isHidden(icon); });
    }
    bool allAreShown() const {
        return std::all_of(icons_.begin(), icons_.end(), [&](auto icon) { return isOnScreen(icon); });
    }

    /// Of the icon at this place from the left.
    Area picture(std::size_t index) const {
        const int button = pictureWidth + 2 * padding;
        const int number = static_cast<int>(index);
        const int section = index < alwaysHiddenFrom ? 0 : dividerWidth + gap;
        const int left = sideEdge + section + number * (button + gap) + padding;
        return {panel()->x + left * scale_, panel()->y + topEdge * scale_, pictureWidth * scale_,
                pictureHeight * scale_};
    }

    /// The part of the bar that a picture shows.
    Area iconInBar(std::size_t index) const {
        auto area = x().area(icons_[index]).value_or(Area{});
        area.y += (area.height - pictureHeight * scale_) / 2;
        area.height = pictureHeight * scale_;
        return area;
    }

    /// Closes the panel by the click.
    void clickPicture(std::size_t index) {
        ASSERT_TRUE(eventually([&] { return allAreHidden(); }));
        openPanel();
        const auto place = picture(index);
        xdotool({"mousemove", std::to_string(place.midX()), std::to_string(place.midY()), "click", "1"});
        ASSERT_TRUE(eventually([&] { return !panel() && isOnScreen(icons_[index]); }));
    }

    void hideAgain() {
        click(divider());
        ASSERT_TRUE(eventually([&] { return allAreHidden(); }));
        movePointer(300, 400);
    }

    /// Points: of the picture of an icon, and of what is around it in the panel.
    static constexpr int pictureWidth = 30;
    static constexpr int pictureHeight = 22;
    static constexpr int sideEdge = 8;
    static constexpr int topEdge = 7;
    static constexpr int padding = 2;
    static constexpr int gap = 2;
    static constexpr int dividerWidth = 9;

    /// Left to right, as in the panel: two of the hidden section, two of the always-hidden one; in each, the
    /// first is in the X11 tray, and the second on the bus.
    std::array<xcb_window_t, 4> icons_{};
    static constexpr std::size_t parcellite = 0;
    static constexpr std::size_t volume = 1;
    static constexpr std::size_t wx = 2;
    static constexpr std::size_t qt = 3;
    static constexpr std::size_t alwaysHiddenFrom = 2;
    int scale_ = 1;
    std::vector<ChildProcess> programs_;
};

/// What is seen of an icon before the bar, and of its picture before the panel, which is a little brighter.
void expectSameIcon(const std::vector<std::uint32_t>& inBar, const std::vector<std::uint32_t>& inPanel,
                    int width) {
    ASSERT_EQ(inBar.size(), inPanel.size());
    for (std::size_t index = 0; index < inBar.size(); ++index) {
        const auto place = [&] {
            const int number = static_cast<int>(index);
            return std::to_string(number % width) + ", " + std::to_string(number / width);
        };
        if (inBar[index] == lightBar) {
            ASSERT_EQ(inPanel[index], panelColor) << place() << ": nothing is there but the panel";
            continue;
        }
        for (const int shift : {0, 8, 16}) {
            const int brightness = channel(panelColor, shift) - channel(lightBar, shift);
            const int difference = channel(inPanel[index], shift) - channel(inBar[index], shift);
            ASSERT_GE(difference, -1) << place();
            ASSERT_LE(difference, brightness + 1) << place();
        }
    }
}

/// The pixel is clearly of the icon.
bool isMarked(std::uint32_t pixel) {
    constexpr int clearly = 40;
    int difference = 0;
    for (const int shift : {0, 8, 16})
        difference = std::max(difference, std::abs(channel(pixel, shift) - channel(lightBar, shift)));
    return difference > clearly;
}

class PicturesOfPrograms : public PanelOfPrograms, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(AtScale, PicturesOfPrograms, testing::Values(1, 2),
                         testing::PrintToStringParamName());

TEST_P(PicturesOfPrograms, AreThoseOfTheIconsPixelByPixel) {
    start(GetParam());
    openPanel();
    EXPECT_TRUE(eventually([&] { return allAreHidden(); })) << "hidden again after their pictures were taken";
    movePointer(300, 400);
    constexpr int settingsButton = 28;
    const int width =
        2 * sideEdge + 4 * (pictureWidth + 2 * padding) + 2 * dividerWidth + settingsButton + 6 * gap;
    EXPECT_EQ(panel()->width, width * scale_);
    std::vector<std::vector<std::uint32_t>> pictures;
    for (std::size_t index = 0; index < icons_.size(); ++index)
        pictures.push_back(x().pixels(picture(index)));

    xdotool({"key", "Escape"});
    ASSERT_TRUE(eventually([&] { return !panel(); }));
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return allAreShown(); }));
    movePointer(300, 400);
    xdotool({"sleep", "0.3"});
    for (std::size_t index = 0; index < icons_.size(); ++index) {
        SCOPED_TRACE(index);
        ASSERT_EQ(iconInBar(index).width, pictureWidth * scale_);
        const auto icon = x().pixels(iconInBar(index));
        EXPECT_GT(std::count_if(icon.begin(), icon.end(), isMarked), 50 * scale_ * scale_)
            << "something is there to be compared";
        expectSameIcon(icon, pictures[index], pictureWidth * scale_);
        for (std::size_t other = 0; other < index; ++other)
            EXPECT_NE(pictures[other], pictures[index]);
    }
}

TEST_F(PanelOfPrograms, OpensTheMenuOfAnX11IconInTheHiddenSection) {
    start(1);
    programs_.push_back(run({"/usr/bin/python3", std::string(clientScripts) + "/clipboard.py", noteFile()}));
    ASSERT_TRUE(eventually([&] { return hasNoted("second"); }, milliseconds(20000)));
    // The clipboard's icon looks at it now and then.
    xdotool({"sleep", "1"});
    EXPECT_FALSE(hasMenu("Parcellite"));
    clickPicture(parcellite);
    EXPECT_TRUE(isHidden(icons_[wx])) << "the other section stays hidden";
    ASSERT_TRUE(eventually([&] { return hasMenu("Parcellite"); }));
    // The pointer is left over the icon.
    EXPECT_LE(std::abs(iconInBar(parcellite).midX() - x().pointer().first), 1);
    xdotool({"sleep", "0.4"});
    EXPECT_EQ(notes(), (std::vector<std::string>{"first", "second"}));
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] {
        return notes() == std::vector<std::string>{"first", "second", "first"};
    })) << "what was copied before is in the clipboard again";
}

TEST_F(PanelOfPrograms, OpensTheMenuOfABusItemInTheHiddenSection) {
    start(1);
    clickPicture(volume);
    EXPECT_TRUE(isHidden(icons_[qt])) << "the other section stays hidden";
    ASSERT_TRUE(eventually([&] { return openMenu().has_value(); }));
    EXPECT_FALSE(hasNoted("mute"));
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("mute"); }));
    EXPECT_EQ(notes().size(), 1U);
}

TEST_F(PanelOfPrograms, OpensTheMenusOfAlwaysHiddenIconsOneAfterAnother) {
    start(1);
    clickPicture(wx);
    EXPECT_TRUE(eventually([&] { return allAreShown(); }));
    ASSERT_TRUE(eventually([&] { return hasMenu("Wx_tray"); }));
    EXPECT_TRUE(notes().empty());
    xdotool({"sleep", "0.4"});
    chooseByKeys({"Down", "Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("World"); }));
    hideAgain();

    clickPicture(qt);
    ASSERT_TRUE(eventually([&] { return hasNoted("activated") && hasMenu("qt_tray"); }));
    xdotool({"sleep", "0.4"});
    chooseByKeys({"p", "Down", "Return"});
    EXPECT_TRUE(eventually([&] { return hasNoted("Lisbon"); }));
    EXPECT_EQ(notes(), (std::vector<std::string>{"World", "activated", "Lisbon"}));
}

}  // namespace

}  // namespace velmo::desktop
