#include "macos/views/view_host.h"
#include "macos/appkit/ns_accessibility.h"
#include "macos/appkit/ns_box.h"
#include "macos/appkit/ns_image_view.h"
#include "macos/appkit/ns_pop_up_button.h"
#include "macos/appkit/ns_slider.h"
#include "macos/appkit/ns_text_field.h"
#include "macos/services/macos_run_loop.h"
#include "platform/macos/display/display_test.h"
#include "platform/macos/doubles/display.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace velmo::macos {
namespace {

class ViewHostTest : public DisplayTest {
protected:
    ViewHostTest() {
        window.setContentView(host.view());
        host.place({0, 0, 400, 300});
    }
    ~ViewHostTest() override { window.close(); }

    void show(View view) { host.setContent(std::move(view)); }
    template <typename Handle>
    std::vector<Handle> all() const {
        return allBelow<Handle>(host.view());
    }
    /// Empty where assistive programs are not told of the view, or of none.
    std::string roleOf(const NSView& view) const {
        const auto element = system.accessibilityElements.find(view.get());
        const auto role = system.accessibilityRoles.find(view.get());
        const bool isTold = element != system.accessibilityElements.end() && element->second;
        return isTold && role != system.accessibilityRoles.end() ? role->second : "";
    }
    /// Controls are told of as their cells; those that were elements, too, would be told of twice.
    bool isHiddenFromAssistance(const NSView& view) const {
        const NSCell cell = as<NSControl>(view).cell();
        EXPECT_FALSE(cell && system.accessibilityElements.contains(view.get()));
        const auto element = system.accessibilityElements.find(cell ? cell.get() : view.get());
        return element != system.accessibilityElements.end() && !element->second;
    }
    NSTextField labelOf(const std::string& words) const {
        for (const NSTextField& label : all<NSTextField>())
            if (label.stringValue().text() == words)
                return label;
        return {};
    }

