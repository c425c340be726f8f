#include "exported_menu_fixture.h"

#include <QAccessible>

namespace velmo {

namespace {

using Mark = ExportedMenuEntry::Mark;
using MarkState = ExportedMenuEntry::MarkState;

TEST_F(ExportedMenuViews, ShowTextsWithMnemonicsAndShortcuts) {
    auto quit = labelled(4, "_Quit");
    quit.shortcut = "Ctrl+Q";
    follow({labelled(1, "_Open & close"), labelled(2, "snake__case _name"), labelled(3, "two\nlines\there"),
            quit, labelled(5, "end_")});
    EXPECT_EQ(action(0).text(), QStringLiteral("&Open && close"));
    EXPECT_EQ(action(1).text(), QStringLiteral("snake_case &name"));
    EXPECT_EQ(action(2).text(), QStringLiteral("two lines here"));
    EXPECT_EQ(action(3).text(), QStringLiteral("&Quit\tCtrl+Q"));
    EXPECT_EQ(action(4).text(), QStringLiteral("end"));
}

TEST_F(ExportedMenuViews, ShowTheBeginningOfALongText) {
    const std::string longest(100, 'x');
    std::string pairs;
    for (int count = 0; count < 60; ++count)
        pairs += "\xf0\x9f\x98\x80";
    auto longer = labelled(2, longest + "y");
    longer.shortcut = "Ctrl+S";
    follow({labelled(1, longest), longer, labelled(3, pairs), labelled(4, "x" + pairs)});
    const QString end(QChar(0x2026));
    const QString shown = QString::fromStdString(longest);
    const QString shownPairs = QString::fromStdString(pairs).left(100) + end;
    EXPECT_EQ(action(0).text(), shown);
    EXPECT_EQ(action(1).text(), shown + end + QStringLiteral("\tCtrl+S"));
    EXPECT_EQ(action(2).text(), shownPairs);
    EXPECT_EQ(action(3).text(), QStringLiteral("x") + shownPairs) << "no half of a character";
}

TEST_F(ExportedMenuViews, ShowLessOfEachTextWhereTheyAreManyMore) {
    const auto shownOf = [this](int count) {
        auto entries = numbered(count, "");
        entries.front() = labelled(1, std::string(200, 'x'));
        entries.front().shortcut = std::string(60, 'y');
        follow(std::move(entries));
        return action(0).text();
    };
    const auto text = [](int label, int shortcut) {
        const QString end(QChar(0x2026));
        return QString(label, QLatin1Char('x')) + end + QLatin1Char('\t') +
               QString(shortcut, QLatin1Char('y')) + end;
    };
    EXPECT_EQ(shownOf(200), text(100, 50));
    EXPECT_EQ(shownOf(202), text(99, 49));
    EXPECT_EQ(shownOf(400), text(50, 25));
    EXPECT_EQ(shownOf(1000), text(20, 10));
    EXPECT_EQ(shownOf(1200), text(20, 10));
}

TEST_F(ExportedMenuViews, ShowSeparatorsAndWhatIsDisabledOrHidden) {
    auto separator = labelled(1, "");
    separator.isSeparator = true;
    auto disabled = labelled(2, "Disabled");
    disabled.isEnabled = false;
    auto hidden = labelled(3, "Hidden");
    hidden.isVisible = false;
    follow({separator, disabled, hidden, labelled(4, "Usual")});
    EXPECT_TRUE(action(0).isSeparator());
    EXPECT_FALSE(action(1).isEnabled());
    EXPECT_FALSE(action(2).isVisible());
    EXPECT_FALSE(action(3).isSeparator());
    EXPECT_TRUE(action(3).isEnabled());
    EXPECT_TRUE(action(3).isVisible());
    action(1).trigger();
    EXPECT_TRUE(chosen_.empty());
    action(3).trigger();
    EXPECT_EQ(chosen_, std::vector<std::int32_t>{4});
}

TEST_F(ExportedMenuViews, MarkWhatIsOnAndWhatIsNotKnown) {
    follow({marked(1, Mark::check, MarkState::on), marked(2, Mark::radio, MarkState::on),
            marked(3, Mark::check, MarkState::mixed), marked(4, Mark::check, MarkState::off),
            labelled(5, "Cannot be marked")});
    const auto tick = markOf(0);
    const auto dot = markOf(1);
    const auto dash = markOf(2);
    EXPECT_GT(count(tick), 10);
    EXPECT_GT(count(dot), 10);
    EXPECT_GT(count(dash), 6);
    EXPECT_NE(tick, dot);
    EXPECT_NE(tick, dash);
    EXPECT_NE(dot, dash);
    EXPECT_EQ(count(markOf(3)), 0) << "there is room for it";
    EXPECT_FALSE(action(3).icon().isNull());
    EXPECT_TRUE(action(4).icon().isNull());
}

TEST_F(ExportedMenuViews, TellAssistiveTechnologiesOfMarks) {
    show({marked(1, Mark::check, MarkState::on), marked(2, Mark::radio, MarkState::off),
          labelled(3, "Cannot be marked")});
    auto* accessible = QAccessible::queryAccessibleInterface(&view_);
    ASSERT_EQ(accessible->childCount(), 3);
    const auto state = [&](int index) { return accessible->child(index)->state(); };
    EXPECT_TRUE(state(0).checkable);
    EXPECT_TRUE(state(0).checked);
    EXPECT_TRUE(state(1).checkable);
    EXPECT_FALSE(state(1).checked);
    EXPECT_FALSE(state(2).checkable);
    follow({marked(1, Mark::check, MarkState::off), marked(2, Mark::radio, MarkState::on),
            labelled(3, "Cannot be marked")});
    EXPECT_FALSE(state(0).checked);
    EXPECT_TRUE(state(1).checked);
}

TEST_F(ExportedMenuViews, ShowIconsAndInTheirPlaceTheMarkThatIsOn) {
    auto plain = labelled(1, "Icon");
    plain.icon = square(0xffff0000);
    auto unmarked = marked(2, Mark::check, MarkState::off);
    unmarked.icon = square(0xff00ff00);
    auto on = marked(3, Mark::check, MarkState::on);
    on.icon = square(0xff0000ff);
    auto symbolic = labelled(4, "Symbolic");
    symbolic.icon = square(0xff123456, true);
    follow({plain, unmarked, on, symbolic});
    EXPECT_EQ(iconOf(0).pixel(8, 8), 0xffff0000U);
    EXPECT_EQ(iconOf(1).pixel(8, 8), 0xff00ff00U);
    EXPECT_NE(iconOf(2).pixel(0, 0), 0xff0000ffU);
    EXPECT_EQ(iconOf(3).pixel(8, 8), view_.palette().color(QPalette::Text).rgba());
    EXPECT_EQ(iconOf(3, QIcon::Active).pixel(8, 8), view_.palette().color(QPalette::HighlightedText).rgba());
}

}  // namespace

}  // namespace velmo
