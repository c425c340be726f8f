#include "linux/qt/controls/image_label.h"
#include "linux/qt/controls/switch_control.h"
#include "linux/qt/controls/text_label.h"
#include "linux/qt/style.h"
#include "view_fixture.h"

#include <QImage>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace velmo {

namespace {

using Layout = ViewTest;

View box(double width, double height) {
    return framed({EmptyView{}}, width, height).with(Background{.color = {ColorRole::accent}});
}

/// From top to bottom, and along a line.
QList<QRect> boxes(const ViewHost& host) {
    QList<QRect> places;
    for (const auto* widget : host.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        places.append(widget->geometry());
    std::sort(places.begin(), places.end(), [](const QRect& one, const QRect& other) {
        return std::pair(one.y(), one.x()) < std::pair(other.y(), other.x());
    });
    return places;
}

TEST_F(Layout, PaddingAndFramesAddUpInTheirOrder) {
    show(box(20, 10).with(Padding{{1, 2, 3, 4}}).with(Frame{.width = 100, .height = 50}));
    EXPECT_EQ(host_.size(), QSize(100, 50));
    // Centred with its padding: 26 by 14 in 100 by 50.
    EXPECT_EQ(boxes(host_), QList<QRect>({QRect(39, 19, 20, 10)}));
}

TEST_F(Layout, MinimumWidthHoldsForWhatIsNarrowerOnly) {
    View narrow = framed({EmptyView{}}, 20, 10).with(Frame{.minWidth = 130});
    host_.setContent(narrow);
    EXPECT_EQ(host_.fittingSize(), QSizeF(130, 10));
    host_.setContent(framed({EmptyView{}}, 200, 10).with(Frame{.minWidth = 130}));
    EXPECT_EQ(host_.fittingSize(), QSizeF(200, 10));
}

TEST_F(Layout, HorizontalStackCentresItsChildrenWithItsSpacing) {
    show({HStack{.spacing = 2}, {box(10, 30), box(20, 10)}});
    EXPECT_EQ(host_.size(), QSize(32, 30));
    EXPECT_EQ(boxes(host_), QList<QRect>({QRect(0, 0, 10, 30), QRect(12, 10, 20, 10)}));
}

TEST_F(Layout, VerticalStackAlignsAtItsLeadingEdge) {
    show({VStack{.alignment = HorizontalAlignment::leading, .spacing = 10}, {box(10, 10), box(30, 10)}});
    EXPECT_EQ(host_.size(), QSize(30, 30));
    EXPECT_EQ(boxes(host_), QList<QRect>({QRect(0, 0, 10, 10), QRect(0, 20, 30, 10)}));
}

TEST_F(Layout, SpacerTakesWhatIsLeft) {
    View row{HStack{.spacing = 0}, {box(10, 10), {Spacer{}}, box(10, 10)}};
    show(std::move(row).with(Frame{.width = 100}));
    EXPECT_EQ(boxes(host_), QList<QRect>({QRect(0, 0, 10, 10), QRect(90, 0, 10, 10)}));
}

TEST_F(Layout, GridFillsRowsOfItsColumns) {
    Views cells(8, box(10, 10));
    show({Grid{.columnCount = 7, .columnWidth = 30, .columnSpacing = 2, .rowSpacing = 2}, cells});
    EXPECT_EQ(host_.size(), QSize(7 * 30 + 6 * 2, 22));
    EXPECT_EQ(boxes(host_)[1], QRect(42, 0, 10, 10));
    EXPECT_EQ(boxes(host_)[7], QRect(10, 12, 10, 10));
}

TEST_F(Layout, RightToLeftMirrorsStacksAndGrids) {
    host_.setLayoutDirection(Qt::RightToLeft);
    show({HStack{.spacing = 0}, {box(10, 10), box(30, 10)}});
    EXPECT_EQ(boxes(host_), QList<QRect>({QRect(0, 0, 30, 10), QRect(30, 0, 10, 10)}));
}

TEST_F(Layout, DividerCrossesTheStackAroundIt) {
    View vertical = View{Divider{}}.with(Frame{.height = 16}).with(Padding{{0, 4, 0, 4}});
    host_.setContent({HStack{.spacing = 0}, {vertical}});
    EXPECT_EQ(host_.fittingSize(), QSizeF(9, 16));
    show({VStack{.spacing = 0}, {box(50, 10), {Divider{}}}});
    EXPECT_EQ(boxes(host_)[1], QRect(0, 10, 50, 1));
}

TEST_F(Layout, ResizablePictureFillsItsFrame) {
    Image picture;
    picture.content = Bitmap{2, 2, std::make_shared<std::vector<std::uint8_t>>(16), {1, 1}};
    show(View{ImageView{picture, true}}.with(Frame{.width = 24, .height = 22}).with(Frame{.height = 26}));
    EXPECT_EQ(host_.size(), QSize(24, 26));
    EXPECT_EQ(only<ImageLabel>()->geometry(), QRect(0, 2, 24, 22));
}

TEST_F(Layout, LongTextWrapsWhereItGetsLessWidth) {
    const View text = label("A text that is too long for a line of this width");
    host_.setContent(text);
    const QSizeF whole = host_.fittingSize();
    host_.setContent(View(text).with(Frame{.width = 100}));
    EXPECT_GE(host_.fittingSize().height(), 3 * whole.height());
    host_.setContent(label("One\nTwo"));
    EXPECT_EQ(host_.fittingSize().height(), 2 * whole.height());
}

TEST_F(Layout, MonospacedDigitsAreAllEquallyWide) {
    View time = label("11:11:11").with(Font{.size = 30, .hasMonospacedDigits = true});
    host_.setContent(time);
    const QSizeF ones = host_.fittingSize();
    host_.setContent(label("20:48:56").with(Font{.size = 30, .hasMonospacedDigits = true}));
    EXPECT_EQ(host_.fittingSize(), ones);
    host_.setContent(label("11:11:11").with(Font{.size = 30}));
    EXPECT_LT(host_.fittingSize().width(), ones.width());
}

TEST_F(Layout, TextStylesKeepTheirOrderOfSizes) {
    const auto widthOf = [&](const Font& font) {
        host_.setContent(label("A text that is long enough to tell").with(font));
        return host_.fittingSize().width();
    };
    EXPECT_GT(widthOf({.style = TextStyle::headline}), widthOf({}));
    EXPECT_GT(widthOf({}), widthOf({.style = TextStyle::callout}));
    EXPECT_GT(widthOf({.style = TextStyle::callout}), widthOf({.style = TextStyle::caption}));
    EXPECT_GT(widthOf({.style = TextStyle::caption}), widthOf({.style = TextStyle::caption2}));
}

TEST_F(Layout, TextStylesHaveTheirOwnPartOfTheBodysSize) {
    const double body = style::font(Font{}).pointSizeF();
    const auto partOf = [&](TextStyle textStyle) {
        return style::font(Font{.style = textStyle}).pointSizeF() / body * 13;
    };
    // Fonts are sized in hundredths of a point.
    constexpr double rounding = 0.02;
    EXPECT_NEAR(partOf(TextStyle::headline), 13, rounding);
    EXPECT_NEAR(partOf(TextStyle::callout), 12, rounding);
    EXPECT_NEAR(partOf(TextStyle::caption), 11, rounding);
    EXPECT_NEAR(partOf(TextStyle::caption2), 10, rounding);
}

/// The leftmost column with ink.
int firstInk(const QImage& image) {
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qAlpha(image.pixel(x, y)) > 128)
                return x;
        }
    }
    return -1;
}

