#pragma once

#include <string>
#include <vector>

namespace velmo {

/// What of a desktop's settings is wanted.
enum class SettingsPane { overview, dateAndTime, privacy };

/// The commands with which desktops open their settings, the best first, each as a program and its arguments.
/// `desktops` names the running desktop as XDG_CURRENT_DESKTOP does: the closest name first, separated by
/// colons. Empty for desktops without settings of their own.
std::vector<std::vector<std::string>> settingsCommands(const std::string& desktops, SettingsPane pane);

}  // namespace velmo
