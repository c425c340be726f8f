#include "command_line.h"

namespace velmo::command_line {

namespace {

constexpr std::string_view reserved = " \t\n\r\"'\\><~|&;$*?#()`";
constexpr std::string_view escapedInQuotes = "\"`$\\";

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
    const bool needsQuotes = program.find_first_of(reserved) != std::string_view::npos;
    return needsQuotes ? '"' + argument + '"' : argument;
}

std::string programOf(std::string_view commandLine) {
    std::string program;
    char quote = 0;
    for (std::size_t index = 0; index < commandLine.size(); ++index) {
        const char character = commandLine[index];
        const char next = index + 1 < commandLine.size() ? commandLine[index + 1] : 0;
        if (quote == 0 && (character == ' ' || character == '\t')) {
            if (!program.empty())
                break;
        } else if (character == quote) {
            quote = 0;
        } else if (quote == 0 && (character == '"' || character == '\'')) {
            quote = character;
        } else {
            const bool isPair =
                (character == '\\' && quote != '\'' && next != 0) || (character == '%' && next == '%');
            program += isPair ? next : character;
            index += isPair ? 1 : 0;
        }
    }
    return program;
}

}  // namespace velmo::command_line
