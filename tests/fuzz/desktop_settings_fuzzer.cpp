#include "bytes.h"
#include "linux/x11/desktop_settings.h"

#include <cmath>
#include <cstdlib>

/// Whoever has made himself the settings manager: scales stay sensible, and colours are colours.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    fuzz::Bytes bytes(data, size);
    const std::string settings = bytes.text(bytes.number(2));
    const auto parsed = x11::parseXSettings({settings.begin(), settings.end()});
    const auto appearance = x11::appearanceFrom(parsed, bytes.text());
    if (!(appearance.scale >= 1 && appearance.scale <= 4) || std::fmod(appearance.scale, 0.25) != 0)
        std::abort();
    if (const auto& accent = appearance.accent) {
        for (const double part : {accent->red, accent->green, accent->blue}) {
            if (!(part >= 0 && part <= 1))
                std::abort();
        }
    }
    return 0;
}
