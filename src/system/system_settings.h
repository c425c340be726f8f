#pragma once

#include "platform/workspace.h"

#include <string_view>

namespace velmo {

/// Opens a place in the system's own settings. The anchor names a part of the pane; empty for all of it.
void openSystemSettings(Workspace& workspace, std::string_view pane, std::string_view anchor = {});

/// The pane with what the system's own clock shows.
inline constexpr std::string_view systemClockPane = "com.apple.ControlCenter-Settings.extension";

}  // namespace velmo
