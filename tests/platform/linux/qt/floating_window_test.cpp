#include "linux/qt/windows/floating_window.h"

#include "linux/event_loop/event_loop.h"
#include "linux/local_events.h"
#include "platform/simulated/simulated_desktop.h"
#include "wheel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>

#include <optional>

namespace velmo {

namespace {

/// A screen with or without a compositing manager.
class FakeHost : public ToolkitHost {
public:
    bool composited = true;
    /// The margin that was declared last, in pixels.
    std::optional<double> declaredMargin;

    HostedLoop& loop() override { return loop_; }
    void spareButtonStates(void* /*connection*/) override {}
    LocalEvents& localEvents() override { return localEvents_; }
    Events& events() override { return desktop_.events(); }
    Rect toPixels(const Rect& rect) const override { return rect; }
    Rect visibleFrame(const Point& /*place*/) const override { return {0, 0, 800, 800}; }
    Point barEnd() const override { return {800, 800}; }
    Registration onBarChange(std::function<void()> /*listener*/) override { return {}; }
    Registration onBarLeave(std::function<void()> /*listener*/) override { return {}; }
    void updateBar() override {}
    bool isComposited() const override { return composited; }
    Registration onCompositingChange(std::function<void()> /*listener*/) override { return {}; }
    Registration keepAbove(WindowNumber /*window*/) override { return {}; }
    void declareShadow(WindowNumber /*window*/, const Size& /*size*/, double margin) override {
        declaredMargin = margin;
    }
    void bringToWorkspace(WindowNumber /*window*/) override {}
    void activate(WindowNumber /*window*/) override {}
    void takeKeyboard(WindowNumber /*window*/) override {}
    bool hasKeyboard(WindowNumber /*window*/) const override { return false; }
    void giveKeyboardBack() override {}
    std::optional<Point> rememberedPlace(const std::string& /*name*/) const override { return std::nullopt; }
    void rememberPlace(const std::string& /*name*/, const Point& /*place*/) override {}

private:
    EventLoop loop_;
    CurrentEvent currentEvent_;
    LocalEvents localEvents_{currentEvent_};
    SimulatedDesktop desktop_;
};

class FloatingWindows : public testing::Test {
protected:
    /// What others are told of the shadow of a window that is shown.
    std::optional<double> marginOf(bool hasShadow) {
        FloatingWindow window(host_, {.hasShadow = hasShadow});
        window.content().setContent({Text{{{"text"}}}});
        window.showAt({100, 100});
        QApplication::processEvents();
        EXPECT_TRUE(window.isVisible());
        return host_.declaredMargin;
    }

    static View rowOf(std::size_t count) {
        return {HStack{.spacing = 0}, Views(count, View{EmptyView{}}.with(Frame{.width = 30, .height = 20}))};
    }

    FakeHost host_;
};

TEST_F(FloatingWindows, PaintTheirOwnShadowAndTellSo) {
    EXPECT_GT(marginOf(true).value_or(0), 0);
}

TEST_F(FloatingWindows, WithoutAShadowTellThatNobodyIsToAddOne) {
    EXPECT_EQ(marginOf(false), 0);
}

TEST_F(FloatingWindows, TellNothingWhereNobodyAddsShadows) {
    host_.composited = false;
    EXPECT_EQ(marginOf(true), std::nullopt);
}

TEST_F(FloatingWindows, ShowRowsThatAreWiderThanTheScreenInPartsOfThem) {
    host_.composited = false;
    FloatingWindow window(host_, {.isRow = true});
    window.content().setContent(rowOf(10));
    EXPECT_EQ(window.fittingSize(), (Size{300, 20}));
    window.showAt({8, 100});
    QApplication::processEvents();
    const auto* bar = window.findChild<QScrollArea*>()->horizontalScrollBar();
    EXPECT_EQ(window.size(), QSize(300, 20));
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(bar->maximum(), 0);
    window.content().setContent(rowOf(100));
    const Size size = window.fittingSize();
    EXPECT_EQ(size.width, 800 - 2 * 8);
    EXPECT_GT(size.height, 20);
    EXPECT_LT(size.height, 40);
    window.showAt({8, 100});
    QApplication::processEvents();
    EXPECT_EQ(window.size(), QSize(784, static_cast<int>(size.height)));
    EXPECT_EQ(window.content().size(), QSize(3000, 20));
    EXPECT_EQ(window.content().mapTo(&window, QPoint(0, 0)), QPoint(0, 0));
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->maximum(), 3000 - 784);
    window.content().setContent(rowOf(26));
    EXPECT_EQ(window.fittingSize(), (Size{780, 20})) << "what fits needs no bar";
}

TEST_F(FloatingWindows, ScrollRowsByTheWheelAndToTheirBegin) {
    host_.composited = false;
    FloatingWindow window(host_, {.isRow = true});
    window.content().setContent(rowOf(100));
    window.showAt({8, 100});
    QApplication::processEvents();
    const auto left = [&] { return window.content().mapTo(&window, QPoint(0, 0)).x(); };
    turnWheel(window.content(), {0, -120});
    const int first = left();
    EXPECT_LT(first, 0);
    turnWheel(window.content(), {-120, 0});
    EXPECT_LT(left(), first);
    turnWheel(window.content(), {0, 120});
    EXPECT_EQ(left(), first);
    window.scrollToBegin();
    EXPECT_EQ(left(), 0);
}

}  // namespace

}  // namespace velmo
