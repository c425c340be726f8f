#pragma once

#include <QString>

#include <string>

namespace velmo {

/// A text for a tooltip that shows it as it stands. Other programs give their items names; Qt takes for
/// markup what looks like it, and would fetch what that names.
QString plainToolTip(const std::string& text);

}  // namespace velmo
