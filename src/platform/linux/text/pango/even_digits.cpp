#include "even_digits.h"

#include "linux/text/pango/glib_pointers.h"

#include <algorithm>

namespace velmo {

namespace {

/// Digits of equal width where the font has them, and no kerning, which depends on the digit.
constexpr const char* features = "tnum=1, kern=0";

bool isDigit(gunichar character) {
    return g_unichar_isdigit(character);
}

/// A cluster of one glyph.
bool standsAlone(const PangoGlyphString* glyphs, int index) {
    const int cluster = glyphs->log_clusters[index];
    const bool sharesBefore = index > 0 && glyphs->log_clusters[index - 1] == cluster;
    const bool sharesAfter = index + 1 < glyphs->num_glyphs && glyphs->log_clusters[index + 1] == cluster;
    return !sharesBefore && !sharesAfter;
}

}  // namespace

PangoAttrList* EvenDigits::attributes(std::string_view text) {
    PangoAttrList* list = pango_attr_list_new();
    const char* end = text.data() + text.size();
    PangoAttribute* attribute = nullptr;
    for (const char* place = text.data(); place < end;) {
        const char* next = g_utf8_next_char(place);
        // What stands before a digit is kerned towards it.
        const bool concerned =
            isDigit(g_utf8_get_char(place)) || (next < end && isDigit(g_utf8_get_char(next)));
        if (concerned && !attribute) {
            attribute = pango_attr_font_features_new(features);
            attribute->start_index = static_cast<guint>(place - text.data());
            attribute->end_index = static_cast<guint>(text.size());
            pango_attr_list_insert(list, attribute);
        } else if (!concerned && attribute) {
            attribute->end_index = static_cast<guint>(place - text.data());
            attribute = nullptr;
        }
        place = next;
    }
    return list;
}

void EvenDigits::apply(PangoLayout* layout, PangoLayoutLine* line) {
    const char* text = pango_layout_get_text(layout);
    for (GSList* link = line->runs; link; link = link->next) {
        auto* run = static_cast<PangoLayoutRun*>(link->data);
        for (int index = 0; index < run->glyphs->num_glyphs; ++index) {
            const gunichar character =
                g_utf8_get_char(text + run->item->offset + run->glyphs->log_clusters[index]);
            if (!isDigit(character) || !standsAlone(run->glyphs, index))
                continue;
            const auto value = static_cast<gunichar>(g_unichar_digit_value(character));
            const auto& digits = system(layout, character - value);
            auto& geometry = run->glyphs->glyphs[index].geometry;
            // Whole pixels, so that edges stay sharp.
            const int room = digits.widest - digits.widths.at(value);
            geometry.x_offset = PANGO_UNITS_ROUND(room / 2);
            geometry.width = digits.widest;
        }
    }
}

const EvenDigits::System& EvenDigits::system(PangoLayout* layout, gunichar zero) {
    const auto [place, isNew] = systems_.try_emplace(zero);
    auto& digits = place->second;
    if (!isNew)
        return digits;
    constexpr int longestCharacter = 6;
    for (std::size_t value = 0; value < digits.widths.size(); ++value) {
        std::array<char, longestCharacter> character{};
        const int length = g_unichar_to_utf8(zero + static_cast<gunichar>(value), character.data());
        const ObjectPointer<PangoLayout> single(pango_layout_new(pango_layout_get_context(layout)));
        pango_layout_set_text(single.get(), character.data(), length);
        PangoAttrList* list =
            attributes(std::string_view(character.data(), static_cast<std::size_t>(length)));
        pango_layout_set_attributes(single.get(), list);
        pango_attr_list_unref(list);
        pango_layout_get_size(single.get(), &digits.widths.at(value), nullptr);
    }
    digits.widest = *std::max_element(digits.widths.begin(), digits.widths.end());
    return digits;
}

}  // namespace velmo
