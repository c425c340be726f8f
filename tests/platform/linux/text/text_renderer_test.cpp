#include "linux/text/lazy_text_renderer.h"
#include "linux/text/pango/font_description.h"
#include "linux/text/pango/pango_text_renderer.h"

#include <gtest/gtest.h>

#include <memory>

namespace velmo {

namespace {

constexpr int anyWidth = 10000;

TextAttributes attributes(const std::string& font, double scale = 1, bool hasMonospacedDigits = true) {
    TextAttributes result;
    result.font.hasMonospacedDigits = hasMonospacedDigits;
    result.appearance.font = font;
    result.appearance.scale = scale;
    result.widthLimit = anyWidth;
    return result;
}

/// Opacity of a drawn text, by row and column.
class Picture {
public:
    Picture(TextRenderer& renderer, const std::string& text, const TextAttributes& attributes, int width)
        : surface_(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height)) {
        cairo_t* context = cairo_create(surface_.get());
        renderer.draw(context, text, attributes, {0, 0, double(width), height}, {});
        cairo_destroy(context);
        cairo_surface_flush(surface_.get());
    }

    int at(int x, int y) const {
        return cairo_image_surface_get_data(
            surface_.get())[y * cairo_image_surface_get_stride(surface_.get()) + x];
    }
    /// The first row, from the top, that is not empty, or the last one.
    int top() const { return row(0, 1); }
    int bottom() const { return row(height - 1, -1); }
    int ink(int from, int until) const {
        int sum = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = from; x < until; ++x)
                sum += at(x, y);
        }
        return sum;
    }

    static constexpr int height = 52;

private:
    struct Destroy {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };

    int row(int from, int step) const {
        const int width = cairo_image_surface_get_width(surface_.get());
        for (int y = from; y >= 0 && y < height; y += step) {
            for (int x = 0; x < width; ++x) {
                if (at(x, y) > 0)
                    return y;
            }
        }
        return -1;
    }

    std::unique_ptr<cairo_surface_t, Destroy> surface_;
};

const char* const fonts[] = {"Inter 10",        "Inter Bold 12", "DejaVu Sans 10",
                             "DejaVu Serif 13", "Serif 11",      ""};

TEST(TextRenderer, EveryTimeOfDayIsEquallyWide) {
    PangoTextRenderer renderer("C");
    for (const char* font : fonts) {
        for (const double scale : {1.0, 1.25, 2.0}) {
            const auto how = attributes(font, scale);
            const int width = renderer.width("00:00:00", how);
            for (int second = 0; second < 24 * 3600; second += 37) {
                char time[16];
                std::snprintf(time, sizeof time, "%02d:%02d:%02d", second / 3600, second / 60 % 60,
                              second % 60);
                ASSERT_EQ(renderer.width(time, how), width) << font << ' ' << time;
            }
        }
    }
}

TEST(TextRenderer, DigitsOfEveryScriptAreEquallyWide) {
    PangoTextRenderer renderer("C");
    const auto how = attributes("DejaVu Sans 10");
    const std::string systems[][2] = {{"١١:١١", "٢٥:٠٩"}, {"۱۱:۱۱", "۲۴:۵۹"}, {"11-1/1.1", "40-8/7.3"}};
    for (const auto& [one, other] : systems)
        EXPECT_EQ(renderer.width(one, how), renderer.width(other, how)) << one;
    EXPECT_EQ(renderer.width("AV 1 To 7", how), renderer.width("AV 4 To 1", how)) << "beside kerned letters";
}

TEST(TextRenderer, FontWithoutEqualDigitsGetsThemInCells) {
    PangoTextRenderer renderer("C");
    const auto even = attributes("Inter 30", 2);
    const auto uneven = attributes("Inter 30", 2, false);
    ASSERT_LT(renderer.width("11111", uneven), renderer.width("44444", uneven)) << "narrow ones of its own";
    EXPECT_EQ(renderer.width("11111", even), renderer.width("44444", even));
}

TEST(TextRenderer, OtherTextIsNotSpread) {
    PangoTextRenderer renderer("C");
    for (const char* font : fonts)
        EXPECT_EQ(renderer.width("Saturday, AVATAR", attributes(font)),
                  renderer.width("Saturday, AVATAR", attributes(font, 1, false)));
}

TEST(TextRenderer, DigitsStayInTheirPlacesWhileOthersChange) {
    PangoTextRenderer renderer("C");
    for (const char* font : fonts) {
        const auto how = attributes(font, 2);
        const int width = renderer.width("14:05:30", how);
        const int lastDigit = width - renderer.width("0", how) - 1;
        const Picture before(renderer, "14:05:31", how, width);
        const Picture after(renderer, "14:05:38", how, width);
        for (int y = 0; y < Picture::height; ++y) {
            for (int x = 0; x < lastDigit; ++x)
                ASSERT_EQ(before.at(x, y), after.at(x, y)) << font << ' ' << x << ',' << y;
        }
        EXPECT_NE(before.ink(lastDigit, width), after.ink(lastDigit, width));
    }
}