    MacosRunLoop loop;
    NSWindow window = doubles::makeWindow({{100, 100}, {400, 300}}, NSWindowStyleMask{1});
    ViewHost host{loop};
};

View text(const std::string& words) {
    return {Text{{{words}}}};
}

Picker twoOptions(PickerStyle style) {
    return {.title = "Click",
            .options = {{"one", "Reveal", "In the menu bar."}, {"two", "Open", ""}},
            .selection = "one",
            .style = style};
}

TEST_F(ViewHostTest, WantsWholePoints) {
    show(View{EmptyView{}}.with(Frame{.width = 100.2, .height = 20.5}));
    EXPECT_EQ(host.fittingSize(), (Size{101, 21}));
    show(View{EmptyView{}}.with(Frame{.width = 100, .height = 20}));
    EXPECT_EQ(host.fittingSize(), (Size{100, 20}));
}

TEST_F(ViewHostTest, NamesGroupsByTheirTitles) {
    const View picker{twoOptions(PickerStyle::radioGroup)};
    show({Form{}, {View{Section{.header = "Toggle"}, {picker}}, View{Section{}, {text("row")}}}});
    const auto group = named<NSView>(host.view(), "Toggle");
    ASSERT_TRUE(group);
    EXPECT_EQ(roleOf(group), groupRole.value().text());
    int groups = 0;
    for (const NSView& one : all<NSView>())
        groups += roleOf(one) == groupRole.value().text() ? 1 : 0;
    EXPECT_EQ(groups, 1);
    const auto options = named<NSView>(host.view(), "Click");
    ASSERT_TRUE(options);
    EXPECT_EQ(roleOf(options), radioGroupRole.value().text());
    const auto buttons = allBelow<NSButton>(options);
    ASSERT_EQ(buttons.size(), 2U);
    EXPECT_EQ(system.accessibilityHelps[buttons[0].get()], "In the menu bar.");
    EXPECT_EQ(system.accessibilityHelps[buttons[1].get()], "");
    EXPECT_TRUE(isHiddenFromAssistance(labelOf("In the menu bar.")));
}

TEST_F(ViewHostTest, TellsOfNoTextWithoutWords) {
    const auto showWith = [&](const std::string& words) {
        show(
            {Form{},
             {View{Section{.header = words, .footer = words},
                   {View{twoOptions(PickerStyle::radioGroup)}, View{Toggle{.title = words}}, text(words)}}}});
    };
    showWith("");
    int texts = 0;
    for (const NSTextField& label : all<NSTextField>()) {
        EXPECT_EQ(label.isHidden(), label.stringValue().text().empty());
        texts += label.isHidden() ? 0 : 1;
    }
    // The name of the options and the description of one of them.
    EXPECT_EQ(texts, 2);
    showWith("words");
    for (const NSTextField& label : all<NSTextField>())
        EXPECT_EQ(label.isHidden(), label.stringValue().text().empty());
}

TEST_F(ViewHostTest, HasWhatAGroupHoldsInIt) {
    const View picker{twoOptions(PickerStyle::radioGroup)};
    show({Form{},
          {View{Section{.header = "Toggle"}, {picker, text("below")}}, View{Section{}, {text("row")}}}});
    const auto group = named<NSView>(host.view(), "Toggle");
    ASSERT_TRUE(group);
    EXPECT_EQ(allBelow<NSButton>(group).size(), 2U);
    EXPECT_TRUE(shows(group, "below"));
    EXPECT_FALSE(shows(group, "row"));
}

TEST_F(ViewHostTest, TellsAssistiveProgramsOfNoBoxOrLine) {
    show({Form{},
          {View{Section{.header = "Toggle"}, {text("one"), text("two")}},
           View{Section{}, {View{Divider{}}}}}});
    EXPECT_EQ(all<NSBox>().size(), 4U);
    for (const NSBox& box : all<NSBox>())
        EXPECT_TRUE(isHiddenFromAssistance(box));
}

TEST_F(ViewHostTest, PutsWhatIsSeenOfABoxWhereItBelongs) {
    const View section{Section{}, {text("one"), text("two")}};
    show(section);
    const CGRect group = all<NSBox>().at(0).frame();
    const CGRect line = all<NSBox>().at(1).frame();
    system.boxMargin = 3;
    show(text("other"));
    show({Divider{}});
    EXPECT_EQ(all<NSBox>().at(0).frame().size.height, 7);
    show(section);
    EXPECT_EQ(all<NSBox>().at(0).frame().origin.x, group.origin.x - 3);
    EXPECT_EQ(all<NSBox>().at(0).frame().size.width, group.size.width + 6);
    EXPECT_EQ(all<NSBox>().at(1).frame().origin.y, line.origin.y - 3);
    EXPECT_EQ(all<NSBox>().at(1).frame().size.height, line.size.height + 6);
}

TEST_F(ViewHostTest, LiesOnWholePoints) {
    const auto inOddRoom = [](View view) {
        return std::move(view)
            .with(Background{.color = {ColorRole::accent}})
            .with(Frame{.width = 200.5, .height = 41.5});
    };
    const View image{ImageView{{.content = Symbol{"gear", 13.5}}}};
    show({VStack{.spacing = 3.3},
          {inOddRoom(image), inOddRoom(text("words")), inOddRoom({Toggle{.title = "Switch"}}),
           inOddRoom({Button{}, {text("Go")}}), inOddRoom({Button{ButtonStyle::plain}, {image}}),
           inOddRoom({Label{{.content = Symbol{"gear", 9.2}}}, {text("label")}}),
           inOddRoom({Slider{.maximum = 10}}), inOddRoom({Divider{}})}});
    EXPECT_GE(all<NSView>().size(), 16U);
    for (const NSView& view : all<NSView>()) {
        const CGRect frame = view.frame();
        for (const double number : {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height})
            EXPECT_EQ(number, std::round(number));
    }
    // No less than it wants.
    EXPECT_EQ(all<NSImageView>().at(0).frame().size.height, 17);
}

TEST_F(ViewHostTest, TellsAssistiveProgramsOfNothingTwice) {
    const Image symbol{.content = Symbol{"gear", 13}};
    Image named = symbol;
    named.accessibilityDescription = "Settings";
    show({Button{ButtonStyle::plain}, {View{HStack{}, {View{ImageView{named}}, text("Go")}}}});
    ASSERT_EQ(all<NSImageView>().size(), 1U);
    ASSERT_EQ(all<NSTextField>().size(), 1U);
    EXPECT_TRUE(isHiddenFromAssistance(all<NSImageView>()[0]));
    EXPECT_TRUE(isHiddenFromAssistance(all<NSTextField>()[0]));
    EXPECT_FALSE(isHiddenFromAssistance(all<NSButton>().at(0)));
    show({HStack{}, {View{ImageView{symbol}}, View{ImageView{named}}, View{Label{symbol}}}});
    ASSERT_EQ(all<NSImageView>().size(), 3U);
    EXPECT_TRUE(isHiddenFromAssistance(all<NSImageView>()[0]));
    EXPECT_FALSE(isHiddenFromAssistance(all<NSImageView>()[1]));
    EXPECT_TRUE(isHiddenFromAssistance(all<NSImageView>()[2]));
}

TEST_F(ViewHostTest, TellsAssistiveProgramsOfATitleAsTheNameOfItsControlAlone) {
    const View slider = View{Slider{.maximum = 10}}.with(AccessibilityLabel{"After"});
    show({VStack{},
          {View{Toggle{.title = "Switch"}}, View{twoOptions(PickerStyle::menu)}, View{TextField{"Pattern"}},
           View{HStack{}, {text("After"), slider, text("5 s")}},
           View{LabeledContent{"Version"}, {text("1.0")}}}});
    for (const char* words : {"Switch", "Click", "Pattern", "After", "Version", "5 s", "1.0"})
        ASSERT_TRUE(labelOf(words)) << words;
    for (const char* words : {"Switch", "Click", "Pattern", "After"})
        EXPECT_TRUE(isHiddenFromAssistance(labelOf(words))) << words;
    for (const char* words : {"Version", "5 s", "1.0"})
        EXPECT_FALSE(isHiddenFromAssistance(labelOf(words))) << words;
    EXPECT_FALSE(isHiddenFromAssistance(all<NSSwitch>().at(0)));
    EXPECT_FALSE(isHiddenFromAssistance(all<NSSlider>().at(0)));
    EXPECT_FALSE(isHiddenFromAssistance(all<NSPopUpButton>().at(0)));
}

TEST_F(ViewHostTest, TellsAssistiveProgramsOnceOfATitleThatAButtonBearsWithWhatItDoes) {
    const auto button = [](const std::string& name) {
        return View{Button{}, {text("Do it")}}.with(AccessibilityLabel{name});
    };
    show({VStack{},
          {View{HStack{}, {text("Shortcut"), button("Shortcut, Record")}},
           View{HStack{}, {View{VStack{}, {text("Camera"), text("Explained")}}, button("Camera, Grant…")}},
           View{HStack{}, {text("Short"), button("Shortcut, Record")}}}});
    EXPECT_TRUE(isHiddenFromAssistance(labelOf("Shortcut")));
    EXPECT_TRUE(isHiddenFromAssistance(labelOf("Camera")));
    EXPECT_FALSE(isHiddenFromAssistance(labelOf("Explained")));
    EXPECT_FALSE(isHiddenFromAssistance(labelOf("Short")));
    show({VStack{},
          {View{HStack{}, {text("Shortcut"), button("Other")}},
           View{HStack{}, {View{VStack{}, {text("Camera"), text("Explained")}}, button("Other")}}}});
    EXPECT_FALSE(isHiddenFromAssistance(labelOf("Shortcut")));
    EXPECT_FALSE(isHiddenFromAssistance(labelOf("Camera")));
}

TEST_F(ViewHostTest, LeavesControlsAloneThatAreDragged) {
    const auto showAll = [&] {
        show({VStack{}, {View{Toggle{.title = "Switch"}}, View{Slider{.value = 1, .maximum = 10}}}});
    };
    showAll();
    const NSSwitch toggle = all<NSSwitch>().at(0);
    const NSSlider slider = all<NSSlider>().at(0);
    toggle.setState(control_state::on);
    slider.setDoubleValue(3.6);
    system.pressedMouseButtons = 1;
    showAll();
    EXPECT_EQ(toggle.state(), control_state::on);
    EXPECT_EQ(slider.doubleValue(), 3.6);
    // The right button moves nothing.
    system.pressedMouseButtons = 2;
    showAll();
    EXPECT_EQ(toggle.state(), control_state::off);
    EXPECT_EQ(slider.doubleValue(), 1);
}

TEST_F(ViewHostTest, ShowsAPickerInEachOfItsStyles) {
    show({twoOptions(PickerStyle::menu)});
    EXPECT_EQ(all<NSPopUpButton>().size(), 1U);
    EXPECT_EQ(all<NSButton>().size(), 1U);
    show({twoOptions(PickerStyle::radioGroup)});
    EXPECT_EQ(all<NSPopUpButton>().size(), 0U);
    EXPECT_EQ(all<NSButton>().size(), 2U);
    show({twoOptions(PickerStyle::menu)});
    EXPECT_EQ(all<NSPopUpButton>().size(), 1U);
    EXPECT_EQ(all<NSButton>().size(), 1U);
}

TEST_F(ViewHostTest, PressesAButtonInEachOfItsStyles) {
    int presses = 0;
    for (const ButtonStyle style : {ButtonStyle::automatic, ButtonStyle::plain, ButtonStyle::borderless}) {
        show({Button{style, [&] { ++presses; }}, {text("Go")}});
        const auto buttons = all<NSButton>();
        ASSERT_EQ(buttons.size(), 1U);
        const int before = presses;
        press(buttons[0]);
        EXPECT_EQ(presses, before + 1);
    }
}

TEST_F(ViewHostTest, PressesButtonsWithTheirKeys) {
    const auto keyOf = [&](std::vector<Modifier> modifiers) {
        show(View{Button{}, {text("Go")}, std::move(modifiers)});
        return Message<"NSButton", false, "keyEquivalent", NSString>::send(all<NSButton>().at(0).get())
            .text();
    };
    EXPECT_EQ(keyOf({KeyboardShortcut{ShortcutKey::pageUp}}), "\uf72c");
    EXPECT_EQ(keyOf({KeyboardShortcut{ShortcutKey::pageDown}}), "\uf72d");
    EXPECT_EQ(keyOf({KeyboardShortcut{ShortcutKey::home}}), "\uf729");
    EXPECT_EQ(keyOf({}), "");
}

TEST_F(ViewHostTest, ShowsNothingOfTabsThatHaveGone) {
    const auto tab = [](const std::string& tag) { return TabItem{tag, tag, {.content = Symbol{"gear"}}}; };
    show({TabView{{tab("one"), tab("two")}, "two"}, {text("first"), text("second")}});
    EXPECT_TRUE(shows(host.view(), "second"));
    EXPECT_FALSE(shows(host.view(), "first"));
    show({TabView{{tab("one")}, "one"}, {text("first")}});
    EXPECT_FALSE(shows(host.view(), "second"));
    EXPECT_TRUE(shows(host.view(), "first"));
}

TEST_F(ViewHostTest, TakesWholeStepsWhereASliderHasNone) {
    std::vector<double> values;
    show({Slider{.value = 1, .minimum = 0, .maximum = 10, .step = 0, .onChange = [&](double value) {
                     values.push_back(value);
                 }}});
    const auto slider = all<NSSlider>().at(0);
    slider.setDoubleValue(3.6);
    use(slider);
    EXPECT_EQ(values, std::vector{4.0});
}

TEST_F(ViewHostTest, MakesATextSmallerThatHasToStayInALine) {
    const auto heightIn = [&](double width) {
        show(text("Some words of one line").with(SingleLine{0.5}).with(Frame{.width = width}));
        const NSControl label = all<NSTextField>().at(0);
        return label.cell().cellSizeForBounds({{0, 0}, {1e5, 1e5}}).height;
    };
    const double whole = heightIn(380);
    const double small = heightIn(60);
    EXPECT_LT(small, whole);
    EXPECT_GT(small, whole / 3);
    EXPECT_EQ(heightIn(380), whole);
}

}  // namespace
}  // namespace velmo::macos
