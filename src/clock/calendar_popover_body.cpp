#include "clock/calendar_nav_button_style.h"
#include "clock/calendar_popover_view.h"
#include "views/builders.h"

namespace velmo {

namespace {

// Points.
constexpr double width = 246;
constexpr double margin = 12;
constexpr double rowSpacing = 10;
constexpr double cellWidth = 30;
constexpr double cellHeight = 26;

/// A week's days.
constexpr Grid columns{7, cellWidth, 2, 2};

View navigationButton(const View& label, bool isEnabled, std::function<void()> action) {
    const CalendarNavButtonStyle style{isEnabled};
    return plainButton(style.makeBody(label, false), style.makeBody(label, true), std::move(action))
        .with(Disabled{!isEnabled});
}

View arrow(const char* symbolName, const char* meaning, ShortcutKey key, std::function<void()> action) {
    constexpr double extent = 22;
    return navigationButton(symbol(symbolName).with(Frame{extent, extent}), true, std::move(action))
        .with(AccessibilityLabel{meaning})
        .with(KeyboardShortcut{key});
}

}  // namespace

View CalendarPopoverView::body() {
    return vstack(rowSpacing, {clockRows(), divider(), navigationRow(), weekdayHeader(), dayGrid(), footer()},
                  HorizontalAlignment::leading)
        .with(padding(margin))
        .with(Frame{width});
}

View CalendarPopoverView::clockRows() const {
    constexpr double spacing = 2;
    constexpr double timeSize = 30;
    return vstack(spacing,
                  {text(dates_.formatted(now_, DateStyle::time))
                       .with(Font{TextStyle::body, timeSize, FontWeight::medium, true}),
                   text(dates_.formatted(now_, DateStyle::fullDate))
                       .with(font(TextStyle::callout))
                       .with(foreground(ColorRole::secondary))},
                  HorizontalAlignment::leading);
}

View CalendarPopoverView::navigationRow() {
    // The spacer is distance enough; the name of a month needs all the room there is.
    constexpr double spacing = 0;
    constexpr double titleMargin = 4;
    // With a large font both get smaller in the width that stays: no smaller than the days.
    constexpr double leastScale = 0.25;
    constexpr double todayMargin = 6;
    constexpr double todayWidth = 40;
    const bool isToday = calendar_.isSameMonth(displayedMonth_, now_);
    return hstack(spacing, {arrow("chevron.left", "Previous month", ShortcutKey::pageUp,
                                  lifetime_.guard([this] { showNeighbour(-1); })),
                            text(dates_.formatted(displayedMonth_, DateStyle::monthAndYear))
                                .with(font(TextStyle::headline))
                                .with(SingleLine{leastScale})
                                .with(padding(titleMargin, 0)),
                            spacer(),
                            navigationButton(text("Today")
                                                 .with(font(TextStyle::caption))
                                                 .with(SingleLine{leastScale})
                                                 .with(Frame{.maxWidth = todayWidth})
                                                 .with(padding(todayMargin, 0)),
                                             !isToday, lifetime_.guard([this] { showToday(); }))
                                .with(KeyboardShortcut{ShortcutKey::home})
                                .with(Padding{{0, 0, 0, titleMargin}}),
                            arrow("chevron.right", "Next month", ShortcutKey::pageDown,
                                  lifetime_.guard([this] { showNeighbour(1); }))});
}

View CalendarPopoverView::weekdayHeader() const {
    constexpr double height = 16;
    Views labels;
    for (const std::string& name : weekdaySymbols())
        labels.push_back(text(name)
                             .with(font(TextStyle::caption2))
                             .with(foreground(ColorRole::secondary))
                             .with(Frame{cellWidth, height}));
    return grid(columns, std::move(labels));
}

View CalendarPopoverView::dayGrid() const {
    Views cells;
    for (const auto& day : days())
        cells.push_back(day ? dayCell(*day) : View{EmptyView{}}.with(Frame{cellWidth, cellHeight}));
    return grid(columns, std::move(cells));
}

View CalendarPopoverView::dayCell(Date day) const {
    constexpr double size = 12;
    const bool isToday = calendar_.isSameDay(day, now_);
    const ColorRole color = isToday                      ? ColorRole::white
                            : calendar_.isInWeekend(day) ? ColorRole::secondary
                                                         : ColorRole::primary;
    return text(std::to_string(calendar_.component(CalendarUnit::day, day)))
        .with(Font{TextStyle::body, size, isToday ? FontWeight::bold : FontWeight::regular, true})
        .with(foreground(color))
        .with(Frame{cellHeight, cellHeight})
        .with(Background{ShapeKind::circle, 0, {isToday ? ColorRole::accent : ColorRole::clear}})
        .with(Frame{cellWidth, cellHeight})
        .with(AccessibilityLabel{dates_.formatted(day, DateStyle::fullDate)});
}

View CalendarPopoverView::footer() const {
    constexpr int usualDaysOfYear = 365;
    const int day = calendar_.ordinalityOfDay(CalendarUnit::year, now_).value_or(0);
    const int days = calendar_.dayCount(CalendarUnit::year, now_).value_or(usualDaysOfYear);
    const int week = calendar_.component(CalendarUnit::weekOfYear, now_);
    return hstack(std::nullopt, {text("Week " + std::to_string(week)), spacer(),
                                 text("Day " + std::to_string(day) + " of " + std::to_string(days))})
        .with(font(TextStyle::caption2))
        .with(foreground(ColorRole::secondary));
}

}  // namespace velmo
