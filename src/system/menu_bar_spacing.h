#pragma once

#include "platform/global_preferences.h"
#include "platform/session.h"

#include <array>
#include <string_view>

namespace velmo {

/// The gap between the menu bar items of all applications. What counts is what the system has stored:
/// nothing is kept here, and no operation reports an error.
class MenuBarSpacing {
public:
    MenuBarSpacing() = delete;

    enum class Preset { system, compact, tight };

    /// In the order in which the user chooses among them.
    static constexpr std::array<Preset, 3> allPresets{Preset::system, Preset::compact, Preset::tight};

    static std::string_view rawValue(Preset preset);
    /// Absent for every text that is not exactly a raw value.
    static std::optional<Preset> presetFromRawValue(std::string_view text);
    static std::string_view displayName(Preset preset);
    static std::string_view description(Preset preset);

    static Preset currentPreset(const GlobalPreferences& preferences);
    /// Programs that are running keep their spacing until they are started again.
    static void apply(Preset preset, GlobalPreferences& preferences);
    /// So that every program takes the spacing up.
    static void logOut(Session& session);
};

}  // namespace velmo
