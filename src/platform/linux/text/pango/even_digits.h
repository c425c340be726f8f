#pragma once

#include <pango/pango.h>

#include <array>
#include <map>
#include <string_view>

namespace velmo {

/// Gives digits places of equal width, also in fonts that have no such digits of their own.
class EvenDigits {
public:
    /// Features of the font that help: its own digits of equal width, and no kerning beside digits.
    static PangoAttrList* attributes(std::string_view text);

    /// Changes a line of `layout`, which has the attributes. It stays valid until the layout changes.
    void apply(PangoLayout* layout, PangoLayoutLine* line);
    /// The font has changed.
    void forget() { systems_.clear(); }

private:
    /// The digits of one script.
    struct System {
        std::array<int, 10> widths{};
        int widest = 0;
    };

    const System& system(PangoLayout* layout, gunichar zero);

    /// By the digit 0.
    std::map<gunichar, System> systems_;
};

}  // namespace velmo
