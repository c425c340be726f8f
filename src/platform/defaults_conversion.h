#pragma once

#include "user_defaults.h"

#include <optional>
#include <string>

namespace velmo::defaults_conversion {

/// How a stored value of any type reads as one of another type; shared by all stores that are not
/// the system's own, so that they agree.
bool toBool(const DefaultsValue& value);
double toDouble(const DefaultsValue& value);
std::optional<std::string> toString(const DefaultsValue& value);

}  // namespace velmo::defaults_conversion
