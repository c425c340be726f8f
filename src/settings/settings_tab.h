#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace velmo {

/// The tabs of the settings window, from left to right.
enum class SettingsTab { general, hiding, clock, panel, spacing };

inline constexpr std::array<SettingsTab, 5> allSettingsTabs{
    SettingsTab::general, SettingsTab::hiding, SettingsTab::clock, SettingsTab::panel, SettingsTab::spacing};

std::string_view rawValue(SettingsTab tab);
/// Absent for every text that is not exactly a raw value.
std::optional<SettingsTab> settingsTabFromRawValue(std::string_view text);
std::string_view displayName(SettingsTab tab);
std::string_view symbolName(SettingsTab tab);

}  // namespace velmo
