#pragma once

#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// The executable file of a program that is looked for in folders separated by colons. Absent where there is
/// none.
std::optional<std::string> findProgram(const std::string& name, const std::string& folders);

/// Starts a program that goes on without us: in a session of its own, with nobody to wait for it, and with
/// none of our descriptors and signal settings. Nothing happens where that fails.
void launchDetached(const std::string& file, const std::vector<std::string>& arguments);

}  // namespace velmo
