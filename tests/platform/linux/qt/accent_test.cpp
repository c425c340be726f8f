#include "linux/qt/style.h"

#include <gtest/gtest.h>

namespace velmo {

namespace {

class Accent : public testing::Test {
protected:
    void TearDown() override {
        style::setPlatformPalette({}, {});
        style::setAppearance({.dark = false, .scale = 1, .font = "Inter 10"});
    }

    static QColor shown(std::optional<Color> accent, bool dark = false) {
        style::setAppearance({.dark = dark, .scale = 1, .font = "Inter 10", .accent = accent});
        return style::color({ColorRole::accent});
    }
    static QPalette highlighting(const QColor& color) {
        QPalette palette;
        palette.setColor(QPalette::Highlight, color);
        return palette;
    }
};

TEST_F(Accent, IsThatOfTheDesktopsSettings) {
    const QColor usual = shown({});
    const QColor purple(0x91, 0x41, 0xac);
    EXPECT_NE(usual, purple);
    EXPECT_EQ(shown(colorFromRgb(0x9141ac)).rgb(), purple.rgb());
    EXPECT_EQ(style::palette().color(QPalette::Highlight).rgb(), purple.rgb());
    EXPECT_EQ(shown({}), usual);
}

TEST_F(Accent, IsThatOfTheDesktopsPaletteWhereTheSettingsHaveNone) {
    const QColor usual = shown({});
    const QColor green(0x2a, 0x7d, 0x3b);
    const QPalette plain = highlighting(QColor(0x30, 0x8c, 0xc6));
    style::setPlatformPalette(highlighting(green), plain);
    EXPECT_EQ(shown({}).rgb(), green.rgb());
    EXPECT_EQ(shown(colorFromRgb(0x9141ac)).rgb(), QColor(0x91, 0x41, 0xac).rgb());
    style::setPlatformPalette(plain, plain);
    EXPECT_EQ(shown({}), usual) << "the toolkit's own is nobody's choice";
}

TEST_F(Accent, StaysReadableBelowWhiteTextAndOnTheBackground) {
    for (const std::uint32_t rgb : {0xffff00U, 0xffffffU, 0x00ff80U, 0xf6d32dU}) {
        const QColor light = shown(colorFromRgb(rgb));
        EXPECT_LT(light.lightnessF() * light.greenF(), 0.5) << rgb;
    }
    for (const std::uint32_t rgb : {0x000000U, 0x000080U, 0x200020U})
        EXPECT_GT(shown(colorFromRgb(rgb), true).lightnessF(), 0.3) << rgb;
    EXPECT_EQ(shown(colorFromRgb(0x000080)).rgb(), QColor(0, 0, 0x80).rgb())
        << "on a light one it may be dark";
}

}  // namespace

}  // namespace velmo
