#include "linux/qt/windows/floating_window.h"

#include "linux/event_loop/event_loop.h"
#include "linux/local_events.h"
#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

#include <QApplication>

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

}  // namespace

}  // namespace velmo
