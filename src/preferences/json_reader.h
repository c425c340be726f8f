#pragma once

#include "preferences/json_value.h"

#include <map>
#include <string_view>

namespace velmo {

/// The members of a JSON object; the first counts where a name is repeated. Absent where the text is not one
/// object of valid JSON in UTF-8, or is nested more than 512 deep.
std::optional<std::map<std::string, JsonValue>> readJsonObject(std::string_view text);

}  // namespace velmo
