#pragma once

#include <filesystem>
#include <string>

namespace velmo {

/// A file that belongs to the program: beside it, as it is built, or in the library folder beside the
/// program's, as it is installed. Empty where there is none.
std::filesystem::path findBesideProgram(const std::string& name);

}  // namespace velmo
