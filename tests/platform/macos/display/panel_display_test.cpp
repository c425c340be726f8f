#include "hidden_items/hidden_items_panel_controller.h"
#include "macos/appkit/ns_color.h"
#include "macos/appkit/ns_image_view.h"
#include "macos/appkit/ns_visual_effect_view.h"
#include "macos/macos_desktop.h"
#include "platform/macos/display/program_display_test.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/record_class.h"

#include <memory>

namespace velmo::macos {
namespace {

PanelItem item(std::uint32_t window, const char* name, double width, bool hasPicture = true) {
    PanelItem made{.info = {.windowID = window, .ownerName = name, .bounds = {0, 0, width, 24}}};
    if (hasPicture)
        made.image = Image{
            .content = Bitmap{1, 1, std::make_shared<const std::vector<std::uint8_t>>(4, 200), {width, 22}}};
    return made;
}

class PanelDisplayTest : public ProgramDisplayTest {
protected:
    PanelDisplayTest() {
        panel_.onActivate = [this](const PanelItem& chosen) { activated_.push_back(chosen.info.windowID); };
        panel_.onOpenSettings = [this] { ++settingsOpened_; };
    }

    void show(std::vector<PanelItem> hidden, std::vector<PanelItem> alwaysHidden) {
        const Screen screen{{0, 0, 1280, 800}, {0, 0, 1280, 776}, 1};
        panel_.show(std::move(hidden), std::move(alwaysHidden), screen, {600, 776, 30, 24});
        runFor(0.2);
    }
    static CGRect frameOf(const NSWindow& window) {
        return Message<"NSWindow", false, "frame", CGRect>::send(window.get());
    }

