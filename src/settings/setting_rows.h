#pragma once

#include "platform/view.h"
#include "preferences/setting.h"

namespace velmo {

// Rows that several tabs have. A setting outlives the rows that show it.

View settingToggle(std::string title, Setting<bool>& setting);
/// A text that explains the row above it.
View helpText(std::string content);

}  // namespace velmo
