#pragma once

#include <string>
#include <string_view>

namespace velmo {

/// The text in capitals, in whatever language: the letters that keyboards have. Text that is not UTF-8 stays
/// as it is.
std::string upperCased(std::string_view text);

}  // namespace velmo
