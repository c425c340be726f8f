#include "hotkeys/hot_key_modifiers.h"

#include "platform/hot_key_service.h"

#include <array>
#include <utility>

namespace velmo {

std::uint32_t hotKeyModifiers(ModifierFlags flags) {
    constexpr auto counterparts = std::to_array<std::pair<ModifierFlags, std::uint32_t>>({
        {modifier::command, hot_key_modifier::command},
        {modifier::shift, hot_key_modifier::shift},
        {modifier::option, hot_key_modifier::option},
        {modifier::control, hot_key_modifier::control},
    });
    std::uint32_t modifiers = 0;
    for (const auto& [flag, counterpart] : counterparts) {
        if ((flags & flag) != 0)
            modifiers |= counterpart;
    }
    return modifiers;
}

}  // namespace velmo
