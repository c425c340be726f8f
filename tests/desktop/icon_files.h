#pragma once

#include <filesystem>
#include <string>

namespace velmo::desktop {

/// A picture of one colour, such as "#00ff00", in a folder that is made where it is missing.
void writeSquare(const std::filesystem::path& file, const std::string& color);

/// Below a folder of themes, one that has a square of that colour under the name "themed", at any size.
void writeTheme(const std::filesystem::path& themes, const std::string& name, const std::string& color);

}  // namespace velmo::desktop
