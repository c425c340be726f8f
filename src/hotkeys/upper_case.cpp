#include "hotkeys/upper_case.h"

#include "preferences/utf8.h"

#include <algorithm>
#include <array>

namespace velmo {

namespace {

/// Every `step`th letter from `first` to `last` has its capital at a fixed distance.
struct Letters {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t step;
    int toCapital;
};

// What the standard library knows of letters depends on the process's locale; this does not.
constexpr std::array<Letters, 46> letters{{
    // Latin
    {0x61, 0x7A, 1, -32},
    {0xB5, 0xB5, 1, 743},
    {0xE0, 0xF6, 1, -32},
    {0xF8, 0xFE, 1, -32},
    {0xFF, 0xFF, 1, 121},
    {0x101, 0x12F, 2, -1},
    {0x131, 0x131, 1, -232},
    {0x133, 0x137, 2, -1},
    {0x13A, 0x148, 2, -1},
    {0x14B, 0x177, 2, -1},
    {0x17A, 0x17E, 2, -1},
    {0x17F, 0x17F, 1, -300},
    {0x183, 0x185, 2, -1},
    {0x199, 0x199, 1, -1},
    {0x1A1, 0x1A5, 2, -1},
    {0x1B0, 0x1B0, 1, -1},
    {0x1CE, 0x1DC, 2, -1},
    {0x1DD, 0x1DD, 1, -79},
    {0x1DF, 0x1EF, 2, -1},
    {0x1F9, 0x21F, 2, -1},
    {0x223, 0x233, 2, -1},
    {0x253, 0x253, 1, -210},
    {0x254, 0x254, 1, -206},
    {0x256, 0x257, 1, -205},
    {0x259, 0x259, 1, -202},
    {0x25B, 0x25B, 1, -203},
    {0x268, 0x268, 1, -209},
    {0x1E01, 0x1E95, 2, -1},
    {0x1EA1, 0x1EFF, 2, -1},
    // Greek
    {0x3AC, 0x3AC, 1, -38},
    {0x3AD, 0x3AF, 1, -37},
    {0x3B1, 0x3C1, 1, -32},
    {0x3C2, 0x3C2, 1, -31},
    {0x3C3, 0x3CB, 1, -32},
    {0x3CC, 0x3CC, 1, -64},
    {0x3CD, 0x3CE, 1, -63},
    // Cyrillic
    {0x430, 0x44F, 1, -32},
    {0x450, 0x45F, 1, -80},
    {0x461, 0x481, 2, -1},
    {0x48B, 0x4BF, 2, -1},
    {0x4C2, 0x4CE, 2, -1},
    {0x4CF, 0x4CF, 1, -15},
    {0x4D1, 0x52F, 2, -1},
    // Armenian and Georgian
    {0x561, 0x586, 1, -48},
    {0x10D0, 0x10FA, 1, 3008},
    {0x10FD, 0x10FF, 1, 3008},
}};

bool contains(const Letters& range, std::uint32_t letter) {
    return letter >= range.first && letter <= range.last && (letter - range.first) % range.step == 0;
}

std::uint32_t capitalOf(std::uint32_t letter) {
    const auto range = std::find_if(letters.begin(), letters.end(),
                                    [letter](const Letters& entry) { return contains(entry, letter); });
    return range == letters.end() ? letter
                                  : static_cast<std::uint32_t>(static_cast<int>(letter) + range->toCapital);
}

}  // namespace

std::string upperCased(std::string_view text) {
    if (!utf8::isValid(text))
        return std::string(text);
    constexpr std::uint32_t sharpS = 0xDF;
    constexpr std::uint32_t armenianLigature = 0x587;
    std::string result;
    for (std::size_t index = 0; index < text.size();) {
        const auto letter = utf8::next(text, index);
        if (letter == sharpS)
            result += "SS";
        else if (letter == armenianLigature)
            result += "ԵՒ";
        else
            utf8::append(result, capitalOf(letter));
    }
    return result;
}

}  // namespace velmo
