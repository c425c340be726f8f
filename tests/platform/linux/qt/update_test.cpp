#include "linux/qt/controls/pop_up_button.h"
#include "linux/qt/controls/radio_option.h"
#include "linux/qt/controls/slider_control.h"
#include "linux/qt/controls/switch_control.h"
#include "linux/qt/controls/tab_button.h"
#include "linux/qt/controls/text_label.h"
#include "linux/qt/controls/view_button.h"
#include "linux/qt/style.h"
#include "view_fixture.h"

#include <QLineEdit>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>

namespace velmo {

namespace {

using Update = ViewTest;

View plainButton(const std::string& title, std::function<void()> action) {
    return {Button{ButtonStyle::plain, std::move(action)}, {label(title), label("down")}};
}

TEST_F(Update, NewDescriptionKeepsTheWidgetsThatStay) {
    show({VStack{}, {label("One"), label("Two")}});
    const auto before = host_.findChildren<TextLabel*>();
    show({VStack{}, {label("One"), label("Three")}});
    EXPECT_EQ(host_.findChildren<TextLabel*>(), before);
    EXPECT_EQ(before[1]->text(), "Three");
}

TEST_F(Update, NamedViewStaysItselfWhenOthersComeBeforeIt) {
    show({HStack{}, {plainButton("a", {}).identifiedBy("a"), plainButton("b", {}).identifiedBy("b")}});
    QPointer<ViewButton> second = host_.findChildren<ViewButton*>()[1];
    show({HStack{}, {plainButton("b", {}).identifiedBy("b")}});
    ASSERT_TRUE(second);
    EXPECT_EQ(only<ViewButton>(), second.get());
    EXPECT_EQ(second->accessibleName(), "b");
    EXPECT_EQ(second->x(), 0);
}

TEST_F(Update, ButtonCallsTheLatestActionOnce) {
    int first = 0;
    int second = 0;
    show(plainButton("Press", [&] { ++first; }));
    show(plainButton("Press", [&] { ++second; }));
    QTest::mouseClick(only<ViewButton>(), Qt::LeftButton);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST_F(Update, ButtonShowsItsOtherLabelWhileItIsPressed) {
    show(plainButton("up", {}));
    const QRect place = placeOf(only<TextLabel>());
    EXPECT_EQ(only<TextLabel>()->text(), "up");
    QTest::mousePress(only<ViewButton>(), Qt::LeftButton);
    EXPECT_EQ(only<TextLabel>()->text(), "down");
    EXPECT_TRUE(only<TextLabel>()->isVisible());
    EXPECT_EQ(placeOf(only<TextLabel>()), place);
    QTest::mouseRelease(only<ViewButton>(), Qt::LeftButton);
    EXPECT_EQ(only<TextLabel>()->text(), "up");
    EXPECT_EQ(placeOf(only<TextLabel>()), place);
}

TEST_F(Update, ButtonMayShowSomethingElseAltogetherWhileItIsPressed) {
    const View symbol = {ImageView{{Symbol{"gearshape", 13, FontWeight::regular}, true, {}}}};
    show({Button{ButtonStyle::plain, {}}, {framed(label("up"), 40, 20), framed(symbol, 40, 20)}});
    QTest::mousePress(only<ViewButton>(), Qt::LeftButton);
    EXPECT_TRUE(host_.findChildren<TextLabel*>().isEmpty());
    const auto shown = only<ViewButton>()->findChildren<QWidget*>();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first()->isVisible());
    EXPECT_FALSE(shown.first()->size().isEmpty());
    QTest::mouseRelease(only<ViewButton>(), Qt::LeftButton);
    EXPECT_EQ(only<ViewButton>()->findChildren<QWidget*>().size(), 1);
    EXPECT_EQ(only<TextLabel>()->text(), "up");
}

TEST_F(Update, ButtonThatWasPressedShowsWhatItsOtherLabelSaysByNow) {
    const auto described = [](const char* pressed) {
        return View{Button{ButtonStyle::plain, {}}, {label("up"), label(pressed)}};
    };
    show(described("first"));
    QTest::mouseClick(only<ViewButton>(), Qt::LeftButton);
    show(described("second"));
    QTest::mousePress(only<ViewButton>(), Qt::LeftButton);
    EXPECT_EQ(only<TextLabel>()->text(), "second");
    show(described("third"));
    EXPECT_EQ(only<TextLabel>()->text(), "third") << "also while it is pressed";
}

TEST_F(Update, BackgroundLiesBelowTheOneInsideOfItWhicheverCameFirst) {
    const auto described = [](ColorRole inner, ColorRole outer) {
        return framed(label(""), 20, 20)
            .with(Background{ShapeKind::roundedRectangle, 0, {inner}})
            .with(Padding{{10, 10, 10, 10}})
            .with(Background{ShapeKind::roundedRectangle, 0, {outer}});
    };
    const auto colorAt = [&](int x) { return host_.grab().toImage().pixelColor(x, 20); };
    const auto expectBoth = [&] {
        EXPECT_EQ(colorAt(20), style::color({ColorRole::green}));
        EXPECT_EQ(colorAt(5), style::color({ColorRole::red}));
    };
    show(described(ColorRole::green, ColorRole::red));
    expectBoth();
    show(described(ColorRole::clear, ColorRole::red));
    EXPECT_EQ(colorAt(20), style::color({ColorRole::red}));
    show(described(ColorRole::green, ColorRole::red));
    expectBoth();
    show(described(ColorRole::green, ColorRole::clear));
    show(described(ColorRole::green, ColorRole::red));
    expectBoth();
}

TEST_F(Update, BackgroundThatIsClearTakesNoWidget) {
    const auto described = [](ColorRole role) {
        return label("text").with(Background{ShapeKind::roundedRectangle, 0, {role}});
    };
    show(described(ColorRole::clear));
    const auto before = host_.findChildren<QWidget*>().size();
    show(described(ColorRole::accent));
    ASSERT_EQ(host_.findChildren<QWidget*>().size(), before + 1);
    EXPECT_EQ(host_.findChildren<QWidget*>().back()->size(), only<TextLabel>()->size());
    show(described(ColorRole::clear));
    EXPECT_EQ(host_.findChildren<QWidget*>().size(), before);
}

TEST_F(Update, ActionMayEndTheButtonThatItCameFrom) {
    show(plainButton("Press", [&] { host_.setContent(label("gone")); }));
    QTest::mouseClick(only<ViewButton>(), Qt::LeftButton);
    settle();
    EXPECT_TRUE(host_.findChildren<ViewButton*>().isEmpty());
}

TEST_F(Update, DisabledButtonDoesNothing) {
    int presses = 0;
    show(plainButton("Press", [&] { ++presses; }).with(Disabled{}));
    QTest::mouseClick(only<ViewButton>(), Qt::LeftButton);
    EXPECT_EQ(presses, 0);
    show(plainButton("Press", [&] { ++presses; }));
    QTest::mouseClick(only<ViewButton>(), Qt::LeftButton);
    EXPECT_EQ(presses, 1);
}

TEST_F(Update, KeyPressesTheButtonItIsTheShortcutOf) {
    int presses = 0;
    show(plainButton("Next", [&] { ++presses; }).with(KeyboardShortcut{ShortcutKey::pageDown}));
    host_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host_));
    QTest::keyClick(&host_, Qt::Key_PageUp);
    EXPECT_EQ(presses, 0);
    // Quick fingers lose nothing.
    QTest::keyClick(&host_, Qt::Key_PageDown);
    EXPECT_EQ(presses, 1);
    QTest::keyClick(&host_, Qt::Key_PageDown);
    EXPECT_EQ(presses, 2);
}

