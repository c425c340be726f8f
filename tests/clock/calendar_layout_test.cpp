#include "clock/calendar_test.h"

namespace velmo {
namespace {

class CalendarLayout : public CalendarTest {
protected:
    void SetUp() override {
        // A Saturday.
        open(dateOf(2025, 7, 5, 13, 4, 9), monday);
        body_ = body();
    }
    const View& row(std::size_t place) const { return body_.children.at(place); }
    /// The cell of a day of July.
    const View& cell(std::size_t day) const { return row(dayGrid).children.at(leading() + day - 1); }

    static constexpr Foreground secondary{{ColorRole::secondary, 1}};
    static constexpr Grid columns{7, 30, 2, 2};
    View body_;
};

TEST_F(CalendarLayout, IsAColumnOfAFixedWidth) {
    EXPECT_EQ(std::get<VStack>(body_.content), (VStack{HorizontalAlignment::leading, 10}));
    EXPECT_EQ(body_.children.size(), 6U);
    EXPECT_EQ(body_.modifiers, (std::vector<Modifier>{Padding{{12, 12, 12, 12}}, Frame{246}}));
    EXPECT_TRUE(std::holds_alternative<Divider>(row(1).content));
}

TEST_F(CalendarLayout, HasTimeAndDateAtTheTop) {
    const View& rows = row(clockRows);
    EXPECT_EQ(std::get<VStack>(rows.content), (VStack{HorizontalAlignment::leading, 2}));
    EXPECT_EQ(textsOf(rows), (std::vector<std::string>{"13:04:09", "Saturday, 5 July 2025"}));
    EXPECT_EQ(rows.children.at(0).modifiers,
              std::vector<Modifier>{(Font{TextStyle::body, 30, FontWeight::medium, true})});
    EXPECT_EQ(rows.children.at(1).modifiers, (std::vector<Modifier>{Font{TextStyle::callout}, secondary}));
}

TEST_F(CalendarLayout, HasTheNavigationInItsOrder) {
    const View& rows = row(navigationRow);
    EXPECT_EQ(std::get<HStack>(rows.content).alignment, VerticalAlignment::center);
    ASSERT_EQ(rows.children.size(), 5U);
    EXPECT_TRUE(says(rows.children[0], "chevron.left"));
    EXPECT_TRUE(says(rows.children[0], "Previous month"));
    EXPECT_TRUE(says(rows.children[1], "July 2025"));
    EXPECT_EQ(modifierOf<Font>(rows.children[1]), Font{TextStyle::headline});
    EXPECT_TRUE(modifierOf<SingleLine>(rows.children[1])) << "a long name of a month makes no second line";
    EXPECT_TRUE(std::holds_alternative<Spacer>(rows.children[2].content));
    EXPECT_TRUE(says(rows.children[3], "Today"));
    EXPECT_EQ(modifierOf<Padding>(rows.children[3]), (Padding{{0, 0, 0, 4}})) << "apart from the arrow";
    EXPECT_TRUE(says(rows.children[4], "chevron.right"));
    EXPECT_TRUE(says(rows.children[4], "Next month"));
}

TEST_F(CalendarLayout, HasNavigationButtonsOfOneStyle) {
    for (const std::size_t place : {0U, 3U, 4U}) {
        const View& view = row(navigationRow).children.at(place);
        EXPECT_EQ(std::get<Button>(view.content).style, ButtonStyle::plain);
        ASSERT_EQ(view.children.size(), 2U);
        EXPECT_EQ(modifierOf<Background>(view.children[0])->color.opacity, 0.06);
        EXPECT_EQ(modifierOf<Background>(view.children[1])->color.opacity, 0.15);
        const bool isToday = place == 3;
        EXPECT_EQ(isDisabled(view), isToday);
        EXPECT_EQ(modifierOf<Foreground>(view.children[0])->color,
                  isToday ? (SemanticColor{ColorRole::secondary, 0.5}) : SemanticColor{ColorRole::primary});
    }
}

TEST_F(CalendarLayout, SizesTheNavigationButtons) {
    for (const std::size_t place : {0U, 4U})
        EXPECT_EQ(modifierOf<Frame>(row(navigationRow).children.at(place).children[0]), (Frame{22, 22}));
    const View& label = row(navigationRow).children[3].children[0];
    EXPECT_EQ(modifierOf<Font>(label), Font{TextStyle::caption});
    EXPECT_EQ(modifierOf<Padding>(label), (Padding{{0, 6, 0, 6}}));
}

TEST_F(CalendarLayout, HasTheWeekdaysOverTheDays) {
    const View& header = row(weekdayHeader);
    EXPECT_EQ(std::get<Grid>(header.content), columns);
    EXPECT_EQ(textsOf(header), (std::vector<std::string>{"M", "T", "W", "T", "F", "S", "S"}));
    for (const View& label : header.children)
        EXPECT_EQ(label.modifiers,
                  (std::vector<Modifier>{Font{TextStyle::caption2}, secondary, Frame{30, 16}}));
}

TEST_F(CalendarLayout, HasEmptyCellsOfFullSize) {
    EXPECT_EQ(std::get<Grid>(row(dayGrid).content), columns);
    const View& blank = row(dayGrid).children.front();
    EXPECT_TRUE(std::holds_alternative<EmptyView>(blank.content));
    EXPECT_EQ(blank.modifiers, (std::vector<Modifier>{Frame{30, 26}}));
}

TEST_F(CalendarLayout, DrawsAnUsualDay) {
    EXPECT_EQ(cell(4).modifiers,
              (std::vector<Modifier>{Font{TextStyle::body, 12, FontWeight::regular, true},
                                     Foreground{{ColorRole::primary, 1}}, Frame{26, 26},
                                     Background{ShapeKind::circle, 0, {ColorRole::clear, 1}}, Frame{30, 26},
                                     AccessibilityLabel{"Friday, 4 July 2025"}}));
    EXPECT_EQ(textsOf(cell(4)), std::vector<std::string>{"4"});
}

TEST_F(CalendarLayout, DrawsAWeekendDay) {
    EXPECT_EQ(modifierOf<Foreground>(cell(6)), secondary);
    EXPECT_EQ(modifierOf<Foreground>(cell(12)), secondary);
    EXPECT_EQ(modifierOf<Foreground>(cell(7)), (Foreground{{ColorRole::primary, 1}}));
}

TEST_F(CalendarLayout, DrawsTodayWhiteOnTheAccentEvenAtAWeekend) {
    EXPECT_EQ(cell(5).modifiers,
              (std::vector<Modifier>{Font{TextStyle::body, 12, FontWeight::bold, true},
                                     Foreground{{ColorRole::white, 1}}, Frame{26, 26},
                                     Background{ShapeKind::circle, 0, {ColorRole::accent, 1}}, Frame{30, 26},
                                     AccessibilityLabel{"Saturday, 5 July 2025"}}));
}

TEST_F(CalendarLayout, HasWeekAndDayAtTheBottom) {
    const View& footer = row(footerRow);
    ASSERT_EQ(footer.children.size(), 3U);
    EXPECT_TRUE(says(footer.children[0], "Week 27"));
    EXPECT_TRUE(std::holds_alternative<Spacer>(footer.children[1].content));
    EXPECT_TRUE(says(footer.children[2], "Day 186 of 365"));
    EXPECT_EQ(footer.modifiers, (std::vector<Modifier>{Font{TextStyle::caption2}, secondary}));
}

}  // namespace
}  // namespace velmo
