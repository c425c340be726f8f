#include "clock/calendar_nav_button_style.h"

#include "views/builders.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

Foreground colorOf(bool isEnabled) {
    return modifierOf<Foreground>(CalendarNavButtonStyle{isEnabled}.makeBody(text("x"), false)).value();
}

Background backgroundOf(bool isEnabled, bool isPressed) {
    return modifierOf<Background>(CalendarNavButtonStyle{isEnabled}.makeBody(text("x"), isPressed)).value();
}

TEST(CalendarNavButtonStyle, ShowsTheLabel) {
    const View label = text("x").with(padding(3));
    const View body = CalendarNavButtonStyle{}.makeBody(label, false);
    EXPECT_EQ(body.content, label.content);
    EXPECT_EQ(body.modifiers.front(), label.modifiers.front());
}

TEST(CalendarNavButtonStyle, IsPaleWhereItIsDisabled) {
    EXPECT_EQ(colorOf(true), (Foreground{{ColorRole::primary, 1}}));
    EXPECT_EQ(colorOf(false), (Foreground{{ColorRole::secondary, 0.5}}));
}

TEST(CalendarNavButtonStyle, IsDarkerWhileItIsPressed) {
    for (const bool isEnabled : {true, false}) {
        EXPECT_EQ(backgroundOf(isEnabled, false),
                  (Background{ShapeKind::roundedRectangle, 6, {ColorRole::primary, 0.06}}));
        EXPECT_EQ(backgroundOf(isEnabled, true),
                  (Background{ShapeKind::roundedRectangle, 6, {ColorRole::primary, 0.15}}));
    }
}

}  // namespace
}  // namespace velmo
