#pragma once

#include <string>
#include <vector>

namespace velmo {

/// Starts a program that goes on without us: in a session of its own, with nobody to wait for it, and with
/// none of our descriptors and signal settings. Nothing happens where that fails.
void launchDetached(const std::string& file, const std::vector<std::string>& arguments);

}  // namespace velmo
