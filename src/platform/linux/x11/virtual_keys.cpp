#include "virtual_keys.h"

#include <algorithm>
#include <array>

namespace velmo::x11 {

namespace {

struct Key {
    std::uint16_t code;
    std::string_view name;
};

constexpr std::array keys = {
    // Letters, by their places on an ANSI keyboard: A to Z.
    Key{0, "AC01"},
    Key{11, "AB05"},
    Key{8, "AB03"},
    Key{2, "AC03"},
    Key{14, "AD03"},
    Key{3, "AC04"},
    Key{5, "AC05"},
    Key{4, "AC06"},
    Key{34, "AD08"},
    Key{38, "AC07"},
    Key{40, "AC08"},
    Key{37, "AC09"},
    Key{46, "AB07"},
    Key{45, "AB06"},
    Key{31, "AD09"},
    Key{35, "AD10"},
    Key{12, "AD01"},
    Key{15, "AD04"},
    Key{1, "AC02"},
    Key{17, "AD05"},
    Key{32, "AD07"},
    Key{9, "AB04"},
    Key{13, "AD02"},
    Key{7, "AB02"},
    Key{16, "AD06"},
    Key{6, "AB01"},
    // Digits, 1 to 0.
    Key{18, "AE01"},
    Key{19, "AE02"},
    Key{20, "AE03"},
    Key{21, "AE04"},
    Key{23, "AE05"},
    Key{22, "AE06"},
    Key{26, "AE07"},
    Key{28, "AE08"},
    Key{25, "AE09"},
    Key{29, "AE10"},
    // Punctuation, row by row; the last is the additional key of ISO keyboards.
    Key{50, "TLDE"},
    Key{27, "AE11"},
    Key{24, "AE12"},
    Key{33, "AD11"},
    Key{30, "AD12"},
    Key{42, "BKSL"},
    Key{41, "AC10"},
    Key{39, "AC11"},
    Key{43, "AB08"},
    Key{47, "AB09"},
    Key{44, "AB10"},
    Key{10, "LSGT"},
    // Editing.
    Key{36, "RTRN"},
    Key{48, "TAB"},
    Key{49, "SPCE"},
    Key{51, "BKSP"},
    Key{53, "ESC"},
    // Keypad: 0 to 9, then its operators. Clear stands where Num Lock is.
    Key{82, "KP0"},
    Key{83, "KP1"},
    Key{84, "KP2"},
    Key{85, "KP3"},
    Key{86, "KP4"},
    Key{87, "KP5"},
    Key{88, "KP6"},
    Key{89, "KP7"},
    Key{91, "KP8"},
    Key{92, "KP9"},
    Key{65, "KPDL"},
    Key{67, "KPMU"},
    Key{69, "KPAD"},
    Key{71, "NMLK"},
    Key{75, "KPDV"},
    Key{76, "KPEN"},
    Key{78, "KPSU"},
    Key{81, "KPEQ"},
    // F1 to F20.
    Key{122, "FK01"},
    Key{120, "FK02"},
    Key{99, "FK03"},
    Key{118, "FK04"},
    Key{96, "FK05"},
    Key{97, "FK06"},
    Key{98, "FK07"},
    Key{100, "FK08"},
    Key{101, "FK09"},
    Key{109, "FK10"},
    Key{103, "FK11"},
    Key{111, "FK12"},
    Key{105, "FK13"},
    Key{107, "FK14"},
    Key{113, "FK15"},
    Key{106, "FK16"},
    Key{64, "FK17"},
    Key{79, "FK18"},
    Key{80, "FK19"},
    Key{90, "FK20"},
    // Navigation. Help stands where Insert is.
    Key{114, "INS"},
    Key{115, "HOME"},
    Key{116, "PGUP"},
    Key{117, "DELE"},
    Key{119, "END"},
    Key{121, "PGDN"},
    Key{123, "LEFT"},
    Key{124, "RGHT"},
    Key{125, "DOWN"},
    Key{126, "UP"},
    // The additional keys of Japanese keyboards.
    Key{93, "AE13"},
    Key{94, "AB11"},
};

}  // namespace

std::optional<std::uint16_t> virtualKeyCodeOf(std::string_view keyName) {
    // Where the return key is tall, the key left of it bears another name.
    if (keyName == "AC12")
        keyName = "BKSL";
    const auto* const found =
        std::find_if(keys.begin(), keys.end(), [&](const Key& key) { return key.name == keyName; });
    return found == keys.end() ? std::nullopt : std::optional(found->code);
}

}  // namespace velmo::x11