TEST_F(Update, ButtonThatIsDisabledWhileItIsPressedShowsItsOrdinaryLabel) {
    const auto next = [](bool isDisabled) { return plainButton("up", {}).with(Disabled{isDisabled}); };
    show(next(false));
    QTest::mousePress(only<ViewButton>(), Qt::LeftButton);
    ASSERT_EQ(only<TextLabel>()->text(), "down");
    show(next(true));
    EXPECT_EQ(only<TextLabel>()->text(), "up");
}

TEST_F(Update, SwitchReportsAndReturnsToWhatIsDescribed) {
    std::vector<bool> changes;
    show({Toggle{"Launch", false, [&](bool isOn) { changes.push_back(isOn); }}});
    auto* control = only<SwitchControl>();
    QTest::mouseClick(control, Qt::LeftButton);
    EXPECT_EQ(changes, std::vector<bool>{true});
    settle();
    EXPECT_FALSE(control->isChecked()) << "nobody has described it as on";
    show({Toggle{"Launch", true, {}}});
    EXPECT_TRUE(control->isChecked());
    EXPECT_EQ(changes.size(), 1U) << "a description is no change of the user's";
}

TEST_F(Update, TextFieldKeepsItsCaretWhenTheSameTextComesBack) {
    std::string content = "HH:mm";
    const auto described = [&] {
        return View{TextField{"Pattern", content, [&](const std::string& text) { content = text; }}};
    };
    show(described());
    auto* field = only<QLineEdit>();
    field->setFocus();
    field->setCursorPosition(2);
    QTest::keyClicks(field, "x");
    EXPECT_EQ(content, "HHx:mm");
    show(described());
    EXPECT_EQ(field->cursorPosition(), 3);
    EXPECT_EQ(field->text(), "HHx:mm");
    EXPECT_TRUE(field->hasFocus() || !field->isActiveWindow());
}

/// Describes what was typed anew in a later turn, as the program does.
class Typing : public ViewTest {
protected:
    void SetUp() override {
        describe();
        field_ = only<QLineEdit>();
        field_->setFocus();
    }

    void describe() {
        show({TextField{"Pattern", content_, [this](const std::string& text) {
                            content_ = text;
                            loop_.post([this] { describe(); });
                        }}});
    }

