#include "wheel.h"
#include "linux/qt/controls/pop_up_button.h"
#include "linux/qt/controls/slider_control.h"
#include "view_fixture.h"

#include <QScrollArea>
#include <QScrollBar>

namespace velmo {

namespace {

using Wheel = ViewTest;

constexpr QPoint oneNotchDown(0, -120);

TEST_F(Wheel, ScrollsTheFormAndChangesNoControlUnderThePointer) {
    int changes = 0;
    Views rows = {
        {Slider{5, 1, 30, 1, [&](double /*value*/) { ++changes; }}},
        {Picker{"Icon",
                {{"a", "Chevron", ""}, {"b", "Eye", ""}},
                "a",
                PickerStyle::menu,
                [&](const std::string& /*tag*/) { ++changes; }}},
    };
    rows.resize(30, View{Toggle{"Launch at login", true, {}}});
    host_.setContent({Form{}, {{Section{"General", ""}, rows}}});
    host_.resize(540, 300);
    host_.show();
    QApplication::processEvents();
    const auto* bar = only<QScrollArea>()->verticalScrollBar();
    for (QWidget* control : std::initializer_list<QWidget*>{only<SliderControl>(), only<PopUpButton>()}) {
        only<QScrollArea>()->verticalScrollBar()->setValue(0);
        turnWheel(*control, oneNotchDown);
        EXPECT_GT(bar->value(), 0);
        EXPECT_EQ(changes, 0);
    }
}

}  // namespace

}  // namespace velmo
