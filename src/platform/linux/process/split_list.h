#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmo {

/// The parts of a list, without the empty ones.
std::vector<std::string> splitList(std::string_view list, char separator);

}  // namespace velmo
