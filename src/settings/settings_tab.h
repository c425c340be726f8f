#pragma once

namespace velmo {

/// The tabs of the settings window, from left to right.
enum class SettingsTab { general, hiding, clock, panel, spacing };

}  // namespace velmo
