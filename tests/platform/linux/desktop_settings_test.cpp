#include "linux/x11/desktop_settings.h"

#include <gtest/gtest.h>

namespace velmo::x11 {

namespace {

/// Writes settings as a settings manager does, in either byte order.
class Writer {
public:
    explicit Writer(bool bigEndian, std::uint32_t count) : bigEndian_(bigEndian) {
        bytes_ = {static_cast<std::uint8_t>(bigEndian ? 1 : 0), 0, 0, 0};
        number(7, 4);
        number(count, 4);
    }

    Writer& integer(const std::string& name, std::int32_t value) {
        head(0, name);
        number(static_cast<std::uint32_t>(value), 4);
        return *this;
    }
    Writer& text(const std::string& name, const std::string& value) {
        head(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
        return *this;
    }
    Writer& color(const std::string& name) {
        head(2, name);
        number(0xffff, 4);
        number(0xffff, 4);
        return *this;
    }
    Writer& number(std::uint32_t value, int size) {
        for (int index = 0; index < size; ++index) {
            const int shift = 8 * (bigEndian_ ? size - 1 - index : index);
            bytes_.push_back(static_cast<std::uint8_t>(value >> shift));
        }
        return *this;
    }
    const std::vector<std::uint8_t>& bytes() const { return bytes_; }

private:
    void head(std::uint8_t type, const std::string& name) {
        bytes_.push_back(type);
        bytes_.push_back(0);
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(1, 4);
    }
    void padded(const std::string& value) {
        bytes_.insert(bytes_.end(), value.begin(), value.end());
        while (bytes_.size() % 4 != 0)
            bytes_.push_back(0);
    }

    bool bigEndian_;
    std::vector<std::uint8_t> bytes_;
};

TEST(XSettings, AreReadInBothByteOrders) {
    for (const bool bigEndian : {false, true}) {
        Writer writer(bigEndian, 3);
        writer.integer("Xft/DPI", 147456).color("Some/Color").text("Net/ThemeName", "Adwaita-dark");
        const auto settings = parseXSettings(writer.bytes());
        EXPECT_EQ(settings.size(), 3U);
        EXPECT_EQ(settings.at("Xft/DPI"), XSetting(147456));
        EXPECT_EQ(settings.at("Net/ThemeName"), XSetting("Adwaita-dark"));
    }
}

TEST(XSettings, CutOffContentGivesWhatCameBefore) {
    Writer writer(false, 2);
    writer.integer("Xft/DPI", 98304).text("Net/ThemeName", "Adwaita");
    for (std::size_t size = 0; size < writer.bytes().size(); ++size) {
        const std::vector<std::uint8_t> part(writer.bytes().begin(),
                                             writer.bytes().begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_LE(parseXSettings(part).size(), 1U) << size;
    }
    EXPECT_EQ(parseXSettings(writer.bytes()).size(), 2U);
}

TEST(XSettings, LyingLengthsAndCountsAreHarmless) {
    Writer writer(false, 0xffffffff);
    writer.integer("Xft/DPI", 98304).number(0xffff0001, 4).number(0xffffffff, 4);
    EXPECT_EQ(parseXSettings(writer.bytes()).size(), 1U);
}

Appearance appearance(const std::map<std::string, XSetting>& settings, const std::string& resources = "") {
    return appearanceFrom(settings, resources);
}

TEST(AppearanceFromSettings, IsLightAtScaleOneByDefault) {
    EXPECT_EQ(appearance({}), (Appearance{false, 1}));
}

TEST(AppearanceFromSettings, TakesTheScaleFromTheResolution) {
    EXPECT_EQ(appearance({{"Xft/DPI", 192 * 1024}}).scale, 2);
    EXPECT_EQ(appearance({{"Xft/DPI", 144 * 1024}}).scale, 1.5);
    EXPECT_EQ(appearance({{"Xft/DPI", 98 * 1024}}).scale, 1) << "no blur for a slightly odd resolution";
    EXPECT_EQ(appearance({{"Xft/DPI", -1}}).scale, 1);
    EXPECT_EQ(appearance({{"Xft/DPI", 72 * 1024}}).scale, 1);
    EXPECT_EQ(appearance({{"Xft/DPI", 2000 * 1024}}).scale, 4);
    EXPECT_EQ(appearance({{"Gdk/WindowScalingFactor", 2}}).scale, 2);
    EXPECT_EQ(appearance({{"Gdk/WindowScalingFactor", 2}, {"Xft/DPI", 192 * 1024}}).scale, 2);
}

TEST(AppearanceFromSettings, FallsBackToTheResourceDatabase) {
    EXPECT_EQ(appearance({}, "*foo: 1\nXft.dpi:\t192\nXft.hinting: 1\n").scale, 2);
    EXPECT_EQ(appearance({{"Xft/DPI", 96 * 1024}}, "Xft.dpi: 192\n").scale, 1);
    EXPECT_EQ(appearance({}, "Xft.dpi: many\n").scale, 1);
    EXPECT_EQ(appearance({}, "Xft.dpi: nan\n").scale, 1);
    EXPECT_EQ(appearance({}, "Xft.dpi:").scale, 1);
}

TEST(AppearanceFromSettings, TakesTheAccentFromTheThemesColours) {
    const auto accent = [](const std::string& scheme) {
        return appearance({{"Gtk/ColorScheme", scheme}}).accent;
    };
    constexpr Color orange = colorFromRgb(0xff6600);
    EXPECT_EQ(appearance({}).accent, std::nullopt);
    EXPECT_EQ(accent("fg_color:#000000\nselected_bg_color:#ff6600\n"), orange);
    EXPECT_EQ(accent("selected_bg_color: #ff6600 ; fg_color: #000"), orange);
    EXPECT_EQ(accent("selected_bg_color:#f60"), orange);
    EXPECT_EQ(accent("selected_bg_color:#ffff66660000"), orange);
    for (const char* unusable :
         {"", ";;\n", "selected_bg_color", "selected_bg_color:", "selected_bg_color:#",
          "selected_bg_color:#12", "selected_bg_color:#12345g", "selected_bg_color:#12345678901234567890",
          "selected_bg_color:orange", "not_selected_bg_color:#ff6600", ":selected_bg_color:#ff6600"})
        EXPECT_EQ(accent(unusable), std::nullopt) << unusable;
    EXPECT_EQ(appearance({{"Gtk/ColorScheme", 7}}).accent, std::nullopt) << "a value of another type";
}

TEST(AppearanceFromSettings, KnowsDarkThemes) {
    EXPECT_TRUE(appearance({{"Net/ThemeName", "Adwaita-dark"}}).dark);
    EXPECT_TRUE(appearance({{"Net/ThemeName", "Arc-Darker"}}).dark);
    EXPECT_FALSE(appearance({{"Net/ThemeName", "Adwaita"}}).dark);
    EXPECT_TRUE(appearance({{"Gtk/ApplicationPreferDarkTheme", 1}}).dark);
    EXPECT_FALSE(appearance({{"Net/ThemeName", 1}}).dark) << "a value of another type";
}

}  // namespace

}  // namespace velmo::x11