int heightOfInk(const QImage& image) {
    int height = 0;
    for (int y = 0; y < image.height(); ++y) {
        bool hasInk = false;
        for (int x = 0; x < image.width(); ++x)
            hasInk = hasInk || qAlpha(image.pixel(x, y)) > 64;
        height += hasInk ? 1 : 0;
    }
    return height;
}

QImage pictureOf(TextLabel& label) {
    QImage image(label.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    label.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

TEST_F(Layout, EvenDigitsStandInPlacesOfOneWidth) {
    const auto widthOf = [&](const std::string& text) {
        show(label(text).with(Font{.size = 30, .hasMonospacedDigits = true}));
        return host_.width();
    };
    const int wide = widthOf("00:00");
    EXPECT_EQ(widthOf("11:11"), wide);
    EXPECT_EQ(widthOf("10:00"), wide);
    EXPECT_EQ(widthOf("01:00"), wide);
}

TEST_F(Layout, NarrowFirstDigitMovesNothingBehindIt) {
    const auto lastInk = [&](const std::string& text) {
        show(label(text).with(Font{.size = 30, .hasMonospacedDigits = true}));
        const QImage image = pictureOf(*only<TextLabel>()).mirrored(true, false);
        return image.width() - firstInk(image);
    };
    EXPECT_NEAR(lastInk("1:8"), lastInk("0:8"), 1);
    EXPECT_NEAR(lastInk("18"), lastInk("08"), 1);
}

TEST_F(Layout, SingleLineGetsSmallerBeforeItIsCut) {
    const View whole = label("November 2026").with(SingleLine{0.5});
    show(whole);
    const QSize natural = host_.size();
    const auto shownWithin = [&](double width) {
        show(View(whole).with(Frame{.width = width, .alignment = HorizontalAlignment::leading}));
        EXPECT_EQ(host_.height(), natural.height());
        return pictureOf(*only<TextLabel>());
    };
    const auto shownText = [&] { return only<TextLabel>()->shownText(); };
    const QImage full = shownWithin(natural.width());
    const QImage smaller = shownWithin(natural.width() * 0.7);
    EXPECT_EQ(smaller.width(), std::lround(natural.width() * 0.7));
    // All of it, in less room: the letters are lower, on the same line.
    EXPECT_LT(heightOfInk(smaller), heightOfInk(full));
    EXPECT_GE(heightOfInk(smaller), heightOfInk(full) / 2);
    EXPECT_EQ(shownText(), "November 2026");
    shownWithin(natural.width() * 0.4);
    EXPECT_TRUE(shownText().startsWith("Nov")) << shownText().toStdString();
    EXPECT_TRUE(shownText().endsWith(QChar(0x2026))) << shownText().toStdString();
}

TEST_F(Layout, SingleLineIsCutAsSoonAsItsOwnLettersDoNotFit) {
    // Wider than the font by itself has them.
    const View bold = View{Text{{{"November 2026", true}}}}.with(SingleLine{1});
    show(bold);
    const int natural = host_.width();
    for (int width = natural; width > natural / 2; --width) {
        show(View(bold).with(Frame{.width = double(width), .alignment = HorizontalAlignment::leading}));
        const QString shown = only<TextLabel>()->shownText();
        EXPECT_EQ(shown == "November 2026", width == natural) << width;
        EXPECT_EQ(shown.endsWith(QChar(0x2026)), width < natural) << width;
    }
}

TEST_F(Layout, TextWithoutThatWraps) {
    show(label("November 2026"));
    const QSize natural = host_.size();
    show(label("November 2026").with(Frame{.width = natural.width() - 2.0}));
    EXPECT_EQ(host_.height(), 2 * natural.height());
}

TEST_F(Layout, FormThatCameWhileTheWindowWasHiddenHasItsFullWidth) {
    const View row{Toggle{"Launch at login", true, {}}};
    const auto described = [&](const std::string& chosen) -> View {
        return {TabView{{{"one", "One", {Symbol{"clock"}}}, {"two", "Two", {Symbol{"eye"}}}}, chosen, {}},
                {{Form{}, {{Section{"", ""}, {row}}}}, {Form{}, {{Section{"", ""}, Views(30, row)}}}}};
    };
    host_.resize(540, 300);
    host_.setContent(described("one"));
    host_.show();
    QApplication::processEvents();
    host_.hide();
    host_.setContent(described("two"));
    host_.show();
    QApplication::processEvents();
    int shown = 0;
    for (const auto* control : host_.findChildren<SwitchControl*>()) {
        if (!control->isVisible())
            continue;
        ++shown;
        EXPECT_EQ(placeOf(control).right(), 540 - 20 - 12 - 1);
        EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << "nothing is cut off";
    }
    EXPECT_EQ(shown, 30);
}

TEST_F(Layout, FormsScrollDownAndNeverSideways) {
    Views rows(30, View{Toggle{"Launch at login", true, {}}});
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        host_.setLayoutDirection(direction);
        host_.setContent({Form{}, {{Section{"General", ""}, rows}}});
        host_.resize(540, 300);
        host_.show();
        QApplication::processEvents();
        auto* area = only<QScrollArea>();
        EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
        EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
        // The bar takes nothing from the rows: it stands in the margin beside them.
        const auto* control = host_.findChildren<SwitchControl*>().first();
        const QRect place = placeOf(control);
        const int leading = direction == Qt::LeftToRight ? 540 - place.right() - 1 : place.left();
        EXPECT_EQ(leading, 20 + 12);
    }
}

}  // namespace

}  // namespace velmo
