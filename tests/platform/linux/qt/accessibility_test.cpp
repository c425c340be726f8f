#include "linux/qt/controls/switch_control.h"
#include "linux/qt/controls/tab_button.h"
#include "linux/qt/controls/view_button.h"
#include "view_fixture.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>

namespace velmo {

namespace {

using AccessibleViews = ViewTest;

QString nameOf(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

QAccessible::Role roleOf(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->role();
}

TEST_F(AccessibleViews, ButtonIsCalledWhatItsLabelSaysUnlessTold) {
    show({Button{}, {label("Today")}});
    EXPECT_EQ(nameOf(only<ViewButton>()), "Today");
    EXPECT_EQ(roleOf(only<ViewButton>()), QAccessible::Button);
    show(View{Button{}, {label("Today")}}.with(AccessibilityLabel{"Show today"}));
    EXPECT_EQ(nameOf(only<ViewButton>()), "Show today");
}

TEST_F(AccessibleViews, SymbolsAreCalledWhatTheirImageSays) {
    Image image{Symbol{"checkmark.circle.fill"}};
    image.accessibilityDescription = "Granted";
    show({ImageView{image}});
    auto* picture = host_.findChildren<QWidget*>().first();
    EXPECT_EQ(nameOf(picture), "Granted");
    EXPECT_EQ(roleOf(picture), QAccessible::Graphic);
}

TEST_F(AccessibleViews, ControlsBearTheirTitles) {
    show({Toggle{"Launch at login", true, {}}});
    EXPECT_EQ(nameOf(only<SwitchControl>()), "Launch at login");
    EXPECT_EQ(roleOf(only<SwitchControl>()), QAccessible::CheckBox);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(only<SwitchControl>())->state().checked);
    show({TextField{"Pattern", "HH", {}}});
    EXPECT_EQ(nameOf(only<QLineEdit>()), "Pattern");
    EXPECT_EQ(roleOf(only<QLineEdit>()), QAccessible::EditableText);
}

TEST_F(AccessibleViews, PopUpsSayWhatIsChosenAndWhatFor) {
    show({Picker{"Icon", {{"a", "Chevron", ""}, {"b", "Eye", ""}}, "b", PickerStyle::menu, {}}});
    auto* box = only<QComboBox>();
    auto* accessible = QAccessible::queryAccessibleInterface(box);
    EXPECT_EQ(roleOf(box), QAccessible::ComboBox);
    EXPECT_EQ(nameOf(box), "Icon");
    EXPECT_EQ(accessible->text(QAccessible::Value), "Eye");
    EXPECT_EQ(accessible->text(QAccessible::Description), "Eye");
    show({Picker{"Icon", {{"a", "Chevron", ""}, {"b", "Eye", ""}}, "a", PickerStyle::menu, {}}});
    EXPECT_EQ(accessible->text(QAccessible::Description), "Chevron");
    EXPECT_TRUE(accessible->state().collapsed);
    ASSERT_TRUE(accessible->actionInterface());
    accessible->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_TRUE(accessible->state().expanded);
    EXPECT_EQ(accessible->child(0)->object(), box->view());
    accessible->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_TRUE(accessible->state().collapsed);
}

TEST_F(AccessibleViews, SlidersSayTheirValue) {
    double value = 5;
    show({Slider{value, 1, 30, 1, [&](double moved) { value = moved; }}});
    auto* slider = only<QSlider>();
    EXPECT_EQ(slider->minimum(), 1);
    EXPECT_EQ(slider->maximum(), 30);
    EXPECT_EQ(slider->value(), 5);
    slider->setValue(6);
    EXPECT_EQ(value, 6);
    show({Slider{0.5, 0.25, 1, 0.25, [&](double moved) { value = moved; }}});
    slider->setValue(slider->maximum());
    EXPECT_EQ(value, 1);
    slider->setValue(slider->minimum());
    EXPECT_EQ(value, 0.25);
}

TEST_F(AccessibleViews, TabsArePageTabs) {
    std::string chosen = "one";
    show({TabView{{{"one", "One", {Symbol{"clock"}}}, {"two", "Two", {Symbol{"eye"}}}},
                  chosen,
                  [&](const std::string& tag) { chosen = tag; }},
          {{Form{}, {}}, {Form{}, {}}}});
    const auto tabs = host_.findChildren<TabButton*>();
    ASSERT_EQ(tabs.size(), 2);
    EXPECT_EQ(nameOf(tabs[0]), "One");
    EXPECT_EQ(roleOf(tabs[0]), QAccessible::PageTab);
    auto* first = QAccessible::queryAccessibleInterface(tabs[0]);
    auto* second = QAccessible::queryAccessibleInterface(tabs[1]);
    EXPECT_TRUE(first->state().selected);
    EXPECT_FALSE(second->state().selected);
    ASSERT_TRUE(second->actionInterface());
    second->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(chosen, "two");
}

}  // namespace

}  // namespace velmo
