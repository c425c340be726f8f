#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace velmo {

/// Replaces the file's content as a whole: a reader, or a crash at any moment, sees the old or the new
/// content. A symbolic link keeps pointing where it did. Folders that are missing are made, readable
/// by the user alone, as is the file. Where that fails, the old content stays and the system's error is
/// returned. What is no regular file is not replaced. A process that is killed meanwhile may leave a file
/// beside this one, which the next replacement removes.
std::error_code replaceFile(const std::filesystem::path& file, const std::string& content);

}  // namespace velmo
