#pragma once

#include <filesystem>

namespace velmo {

/// The file that this process runs; where it was replaced meanwhile, the file that took its place.
std::filesystem::path runningProgram();

}  // namespace velmo
