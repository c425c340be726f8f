#include "hotkeys/upper_case.h"

#include "preferences/utf8.h"

#include <algorithm>
#include <array>

namespace velmo {

namespace {

/// Letters that follow each other, whose capitals do so as well.
struct Run {
    std::uint32_t first;
    std::uint32_t last;
    int toCapital;
};

/// Capitals and small letters by turns: the first small one, and how many there are.
struct Pairs {
    std::uint32_t first;
    std::uint32_t count;
};

// What the standard library knows of letters depends on the process's locale; this does not.
constexpr auto runs = std::to_array<Run>({
    // Latin
    {0x61, 0x7A, -32},
    {0xB5, 0xB5, 743},
    {0xE0, 0xF6, -32},
    {0xF8, 0xFE, -32},
    {0xFF, 0xFF, 121},
    {0x131, 0x131, -232},
    {0x17F, 0x17F, -300},
    {0x1DD, 0x1DD, -79},
    {0x253, 0x253, -210},
    {0x254, 0x254, -206},
    {0x256, 0x257, -205},
    {0x259, 0x259, -202},
    {0x25B, 0x25B, -203},
    {0x268, 0x268, -209},
    // Greek
    {0x3AC, 0x3AC, -38},
    {0x3AD, 0x3AF, -37},
    {0x3B1, 0x3C1, -32},
    {0x3C2, 0x3C2, -31},
    {0x3C3, 0x3CB, -32},
    {0x3CC, 0x3CC, -64},
    {0x3CD, 0x3CE, -63},
    // Cyrillic
    {0x430, 0x44F, -32},
    {0x450, 0x45F, -80},
    {0x4CF, 0x4CF, -15},
    // Armenian and Georgian
    {0x561, 0x586, -48},
    {0x10D0, 0x10FA, 3008},
    {0x10FD, 0x10FF, 3008},
});

constexpr auto pairs = std::to_array<Pairs>({
    // Latin
    {0x101, 24},
    {0x133, 3},
    {0x13A, 8},
    {0x14B, 23},
    {0x17A, 3},
    {0x183, 2},
    {0x199, 1},
    {0x1A1, 3},
    {0x1B0, 1},
    {0x1CE, 8},
    {0x1DF, 9},
    {0x1F9, 20},
    {0x223, 9},
    // Cyrillic
    {0x461, 17},
    {0x48B, 27},
    {0x4C2, 7},
    {0x4D1, 48},
    // Latin
    {0x1E01, 75},
    {0x1EA1, 48},
});

std::uint32_t capitalOf(std::uint32_t letter) {
    for (const auto& run : runs) {
        if (letter >= run.first && letter <= run.last)
            return static_cast<std::uint32_t>(static_cast<int>(letter) + run.toCapital);
    }
    const bool isSecond = std::any_of(pairs.begin(), pairs.end(), [letter](const Pairs& range) {
        return letter >= range.first && letter < range.first + 2 * range.count &&
               (letter - range.first) % 2 == 0;
    });
    return isSecond ? letter - 1 : letter;
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
