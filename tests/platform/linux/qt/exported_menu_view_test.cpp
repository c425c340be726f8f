#include "linux/qt/exported_menu_view.h"

#include "linux/qt/style.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmo {

namespace {

using Mark = ExportedMenuEntry::Mark;
using MarkState = ExportedMenuEntry::MarkState;

class FakeMenu : public ExportedMenu {
public:
    const ExportedMenuEntry& root() const override { return root_; }
    bool hasEnded() const override { return false; }
    void setOnChange(std::function<void()> handler) override { onChange_ = std::move(handler); }
    void opened(std::int32_t id) override { log_.push_back("opened " + std::to_string(id)); }
    void closed(std::int32_t id) override { log_.push_back("closed " + std::to_string(id)); }
    void chosen(std::int32_t id, std::uint32_t time) override {
        log_.push_back("chosen " + std::to_string(id) + " at " + std::to_string(time));
    }

    ExportedMenuEntry root_;
    std::function<void()> onChange_;
    std::vector<std::string> log_;
};

ExportedMenuEntry labelled(std::int32_t id, const std::string& text) {
    ExportedMenuEntry entry;
    entry.id = id;
    entry.label = text;
    return entry;
}

ExportedMenuEntry marked(std::int32_t id, Mark mark, MarkState state) {
    auto entry = labelled(id, "Marked");
    entry.mark = mark;
    entry.markState = state;
    return entry;
}

/// A bitmap of one colour, 0xAARRGGBB.
Image square(std::uint32_t color, bool isTemplate = false) {
    constexpr int side = 16;
    std::vector<std::uint8_t> bytes;
    for (int pixel = 0; pixel < side * side; ++pixel) {
        for (const int shift : {0, 8, 16, 24})
            bytes.push_back(static_cast<std::uint8_t>(color >> shift));
    }
    const auto pixels = std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes));
    return {Bitmap{side, side, pixels, {}}, isTemplate, {}};
}

class ExportedMenuViews : public testing::Test {
protected:
    static void SetUpTestSuite() { qApp->setStyleSheet(style::sheet()); }
    static void TearDownTestSuite() { qApp->setStyleSheet({}); }

    void follow(std::vector<ExportedMenuEntry> entries) {
        menu_.root_.children = std::move(entries);
        view_.follow(menu_.root_);
    }

    void show(std::vector<ExportedMenuEntry> entries) {
        follow(std::move(entries));
        view_.popup(QPoint(10, 10));
        QApplication::processEvents();
    }

    QAction& action(qsizetype index) const { return *view_.actions().at(index); }

    QImage iconOf(qsizetype index, QIcon::Mode mode = QIcon::Normal) const {
        return action(index).icon().pixmap(QSize(16, 16), mode).toImage();
    }

    /// Of the icon's mark, whatever its colour is.
    std::vector<bool> markOf(qsizetype index) const {
        const QImage image = iconOf(index);
        std::vector<bool> dots;
        for (int row = 0; row < image.height(); ++row) {
            for (int column = 0; column < image.width(); ++column)
                dots.push_back(qAlpha(image.pixel(column, row)) > 128);
        }
        return dots;
    }

    static int count(const std::vector<bool>& dots) {
        return static_cast<int>(std::count(dots.begin(), dots.end(), true));
    }

    std::vector<ExportedMenuEntry> numbered(int count, const std::string& text) {
        std::vector<ExportedMenuEntry> entries;
        for (int id = 1; id <= count; ++id)
            entries.push_back(labelled(id, text + std::to_string(id)));
        return entries;
    }

    void key(int code) { QTest::keyClick(&view_, static_cast<Qt::Key>(code)); }

    FakeMenu menu_;
    std::vector<std::int32_t> chosen_;
    ExportedMenuView view_{menu_, [this](std::int32_t id) { chosen_.push_back(id); }};
};

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
