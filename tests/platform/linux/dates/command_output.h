#pragma once

#include <string>

namespace velmo {

/// What a shell command prints, and false in `succeeded` where it fails.
std::string commandOutput(const std::string& command, bool& succeeded);

/// A file of these tests.
std::string testFile(const std::string& name);

/// Content of a zone's file in the system's time zone database.
std::string zoneFile(const std::string& zone);

}  // namespace velmo
