#pragma once

#include <string>
#include <string_view>

/// The command lines of desktop entries, as their `Exec` key has them once the file's escapes are undone.
namespace velmo::command_line {

/// Runs just this program, whatever characters its path has.
std::string running(std::string_view program);

/// The program that a command line runs, without quotes; also where its environment is set first. Empty where
/// it runs none.
std::string programOf(std::string_view commandLine);

}  // namespace velmo::command_line
