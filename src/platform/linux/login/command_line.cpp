#include "command_line.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace velmo::command_line {

namespace {

constexpr std::string_view reserved = " \t\n\r\"'\\><~|&;$*?#()`";
constexpr std::string_view escapedInQuotes = "\"`$\\";

constexpr const char* environmentSetter = "env";

/// Without quotes and escapes.
std::vector<std::string> words(std::string_view commandLine) {
    std::vector<std::string> found;
    bool isInWord = false;
    char quote = 0;
    for (std::size_t index = 0; index < commandLine.size(); ++index) {
        const char character = commandLine[index];
        if (quote == 0 && (character == ' ' || character == '\t')) {
            isInWord = false;
            continue;
        }
        if (!std::exchange(isInWord, true))
            found.emplace_back();
        const char next = index + 1 < commandLine.size() ? commandLine[index + 1] : 0;
        if (character == quote) {
            quote = 0;
        } else if (quote == 0 && (character == '"' || character == '\'')) {
            quote = character;
        } else {
            const bool isPair =
                (character == '\\' && quote != '\'' && next != 0) || (character == '%' && next == '%');
            found.back() += isPair ? next : character;
            index += isPair ? 1 : 0;
        }
    }
    return found;
}

}  // namespace

std::string running(std::string_view program) {
    std::string argument;
    for (const char character : program) {
        if (escapedInQuotes.find(character) != std::string_view::npos)
            argument += '\\';
        // A single one would stand for a file to be opened.
        if (character == '%')
            argument += '%';
        argument += character;
    }
    if (program.find_first_of(reserved) != std::string_view::npos)
        argument = '"' + argument + '"';
    // Many desktops look for the first word with both percent signs. But what sets the environment takes a
    // path with an equals sign for a variable.
    if (program.find('%') != std::string_view::npos && program.find('=') == std::string_view::npos)
        argument = std::string(environmentSetter) + ' ' + argument;
    return argument;
}

std::string programOf(std::string_view commandLine) {
    const auto all = words(commandLine);
    if (all.empty())
        return {};
    if (all.front().substr(all.front().rfind('/') + 1) != environmentSetter)
        return all.front();
    const auto program = std::find_if(all.begin() + 1, all.end(), [](const std::string& word) {
        return word.find('=') == std::string::npos;
    });
    const bool isKnown = program != all.end() && !program->starts_with('-');
    return isKnown ? *program : all.front();
}

}  // namespace velmo::command_line
