#include "preferences/hotkey_binding.h"

#include <cstdlib>

/// What can be read can be written, and is read again as what it was.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto binding = velmo::decodeHotkeyBinding(velmo::Data(data, data + size));
    if (!binding)
        return 0;
    const auto again = velmo::encodeHotkeyBinding(*binding);
    if (!again || velmo::decodeHotkeyBinding(*again) != binding)
        std::abort();
    return 0;
}
