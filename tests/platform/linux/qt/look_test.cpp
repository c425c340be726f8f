#include "linux/qt/controls/view_button.h"
#include "linux/qt/style.h"
#include "view_fixture.h"

#include <QImage>

#include <cstdlib>

namespace velmo {

namespace {

class Look : public ViewTest {
protected:
    QColor pixel(int x, int y) { return host_.grab().toImage().pixelColor(x, y); }
    /// The colour that differs most from the background: that of a text's strokes.
    QColor ink() {
        const QImage image = host_.grab().toImage();
        const QColor background = style::window();
        QColor result = background;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                if (distance(color, background) > distance(result, background))
                    result = color;
            }
        }
        return result;
    }
    static int distance(const QColor& one, const QColor& other) {
        return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
               std::abs(one.blue() - other.blue());
    }
    static QColor mixed(const QColor& color, const QColor& background, double opacity) {
        const auto mix = [&](int upper, int lower) {
            return static_cast<int>(std::lround(upper * opacity + lower * (1 - opacity)));
        };
        return {mix(color.red(), background.red()), mix(color.green(), background.green()),
                mix(color.blue(), background.blue())};
    }
    static bool areClose(const QColor& one, const QColor& other) { return distance(one, other) <= 6; }
};

/// Large enough that some pixels are ink alone.
View block() {
    return View(label("\u2588")).with(Font{.size = 30});
}

TEST_F(Look, TextsArePrimaryAndWhatIsLessImportantSecondary) {
    show(block());
    EXPECT_TRUE(areClose(ink(), QColor(0x1d, 0x1d, 0x20))) << ink().name().toStdString();
    show(block().with(Foreground{{ColorRole::secondary}}));
    EXPECT_TRUE(areClose(ink(), QColor(0x6b, 0x6b, 0x73))) << ink().name().toStdString();
}

TEST_F(Look, BackgroundsAreTranslucentAndRound) {
    const SemanticColor shade{ColorRole::primary, 0.18};
    show(framed(label(""), 40, 30).with(Background{ShapeKind::roundedRectangle, 6, shade}));
    const QColor expected = mixed(style::color({ColorRole::primary}), style::window(), 0.18);
    EXPECT_TRUE(areClose(pixel(20, 15), expected));
    EXPECT_TRUE(areClose(pixel(20, 0), expected)) << "to its edge";
    EXPECT_TRUE(areClose(pixel(0, 0), style::window())) << "but for the corners";
    EXPECT_TRUE(areClose(pixel(39, 29), style::window()));
    show(framed(label(""), 40, 30).with(Background{ShapeKind::circle, 0, shade}));
    EXPECT_TRUE(areClose(pixel(20, 15), expected));
    EXPECT_TRUE(areClose(pixel(3, 15), style::window())) << "beside the circle";
    show(framed(label(""), 40, 30)
             .with(Background{ShapeKind::roundedRectangle, 6, SemanticColor{ColorRole::clear}}));
    EXPECT_TRUE(areClose(pixel(20, 15), style::window()));
}

TEST_F(Look, PressedLabelIsSeenAsLongAsTheButtonIsDown) {
    const auto labelOn = [](const SemanticColor& color) {
        return framed(label(""), 30, 26).with(Background{ShapeKind::roundedRectangle, 6, color});
    };
    show(
        {Button{ButtonStyle::plain, {}}, {labelOn({ColorRole::clear}), labelOn({ColorRole::primary, 0.18})}});
    const QColor pressed = mixed(style::color({ColorRole::primary}), style::window(), 0.18);
    EXPECT_TRUE(areClose(pixel(15, 13), style::window()));
    QTest::mousePress(only<ViewButton>(), Qt::LeftButton);
    EXPECT_TRUE(areClose(pixel(15, 13), pressed));
    QTest::mouseRelease(only<ViewButton>(), Qt::LeftButton);
    EXPECT_TRUE(areClose(pixel(15, 13), style::window()));
}

TEST_F(Look, WhatIsDisabledIsPaler) {
    const QColor background = style::window();
    for (const auto style : {ButtonStyle::plain, ButtonStyle::borderless}) {
        show({Button{style, {}}, {block()}});
        const QColor enabled = ink();
        show(View{Button{style, {}}, {block()}}.with(Disabled{}));
        EXPECT_TRUE(areClose(ink(), mixed(enabled, background, 0.45))) << ink().name().toStdString();
        show({Button{style, {}}, {block()}});
        EXPECT_TRUE(areClose(ink(), enabled)) << "and comes back";
    }
    const View symbol{ImageView{Image{Symbol{"circle.fill", 30}}}};
    show(View{Button{ButtonStyle::plain, {}}, {symbol}}.with(Disabled{}));
    EXPECT_TRUE(areClose(ink(), mixed(style::color({ColorRole::primary}), background, 0.45))) << "symbols";
}

TEST_F(Look, ButtonWithALabelForEachStateIsDisabledAsItsLabelSays) {
    const View own = block().with(Foreground{{ColorRole::secondary, 0.5}});
    show(View{Button{ButtonStyle::plain, {}}, {own, own}}.with(Disabled{}));
    EXPECT_TRUE(areClose(ink(), mixed(style::color({ColorRole::secondary}), style::window(), 0.5)));
}

TEST_F(Look, ButtonUnderThePointerStaysSoWhenItIsDescribedAnew) {
    const auto described = [](const std::string& title) {
        return View{Button{ButtonStyle::plain, {}}, {framed(label(title), 40, 26)}}.with(Help{title});
    };
    show(described("One"));
    auto* button = only<ViewButton>();
    QTest::mouseMove(&host_, {60, 40});
    QTest::mouseMove(button, button->rect().center());
    ASSERT_TRUE(QTest::qWaitFor([&] { return button->underMouse(); }));
    show(described("Two"));
    EXPECT_EQ(only<ViewButton>(), button);
    EXPECT_TRUE(button->underMouse());
    EXPECT_EQ(button->toolTip(), "Two");
}

}  // namespace

}  // namespace velmo