    void type(int key) {
        QTest::keyClick(field_, static_cast<Qt::Key>(key));
        settle();
    }

    std::string content_ = "HH:mm";
    QLineEdit* field_ = nullptr;
};

TEST_F(Typing, LettersStandInTheOrderInWhichTheyWereTyped) {
    field_->end(false);
    for (const char letter : {'A', 'B', 'C'})
        type(letter);
    EXPECT_EQ(content_, "HH:mmabc");
    EXPECT_EQ(field_->text(), "HH:mmabc");
    EXPECT_EQ(field_->cursorPosition(), 8);
    type(Qt::Key_Backspace);
    EXPECT_EQ(content_, "HH:mmab");
}

TEST_F(Typing, KeepsWhatCanBeUndone) {
    field_->end(false);
    type('A');
    EXPECT_TRUE(field_->isUndoAvailable());
    field_->undo();
    EXPECT_EQ(field_->text(), "HH:mm");
}

TEST_F(Typing, ReturnsToWhatIsDescribedWhereNobodyTakesTheEdit) {
    show({TextField{"Pattern", "fixed", {}}});
    type('A');
    EXPECT_EQ(field_->text(), "fixed");
}

TEST_F(Update, SliderRestsOnItsStepsAndStaysWithinItsRange) {
    double value = 5;
    const auto described = [&] {
        return View{Slider{value, 1, 30, 1, [&](double newValue) { value = newValue; }}};
    };
    show(described());
    auto* slider = only<SliderControl>();
    QTest::mouseClick(slider, Qt::LeftButton, {}, {slider->width() - 1, 10});
    EXPECT_EQ(value, 30);
    show(described());
    QTest::mouseClick(slider, Qt::LeftButton, {}, {0, 10});
    EXPECT_EQ(value, 1);
    show(described());
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(value, 2);
}

TEST_F(Update, MenuPickerShowsTheChoiceAndReportsAnother) {
    std::string chosen = "b";
    const auto described = [&] {
        return View{Picker{"Icon",
                           {{"a", "First", ""}, {"b", "Second", ""}},
                           chosen,
                           PickerStyle::menu,
                           [&](const std::string& tag) { chosen = tag; }}};
    };
    show(described());
    auto* picker = only<PopUpButton>();
    EXPECT_EQ(picker->currentText(), "Second");
    picker->setFocus();
    QTest::keyClick(picker, Qt::Key_Up);
    EXPECT_EQ(chosen, "a");
    show(described());
    EXPECT_EQ(picker->currentText(), "First");
}

TEST_F(Update, RadioGroupReportsTheOptionThatIsPressed) {
    std::string chosen = "a";
    show({Picker{"Clicking it",
                 {{"a", "First", "What it does"}, {"b", "Second", ""}},
                 chosen,
                 PickerStyle::radioGroup,
                 [&](const std::string& tag) { chosen = tag; }}});
    const auto options = host_.findChildren<RadioOption*>();
    ASSERT_EQ(options.size(), 2);
    EXPECT_TRUE(options[0]->isChecked());
    QTest::mouseClick(options[1], Qt::LeftButton, {}, {options[1]->width() - 2, 5});
    EXPECT_EQ(chosen, "b") << "also beside the mark";
    settle();
    EXPECT_TRUE(options[0]->isChecked()) << "until another is described";
}

View tabs(const std::string& selection, std::function<void(const std::string&)> onSelect = {}) {
    Views sections(30, View{Section{"Header", ""}, {label("row")}});
    return View{TabView{{{"one", "One", {Symbol{"clock"}}}, {"two", "Two", {Symbol{"eye"}}}},
                        selection,
                        std::move(onSelect)},
                {{Form{}, sections}, {Form{}, {View{Section{"Other", ""}, {label("other row")}}}}}}
        .with(Frame{.width = 540, .height = 500});
}

TEST_F(Update, TabsReportAPressAndShowTheChosenPage) {
    std::string chosen = "one";
    show(tabs(chosen, [&](const std::string& tag) { chosen = tag; }));
    EXPECT_EQ(host_.size(), QSize(540, 500));
    QTest::mouseClick(host_.findChildren<TabButton*>()[1], Qt::LeftButton);
    EXPECT_EQ(chosen, "two");
    show(tabs(chosen));
    const auto labels = host_.findChildren<TextLabel*>();
    const auto isSeen = [&](const QString& text) {
        return std::any_of(labels.begin(), labels.end(),
                           [&](const auto* one) { return one->text() == text && one->isVisible(); });
    };
    EXPECT_TRUE(isSeen("other row"));
    EXPECT_FALSE(isSeen("row"));
}

TEST_F(Update, FormKeepsItsScrollPosition) {
    show(tabs("one"));
    auto* bar = host_.findChildren<QScrollArea*>().first()->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0) << "more than fits scrolls instead of being clipped";
    bar->setValue(120);
    View changed = tabs("one");
    changed.children[0].children[0].children[0] = label("another row");
    show(changed);
    EXPECT_EQ(bar->value(), 120);
}

}  // namespace

}  // namespace velmo
