#include "exported_menu_fixture.h"

#include <QKeyEvent>
#include <QScreen>
#include <QTimer>

#include <chrono>
#include <ctime>

namespace velmo {

namespace {

using Mark = ExportedMenuEntry::Mark;
using MarkState = ExportedMenuEntry::MarkState;

TEST_F(ExportedMenuViews, FollowChangesWhileTheyAreOpen) {
    auto first = labelled(1, "First");
    auto second = marked(2, Mark::check, MarkState::off);
    show({first, second});
    const QSize before = view_.size();
    const auto* kept = &action(1);
    first.label = "First, with a text that is a good deal longer than it was before";
    second.markState = MarkState::on;
    second.isEnabled = false;
    follow({first, second, labelled(3, "Third")});
    EXPECT_GT(view_.width(), before.width());
    EXPECT_GT(view_.height(), before.height());
    EXPECT_EQ(&action(1), kept) << "it keeps its place and the pointer";
    EXPECT_GT(count(markOf(1)), 10);
    EXPECT_FALSE(action(1).isEnabled());
    EXPECT_EQ(action(2).text(), QStringLiteral("Third"));
    follow({second});
    EXPECT_EQ(view_.actions().size(), 1);
    EXPECT_LT(view_.height(), before.height());
    EXPECT_TRUE(view_.isVisible());
}

TEST_F(ExportedMenuViews, EntriesThatHaveMovedCanBeChosen) {
    show({labelled(1, "One"), labelled(2, "Two"), labelled(3, "Three")});
    follow({labelled(3, "Three"), labelled(1, "One"), labelled(2, "Two")});
    ASSERT_EQ(action(0).text(), QStringLiteral("Three"));
    for (int index = 0; index < 3; ++index)
        action(index).trigger();
    EXPECT_EQ(chosen_, (std::vector<std::int32_t>{3, 1, 2}));
}

TEST_F(ExportedMenuViews, ShowEntriesOfOneIdOnce) {
    std::vector<ExportedMenuEntry> entries;
    for (int count = 0; count < 500; ++count)
        entries.push_back(labelled(1, "One"));
    entries.push_back(labelled(2, "Two"));
    show(entries);
    ASSERT_EQ(view_.actions().size(), 2);
    EXPECT_EQ(action(0).text(), QStringLiteral("One"));
    EXPECT_EQ(action(1).text(), QStringLiteral("Two"));
}

TEST_F(ExportedMenuViews, ManyEntriesMayChangeAtOnceWhileTheyAreOpen) {
    constexpr int most = 1000;
    show(numbered(most, "Entry "));
    // Of this thread: others use the machine, too.
    const auto processorTime = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    };
    for (const auto* name : {"Other entry ", "Third entry ", "Another entry "}) {
        const auto changed = numbered(most, name);
        const auto start = processorTime();
        follow(changed);
        EXPECT_LT(processorTime() - start, std::chrono::milliseconds(100));
    }
    EXPECT_EQ(action(most - 1).text(), QStringLiteral("Another entry 1000"));
    EXPECT_EQ(view_.width(), view_.sizeHint().width()) << "it has been measured";
    const auto before = processorTime();
    follow({labelled(most + 1, "Alone")});
    EXPECT_LT(processorTime() - before, std::chrono::milliseconds(100));
    EXPECT_EQ(view_.actions().size(), 1);
}

TEST_F(ExportedMenuViews, ThatAreTooLongScrollInsideTheScreenAlsoWhenTheyChange) {
    constexpr int most = 1000;
    const auto expectInside = [this] {
        const int usable = view_.screen()->geometry().height();
        EXPECT_LE(view_.height(), usable);
        EXPECT_GT(view_.height(), usable / 2);
        EXPECT_FALSE(view_.rect().contains(view_.actionGeometry(&action(most - 1))));
    };
    show(numbered(most, "Entry "));
    expectInside();
    follow(numbered(most, "Another entry "));
    expectInside();
    key(Qt::Key_Down);
    key(Qt::Key_Up);
    EXPECT_EQ(view_.activeAction(), &action(most - 1));
    EXPECT_TRUE(view_.rect().contains(view_.actionGeometry(&action(most - 1)))) << "it can be reached";
}

TEST_F(ExportedMenuViews, ThatAreFilledNearTheEdgesOfTheScreenMoveInsideOfIt) {
    const QRect screen = view_.screen()->geometry();
    follow({});
    view_.popup(screen.bottomRight() - QPoint(30, 10));
    QApplication::processEvents();
    follow(numbered(8, "Entry "));
    EXPECT_TRUE(screen.contains(view_.geometry()));
    for (int index = 0; index < 8; ++index)
        EXPECT_TRUE(view_.rect().contains(view_.actionGeometry(&action(index)))) << index;
}

TEST_F(ExportedMenuViews, SubmenusOpenWithTheirEntriesAndTellOfIt) {
    auto outer = labelled(1, "Outer");
    auto inner = labelled(2, "Inner");
    inner.children = {labelled(3, "Innermost")};
    outer.children = {inner};
    show({outer});
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    auto* submenu = action(0).menu();
    ASSERT_TRUE(submenu && submenu->isVisible());
    const auto top = [](const QMenu& menu) {
        return menu.mapToGlobal(menu.actionGeometry(menu.actions().at(0)).topLeft()).y();
    };
    EXPECT_EQ(top(*submenu), top(view_)) << "its first entry is beside the one that opened it";
    QTest::keyClick(submenu, Qt::Key_Right);
    auto* innermost = submenu->actions().at(0)->menu();
    ASSERT_TRUE(innermost && innermost->isVisible());
    QTest::keyClick(innermost, Qt::Key_Return);
    EXPECT_EQ(chosen_, std::vector<std::int32_t>{3});
    EXPECT_EQ(menu_.log_, (std::vector<std::string>{"opened 0", "opened 1", "opened 2", "closed 2",
                                                    "closed 1", "closed 0"}));
}

TEST_F(ExportedMenuViews, SubmenusAreBuiltWhenTheMenuAroundThemIsSeenAndFollowFromThenOn) {
    auto inner = labelled(100, "Inner");
    inner.children = numbered(30, "Entry ");
    auto outer = labelled(200, "Outer");
    outer.children = {inner};
    follow({outer});
    EXPECT_TRUE(action(0).menu()->actions().isEmpty());
    show({outer});
    auto* seen = action(0).menu();
    ASSERT_EQ(seen->actions().size(), 1);
    auto* within = seen->actions().at(0)->menu();
    EXPECT_TRUE(within->actions().isEmpty());
    outer.children[0].children = numbered(20, "Entry ");
    follow({outer});
    EXPECT_TRUE(within->actions().isEmpty());
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_EQ(within->actions().size(), 20);
    outer.children[0].children = numbered(10, "Entry ");
    auto late = labelled(300, "Late");
    late.children = {labelled(301, "Inner")};
    follow({outer, late});
    EXPECT_EQ(within->actions().size(), 10);
    EXPECT_EQ(action(1).menu()->actions().size(), 1);
}

TEST_F(ExportedMenuViews, TellTheTimeOfTheChoice) {
    menu_.root_.children = {labelled(7, "Seven")};
    QTimer::singleShot(50, [] {
        auto* popup = QApplication::activePopupWidget();
        ASSERT_NE(popup, nullptr);
        for (const auto code : {Qt::Key_Down, Qt::Key_Return}) {
            QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier);
            press.setTimestamp(4711);
            QCoreApplication::sendEvent(popup, &press);
        }
    });
    showExportedMenu(menu_, QPoint(10, 10));
    ASSERT_FALSE(menu_.log_.empty());
    EXPECT_EQ(menu_.log_.back(), "chosen 7 at 4711");
}

}  // namespace

}  // namespace velmo