    MacosDesktop desktop_;
    HiddenItemsPanelController panel_{desktop_.platform()};
    std::vector<std::uint32_t> activated_;
    int settingsOpened_ = 0;
};

TEST_F(PanelDisplayTest, ShowsPicturesInTheirWidthsBelowTheToggle) {
    show({item(7, "Wide", 60), item(8, "Narrow", 20)}, {item(9, "Plain", 30, false)});
    const NSWindow shown = shownPanel();
    ASSERT_TRUE(shown);
    const CGRect frame = frameOf(shown);
    EXPECT_EQ(frame.origin.x + frame.size.width / 2, 615);
    EXPECT_EQ(frame.origin.y + frame.size.height, 770);
    EXPECT_EQ(frame.size.height, 36);
    const auto wide = named<NSButton>(contentOf(shown), "Wide");
    const auto narrow = named<NSButton>(contentOf(shown), "Narrow");
    ASSERT_TRUE(wide);
    ASSERT_TRUE(narrow);
    EXPECT_EQ(wide.frame().size.width, 64);
    EXPECT_EQ(narrow.frame().size.width, 24);
    EXPECT_EQ(narrow.frame().origin.x, wide.frame().origin.x + 66);
    EXPECT_EQ(allBelow<NSImageView>(wide).front().frame().size.height, 22);
    EXPECT_EQ(system.accessibilityLabels[shown.get()], "Hidden items");
    // It is of use while another application is in front.
    EXPECT_TRUE(system.showsToolTipsInBackground);
    EXPECT_TRUE((Message<"NSView", false, "acceptsFirstMouse:", bool, NSEvent>::send(wide.get(), NSEvent())));
    picture("panel");
}

TEST_F(PanelDisplayTest, FloatsAboveAllOnEverySpaceWithoutAGroundOfItsOwn) {
    show({item(7, "Wide", 60)}, {});
    const Id shown = shownPanel().get();
    const NSInteger level = Message<"NSWindow", false, "level", NSInteger>::send(shown);
    EXPECT_EQ(level, 101);
    const bool isOpaque = Message<"NSWindow", false, "isOpaque", bool>::send(shown);
    EXPECT_FALSE(isOpaque);
    const bool hidesOnDeactivate = Message<"NSWindow", false, "hidesOnDeactivate", bool>::send(shown);
    EXPECT_FALSE(hidesOnDeactivate);
    EXPECT_EQ(system.collectionBehavior, 265U);
    EXPECT_EQ(system.animationBehavior, 4);
    const auto styleMask = Message<"NSWindow", false, "styleMask", NSUInteger>::send(shown);
    EXPECT_EQ(styleMask, 32896U);
    const bool isFloating = Message<"NSPanel", false, "isFloatingPanel", bool>::send(shown);
    EXPECT_TRUE(isFloating);
    const bool hasShadow = Message<"NSWindow", false, "hasShadow", bool>::send(shown);
    EXPECT_TRUE(hasShadow);
    const bool isReleasedWhenClosed = Message<"NSWindow", false, "isReleasedWhenClosed", bool>::send(shown);
    EXPECT_FALSE(isReleasedWhenClosed);
    const auto ground = Message<"NSWindow", false, "backgroundColor", NSColor>::send(shown);
    EXPECT_TRUE(ground.isEqual(NSColor::clear()));
}

TEST_F(PanelDisplayTest, LiesOnRoundMaterialOfMenus) {
    show({item(7, "Wide", 60)}, {});
    EXPECT_TRUE(as<NSVisualEffectView>(contentOf(shownPanel())));
    EXPECT_EQ(system.material, 5);
    EXPECT_EQ(system.blendingMode, 0);
    EXPECT_EQ(system.materialState, 1);
    EXPECT_EQ(doubles::numberMember(system.layer, "cornerRadius"), 10);
    EXPECT_EQ(doubles::numberMember(system.layer, "masksToBounds"), 1);
}

TEST_F(PanelDisplayTest, ActivatesWhatIsClickedAndOpensTheSettings) {
    show({item(7, "Wide", 60)}, {item(9, "Plain", 30, false)});
    const NSView content = contentOf(shownPanel());
    clickInto(named<NSButton>(content, "Wide"));
    EXPECT_EQ(activated_, std::vector<std::uint32_t>{7});
    clickInto(named<NSButton>(content, "Plain"));
    EXPECT_EQ(activated_, (std::vector<std::uint32_t>{7, 9}));
    clickInto(named<NSButton>(content, "Velmo Settings"));
    EXPECT_EQ(settingsOpened_, 1);
}

TEST_F(PanelDisplayTest, MayBeTakenAwayByTheClickIntoIt) {
    show({item(7, "Wide", 60)}, {});
    panel_.onActivate = [this](const PanelItem& /*chosen*/) {
        panel_.close();
        show({item(8, "Other", 20)}, {});
    };
    clickInto(named<NSButton>(contentOf(shownPanel()), "Wide"));
    EXPECT_FALSE(named<NSButton>(contentOf(shownPanel()), "Wide"));
    EXPECT_TRUE(named<NSButton>(contentOf(shownPanel()), "Other"));
}

TEST_F(PanelDisplayTest, KeepsTheButtonsOfItemsThatStay) {
    show({item(7, "Wide", 60), item(8, "Narrow", 20)}, {});
    const auto narrow = named<NSButton>(contentOf(shownPanel()), "Narrow");
    show({item(8, "Narrow", 20)}, {});
    EXPECT_EQ(named<NSButton>(contentOf(shownPanel()), "Narrow"), narrow);
    EXPECT_FALSE(named<NSButton>(contentOf(shownPanel()), "Wide"));
}

TEST_F(PanelDisplayTest, ClosesOnEscapeAndOnAClickElsewhere) {
    show({item(7, "Wide", 60)}, {});
    EXPECT_FALSE(doubles::tellLocalMonitors(
        doubles::makeEvent({.type = EventType::keyDown, .keyCode = 53, .charactersIgnoringModifiers = ""})));
    EXPECT_FALSE(shownPanel());
    show({item(7, "Wide", 60)}, {});
    const auto press = doubles::makeEvent({.type = EventType::leftMouseDown, .windowNumber = 99999});
    EXPECT_TRUE(doubles::tellLocalMonitors(press));
    EXPECT_FALSE(shownPanel());
    show({}, {});
    EXPECT_TRUE(shows(contentOf(shownPanel()),
                      "No hidden items yet.\n⌘-drag icons to the left of the divider to hide them."));
    picture("panel-empty");
    doubles::tellGlobalMonitors(press);
    EXPECT_TRUE(runUntil([&] { return !panel_.isVisible(); }));
}

}  // namespace
}  // namespace velmo::macos
