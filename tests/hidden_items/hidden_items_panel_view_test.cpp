#include "hidden_items/hidden_items_panel_view.h"

#include "hidden_items/panel_item_button_style.h"
#include "views/builders.h"
#include "views/view_outline.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class PanelView : public testing::Test {
protected:
    static PanelItem item(std::uint32_t windowID, const std::string& title, bool hasImage = true) {
        PanelItem item;
        item.info.windowID = windowID;
        item.info.ownerName = "Control Center";
        item.info.title = title;
        item.info.bounds = {10, 2, 30 + static_cast<double>(windowID), 24};
        if (hasImage)
            item.image = Image{Bitmap{30, 24, nullptr, {30, 24}}, false, {}};
        return item;
    }

    View body(std::vector<PanelItem> hidden, std::vector<PanelItem> alwaysHidden) {
        return HiddenItemsPanelView{std::move(hidden), std::move(alwaysHidden),
                                    [this](const PanelItem& item) { activated_.push_back(item); },
                                    [this] { ++settingsOpened_; }}
            .body();
    }
    static std::vector<std::string> rowOf(const View& body) {
        std::vector<std::string> row;
        for (const View& child : body.children)
            row.push_back(std::holds_alternative<Divider>(child.content) ? "|" : toolTipOf(child));
        return row;
    }

    std::vector<PanelItem> activated_;
    int settingsOpened_ = 0;
};

TEST_F(PanelView, ShowsBothSectionsAndTheSettings) {
    const View view = body({item(1, "a"), item(2, "b")}, {item(3, "c")});
    EXPECT_EQ(rowOf(view), (std::vector<std::string>{"a", "b", "|", "c", "|", "Velmo Settings"}));
    EXPECT_EQ(view.content, ViewContent(HStack{VerticalAlignment::center, 2}));
    EXPECT_EQ(view.modifiers, (std::vector<Modifier>{Padding{{5, 8, 5, 8}}}));
}

TEST_F(PanelView, LooksAsOutlined) {
    expectOutline(body({item(1, "a"), item(2, "b", false)}, {item(3, "c")}), "panel");
    expectOutline(body({}, {}), "panel_without_items");
}

TEST_F(PanelView, LeavesOutTheDividerOfAnEmptySection) {
    EXPECT_EQ(rowOf(body({item(1, "a")}, {})), (std::vector<std::string>{"a", "|", "Velmo Settings"}));
}

TEST_F(PanelView, StartsWithADividerWhereThereAreOnlyAlwaysHiddenItems) {
    EXPECT_EQ(rowOf(body({}, {item(1, "a")})), (std::vector<std::string>{"|", "a", "|", "Velmo Settings"}));
}

TEST_F(PanelView, TellsWhatToDoWhereThereIsNothingToShow) {
    const View view = body({}, {});
    ASSERT_EQ(view.children.size(), 1U);
    EXPECT_EQ(view.children.front(),
              text("No hidden items yet.\n⌘-drag icons to the left of the divider to hide them.")
                  .with(font(TextStyle::callout))
                  .with(foreground(ColorRole::secondary))
                  .with(Padding{{0, 8, 0, 8}}));
    EXPECT_TRUE(findAll<Button>(view).empty());
}

TEST_F(PanelView, ShowsAPictureAsWideAsItsItem) {
    const View view = body({item(7, "a")}, {});
    const View& label = view.children.front().children.front();
    EXPECT_EQ(std::get<ImageView>(label.content), (ImageView{*item(7, "a").image, true}));
    EXPECT_EQ(
        label.modifiers,
        (std::vector<Modifier>{Frame{.width = 37, .height = 22}, Frame{.height = 26}, Padding{{0, 2, 0, 2}},
                               Background{ShapeKind::roundedRectangle, 6, {ColorRole::clear, 1}}}));
}

TEST_F(PanelView, ShowsADashedSymbolForAnItemWithoutAPictureThatCanStillBeClicked) {
    const View view = body({item(7, "a", false)}, {});
    const View& label = view.children.front().children.front();
    EXPECT_EQ(std::get<ImageView>(label.content).image.content,
              (std::variant<Symbol, Drawing, Bitmap>(Symbol{"app.dashed", 14, {}})));
    EXPECT_EQ(label.modifiers.front(), Modifier(Frame{.width = 24, .height = 22}));
    EXPECT_EQ(label.modifiers[1], Modifier(Frame{.height = 26}));
    press(view, "app.dashed");
    EXPECT_EQ(activated_, (std::vector{item(7, "a", false)}));
}

TEST_F(PanelView, ActivatesTheItemThatIsPressed) {
    const View view = body({item(1, "a"), item(2, "b")}, {item(3, "c")});
    press(view, "b");
    press(view, "c");
    EXPECT_EQ(activated_, (std::vector{item(2, "b"), item(3, "c")}));
    EXPECT_EQ(settingsOpened_, 0);
}

TEST_F(PanelView, NamesItsEntriesForEverybody) {
    PanelItem nameless = item(9, "");
    const View view = body({item(1, "Mail"), nameless}, {});
    EXPECT_EQ(toolTipOf(view.children[1]), "Menu bar item");
    for (const std::size_t i : {0U, 1U})
        EXPECT_EQ(modifierOf<AccessibilityLabel>(view.children[i])->text, toolTipOf(view.children[i]));
    EXPECT_EQ(view.children[0].id, "1");
    EXPECT_EQ(view.children[1].id, "9");
}

TEST_F(PanelView, OpensTheSettings) {
    const View view = body({item(1, "a")}, {});
    press(view, "Velmo Settings");
    EXPECT_EQ(settingsOpened_, 1);
    const View& label = view.children.back().children.front();
    EXPECT_EQ(std::get<Symbol>(std::get<ImageView>(label.content).image.content),
              (Symbol{"gearshape", 13, FontWeight::medium}));
    EXPECT_EQ(label.modifiers.front(), Modifier(Frame{.width = 24, .height = 24}));
}

TEST_F(PanelView, SetsDividersApart) {
    const View view = body({item(1, "a")}, {});
    EXPECT_EQ(view.children[1].modifiers,
              (std::vector<Modifier>{Frame{.height = 16}, Padding{{0, 4, 0, 4}}}));
}

TEST_F(PanelView, ShadesAButtonThatIsPressed) {
    const View view = body({item(1, "a")}, {});
    const View& button = view.children.front();
    ASSERT_EQ(button.children.size(), 2U);
    EXPECT_EQ(std::get<Button>(button.content).style, ButtonStyle::plain);
    EXPECT_EQ(modifierOf<Background>(button.children[0])->color, (SemanticColor{ColorRole::clear, 1}));
    EXPECT_EQ(modifierOf<Background>(button.children[1]),
              (Background{ShapeKind::roundedRectangle, 6, {ColorRole::primary, 0.18}}));
    EXPECT_EQ(PanelItemButtonStyle().makeBody(text("x"), true),
              text("x")
                  .with(Padding{{0, 2, 0, 2}})
                  .with(Background{ShapeKind::roundedRectangle, 6, {ColorRole::primary, 0.18}}));
}

}  // namespace
}  // namespace velmo
