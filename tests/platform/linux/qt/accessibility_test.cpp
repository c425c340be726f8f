#include "linux/qt/controls/switch_control.h"
#include "linux/qt/controls/tab_button.h"
#include "linux/qt/controls/view_button.h"
#include "view_fixture.h"

#include <QAccessible>
#include <QLineEdit>

namespace velmo {

namespace {

using Accessibility = ViewTest;

QString nameOf(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

QAccessible::Role roleOf(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->role();
}

TEST_F(Accessibility, ButtonIsCalledWhatItsLabelSaysUnlessTold) {
    show({Button{}, {label("Today")}});
    EXPECT_EQ(nameOf(only<ViewButton>()), "Today");
    EXPECT_EQ(roleOf(only<ViewButton>()), QAccessible::Button);
    show(View{Button{}, {label("Today")}}.with(AccessibilityLabel{"Show today"}));
    EXPECT_EQ(nameOf(only<ViewButton>()), "Show today");
}

TEST_F(Accessibility, SymbolsAreCalledWhatTheirImageSays) {
    Image image{Symbol{"checkmark.circle.fill"}};
    image.accessibilityDescription = "Granted";
    show({ImageView{image}});
    auto* picture = host_.findChildren<QWidget*>().first();
    EXPECT_EQ(nameOf(picture), "Granted");
    EXPECT_EQ(roleOf(picture), QAccessible::Graphic);
}

TEST_F(Accessibility, ControlsBearTheirTitles) {
    show({Toggle{"Launch at login", true, {}}});
    EXPECT_EQ(nameOf(only<SwitchControl>()), "Launch at login");
    EXPECT_EQ(roleOf(only<SwitchControl>()), QAccessible::CheckBox);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(only<SwitchControl>())->state().checked);
    show({TextField{"Pattern", "HH", {}}});
    EXPECT_EQ(nameOf(only<QLineEdit>()), "Pattern");
    EXPECT_EQ(roleOf(only<QLineEdit>()), QAccessible::EditableText);
}

TEST_F(Accessibility, TabsArePageTabs) {
    show({TabView{{{"one", "One", {Symbol{"clock"}}}}, "one", {}}, {{Form{}, {}}}});
    EXPECT_EQ(nameOf(only<TabButton>()), "One");
    EXPECT_EQ(roleOf(only<TabButton>()), QAccessible::PageTab);
}

}  // namespace

}  // namespace velmo