TEST(TextRenderer, LineStandsInTheMiddleWhateverItsLetters) {
    PangoTextRenderer renderer("C");
    for (const char* font : fonts) {
        const auto how = attributes(font, 2);
        const Picture digits(renderer, "08", how, 200);
        EXPECT_NEAR((digits.top() + digits.bottom() + 1) / 2.0, Picture::height / 2.0, 2) << font;
        EXPECT_EQ(Picture(renderer, "08 Åg", how, 200).bottom() > digits.bottom(), true);
        // A letter from another font, taller than the user's, moves nothing.
        const Picture mixed(renderer, "08 \xe0\xa4\x95\xe0\xa5\x8d\xe0\xa4\xb7\xe0\xa5\x88", how, 200);
        const int digitsWidth = renderer.width("08", how);
        for (int y = 0; y < Picture::height; ++y) {
            for (int x = 0; x < digitsWidth - 2; ++x)
                ASSERT_EQ(digits.at(x, y), mixed.at(x, y)) << font;
        }
    }
}

TEST(TextRenderer, TextRunsFromRightToLeftWhereItsScriptDoes) {
    PangoTextRenderer renderer("C");
    const auto how = attributes("DejaVu Sans 10", 2);
    // The thin letter comes first, and so stands at the right.
    const std::string text = "\xd7\x95\xd7\xa9\xd7\xa9";
    const int width = renderer.width(text, how);
    const Picture picture(renderer, text, how, width);
    EXPECT_GT(picture.ink(0, width / 3), picture.ink(width - width / 3, width));
}

TEST(TextRenderer, SizesFollowFontAndScale) {
    PangoTextRenderer renderer("C");
    const std::string text = "Saturday 21 November";
    const int width = renderer.width(text, attributes("Inter 10"));
    EXPECT_NEAR(renderer.width(text, attributes("Inter 10", 2)), 2 * width, 12);
    EXPECT_GT(renderer.width(text, attributes("Inter 12")), width);
    EXPECT_EQ(renderer.width(text, attributes("Inter 500")), renderer.width(text, attributes("Inter 60")))
        << "no line is higher than the bar";
    EXPECT_EQ(renderer.width(text, attributes("Inter 0.1")), renderer.width(text, attributes("Inter 1")));
    auto sized = attributes("Inter 10");
    sized.font.size = 16;
    EXPECT_GT(renderer.width(text, sized), width);
    auto bold = attributes("DejaVu Sans 10");
    bold.font.weight = FontWeight::bold;
    EXPECT_GT(renderer.width(text, bold), renderer.width(text, attributes("DejaVu Sans 10")));
}

TEST(TextRenderer, StylesHaveTheirOwnPartOfTheBodysSize) {
    Appearance appearance;
    appearance.font = "DejaVu Sans 13px";
    const auto sizeOf = [&](TextStyle style) {
        const auto description = fontDescription({.style = style}, appearance);
        return pango_font_description_get_size(description.get()) / PANGO_SCALE;
    };
    EXPECT_EQ(sizeOf(TextStyle::body), 13);
    EXPECT_EQ(sizeOf(TextStyle::headline), 13);
    EXPECT_EQ(sizeOf(TextStyle::callout), 12);
    EXPECT_EQ(sizeOf(TextStyle::caption), 11);
    EXPECT_EQ(sizeOf(TextStyle::caption2), 10);
}

TEST(TextRenderer, WhatDoesNotFitEndsInAnEllipsis) {
    PangoTextRenderer renderer("C");
    auto how = attributes("DejaVu Sans 10");
    const std::string text = "Saturday 21 November 2026, 14:05:37";
    const int width = renderer.width(text, how);
    how.widthLimit = width;
    EXPECT_EQ(renderer.width(text, how), width);
    how.widthLimit = width - 1;
    EXPECT_LT(renderer.width(text, how), width);
    EXPECT_GT(renderer.width(text, how), width - 40);
}

TEST(TextRenderer, BrokenTextIsHarmless) {
    PangoTextRenderer renderer("no locale at all");
    const auto how = attributes("no font at all, really -3");
    EXPECT_GT(renderer.width("14:05 \xff\xfe", how), 0);
    EXPECT_EQ(renderer.width("", how), 0);
    EXPECT_EQ(renderer.width("a\nb", how), renderer.width("a b", how)) << "one line";
    EXPECT_EQ(renderer.width(std::string("a\0b", 3), how), renderer.width("a\xef\xbf\xbd"
                                                                          "b",
                                                                          how));
    // Cut in the middle of a letter.
    std::string longText(1999, 'a');
    longText += "\xd7\x95\xd7\x95";
    EXPECT_GT(renderer.width(longText, how), 0);
}

TEST(LazyTextRenderer, GivesWhatTheModuleGives) {
    LazyTextRenderer lazy("C");
    PangoTextRenderer direct("C");
    const auto how = attributes("Inter 10");
    EXPECT_EQ(lazy.width("", how), 0);
    EXPECT_EQ(lazy.width("Sat 14:05", how), direct.width("Sat 14:05", how));
    EXPECT_EQ(Picture(lazy, "14:05", how, 100).ink(0, 100), Picture(direct, "14:05", how, 100).ink(0, 100));
}

}  // namespace

}  // namespace velmo
