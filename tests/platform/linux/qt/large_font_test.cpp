#include "clock/calendar_popover_view.h"
#include "linux/dates/linux_dates.h"
#include "linux/qt/controls/tab_button.h"
#include "linux/qt/controls/text_label.h"
#include "linux/qt/style.h"
#include "platform/simulated/simulated_desktop.h"
#include "settings/settings_window_controller.h"
#include "view_fixture.h"

#include <QScrollArea>
#include <QScrollBar>

#include <cstdlib>
#include <set>

namespace velmo {

namespace {

/// Qt itself tells only kinds of widgets apart that it has made.
template <typename Kind>
QList<Kind*> allOf(const QWidget& ancestor) {
    QList<Kind*> found;
    for (auto* widget : ancestor.findChildren<QWidget*>()) {
        if (auto* wanted = dynamic_cast<Kind*>(widget))
            found.append(wanted);
    }
    return found;
}

/// A user's font, from the usual one to one that is hard to find room for.
class FontOfTheUser : public ViewTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override { use(GetParam()); }
    void TearDown() override { use("Inter 10"); }

    static void use(const char* font) {
        style::setAppearance({.dark = false, .scale = 1, .font = font});
        QApplication::setFont(style::font());
    }
    /// Every text has the room that it takes, and lies within the window from side to side.
    void expectWholeTexts() const {
        int count = 0;
        for (const auto* label : allOf<TextLabel>(host_)) {
            if (!label->isVisibleTo(&host_) || label->text().isEmpty())
                continue;
            ++count;
            const auto text = label->text().toStdString();
            const QSizeF wanted = label->sizeThatFits(label->width());
            EXPECT_LE(wanted.width(), label->width() + 1) << text;
            EXPECT_LE(wanted.height(), label->height() + 1) << text;
            expectWholeWherePossible(*label, 0.5);
            EXPECT_GE(placeOf(label).left(), 0) << text;
            EXPECT_LE(placeOf(label).right(), host_.width()) << text;
        }
        EXPECT_GT(count, 3);
    }
    /// A text in one line may be cut where that share of its size is still too much. Letters that advance by
    /// whole pixels need a little more.
    static void expectWholeWherePossible(const TextLabel& label, double leastScale) {
        constexpr double hinting = 1.05;
        const double natural = label.sizeThatFits(QWIDGETSIZE_MAX).width();
        if (natural * leastScale * hinting <= label.width()) {
            EXPECT_EQ(label.shownText().toStdString(), label.text().toStdString());
        }
    }
    /// What has no room below can be scrolled to.
    void expectAllOfItInTheScrolledArea() const {
        for (auto* area : allOf<QScrollArea>(host_)) {
            if (!area->isVisibleTo(&host_))
                continue;
            const int height = area->widget()->height();
            EXPECT_GE(area->widget()->childrenRect().height(), 100);
            EXPECT_LE(area->widget()->childrenRect().bottom(), height);
            EXPECT_EQ(area->verticalScrollBar()->maximum(), std::max(height - area->viewport()->height(), 0));
        }
    }
};

TEST_P(FontOfTheUser, CutsNothingInTheSettings) {
    SimulatedDesktop desktop;
    const auto preferences = std::make_shared<Preferences>(desktop.userDefaults());
    SettingsWindowController controller(
        preferences, [] {}, desktop.platform());
    for (const SettingsTab tab : allSettingsTabs) {
        SCOPED_TRACE(std::string(displayName(tab)));
        controller.show(tab);
        desktop.runLoop().runPosted();
        show(desktop.windows().windows().front()->content());
        EXPECT_EQ(host_.size(), QSize(540, 500));
        expectWholeTexts();
        expectAllOfItInTheScrolledArea();
        int end = 0;
        const auto buttons = allOf<TabButton>(host_);
        for (const auto* button : buttons) {
            EXPECT_GT(placeOf(button).left(), end);
            end = placeOf(button).right();
        }
        EXPECT_EQ(buttons.size(), 5);
        EXPECT_LT(end, 540);
    }
}

TEST_P(FontOfTheUser, CutsNothingInTheCalendar) {
    SimulatedDesktop desktop;
    // The longest names of a day and a month.
    desktop.runLoop().setNow(1758700000);
    CalendarPopoverView view(desktop.dates(), desktop.runLoop());
    show(view.body());
    EXPECT_EQ(host_.width(), 246);
    expectWholeTexts();
}

INSTANTIATE_TEST_SUITE_P(Of, FontOfTheUser,
                         testing::Values("Inter 10", "Inter 14", "Inter 18", "Inter 24", "Inter 30",
                                         "DejaVu Sans 20"),
                         [](const auto& test) {
                             auto name = std::string(test.param);
                             std::erase(name, ' ');
                             return name;
                         });

/// A calendar whose months are called as in a country of a test's choice.
class MonthTitle : public FontOfTheUser {
protected:
    void TearDown() override {
        unsetenv("LC_ALL");
        FontOfTheUser::TearDown();
    }
    /// Of the twelve titles of a year, whole, beside a whole "Today". Returns their heights.
    std::set<int> expectWholeTitles(const char* locale, const std::string& january) {
        constexpr Date middleOfJanuary = 1768478400;
        constexpr double month = 30.4375 * 86400;
        setenv("LC_ALL", locale, 1);
        LinuxDates dates(loop_);
        EXPECT_EQ(dates.formatted(middleOfJanuary, DateStyle::monthAndYear), january);
        SimulatedDesktop desktop;
        std::set<int> heights;
        for (int index = 0; index < 12; ++index) {
            const Date now = middleOfJanuary + index * month;
            desktop.runLoop().setNow(now);
            CalendarPopoverView view(dates, desktop.runLoop());
            show(view.body());
            EXPECT_EQ(host_.width(), 246);
            const auto name = dates.formatted(now, DateStyle::monthAndYear);
            heights.insert(expectWhole(name));
            expectWhole("Today");
        }
        return heights;
    }

private:
    /// Returns its height.
    int expectWhole(const std::string& text) const {
        for (const auto* label : allOf<TextLabel>(host_)) {
            if (!label->isVisibleTo(&host_) || label->text().toStdString() != text)
                continue;
            EXPECT_EQ(label->shownText().toStdString(), text);
            EXPECT_LE(placeOf(label).right(), host_.width() - 12);
            return label->height();
        }
        ADD_FAILURE() << text;
        return 0;
    }
};

TEST_P(MonthTitle, IsWholeAndOfOneHeight) {
    const auto heights = expectWholeTitles("en_US.UTF-8", "January 2026");
    EXPECT_EQ(heights.size(), 1);
    EXPECT_EQ(expectWholeTitles("de_DE.UTF-8", "Januar 2026"), heights);
    EXPECT_EQ(expectWholeTitles("es_ES.UTF-8", "enero de 2026"), heights);
    EXPECT_EQ(expectWholeTitles("ru_RU.UTF-8", "январь 2026\u202fг."), heights);
    EXPECT_EQ(expectWholeTitles("fr_FR.UTF-8", "janvier 2026"), heights);
    EXPECT_EQ(expectWholeTitles("pt_BR.UTF-8", "janeiro de 2026"), heights);
}

INSTANTIATE_TEST_SUITE_P(Of, MonthTitle,
                         testing::Values("Inter 10", "Inter 14", "Inter 18", "Inter 24", "Inter 30",
                                         "DejaVu Sans 10", "DejaVu Sans 20"),
                         [](const auto& test) {
                             auto name = std::string(test.param);
                             std::erase(name, ' ');
                             return name;
                         });

class TabStrip : public ViewTest {
protected:
    /// Within the width of the settings.
    QList<TabButton*> tabsIn(const char* font) {
        style::setAppearance({.dark = false, .scale = 1, .font = font});
        TabView tabs;
        Views pages;
        for (const char* title : {"General", "Hiding", "Clock", "Panel", "Spacing"}) {
            tabs.tabs.push_back({title, title, {}});
            pages.push_back(label(title));
        }
        tabs.selection = "General";
        show(View{tabs, pages}.with(Frame{.width = 540, .height = 300}));
        style::setAppearance({.dark = false, .scale = 1, .font = "Inter 10"});
        return allOf<TabButton>(host_);
    }
};

TEST_F(TabStrip, GivesTabsTheirWidthWhereThereIsRoom) {
    for (const auto* tab : tabsIn("Inter 10"))
        EXPECT_EQ(tab->width(), 76);
}

TEST_F(TabStrip, TakesMarginsFromTabsBeforeItTakesLetters) {
    const auto tabs = tabsIn("Inter 24");
    ASSERT_EQ(tabs.size(), 5);
    EXPECT_GE(placeOf(tabs.first()).left(), 8);
    EXPECT_LE(placeOf(tabs.last()).right(), 540 - 8);
    style::setAppearance({.dark = false, .scale = 1, .font = "Inter 24"});
    for (const auto* tab : tabs) {
        EXPECT_LT(tab->width(), tab->sizeHint().width());
        EXPECT_GE(tab->width(), tab->minimumSizeHint().width());
    }
    style::setAppearance({.dark = false, .scale = 1, .font = "Inter 10"});
}

}  // namespace

}  // namespace velmo
