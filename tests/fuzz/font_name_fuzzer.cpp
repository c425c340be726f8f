#include "bytes.h"
#include "linux/text/pango/font_description.h"
#include "require.h"

/// The user's font, as whoever is the settings manager names it: whatever that is, texts fit into the bar.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    constexpr double smallest = 7;
    constexpr double largest = 19;
    fuzz::Bytes bytes(data, size);
    Appearance appearance;
    appearance.scale = 1 + static_cast<double>(bytes.below(13)) / 4;
    Font font;
    font.style = bytes.below(2) == 0 ? TextStyle::body : TextStyle::caption;
    font.isMonospaced = bytes.below(4) == 0;
    appearance.font = bytes.text();
    const auto description = fontDescription(font, appearance);
    const double pixels =
        pango_font_description_get_size(description.get()) / (PANGO_SCALE * appearance.scale);
    fuzz::require(pango_font_description_get_size_is_absolute(description.get()));
    fuzz::require(pixels > smallest - 0.01 && pixels < largest + 0.01);
    fuzz::require(pango_font_description_get_family(description.get()) != nullptr);
    return 0;
}
