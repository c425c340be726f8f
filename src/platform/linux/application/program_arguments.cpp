#include "program_arguments.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmo {

namespace {

constexpr std::array<std::pair<std::string_view, ApplicationCommand>, 5> commandNames = {
    {{"toggle", ApplicationCommand::toggle},
     {"toggle-all", ApplicationCommand::toggleAll},
     {"panel", ApplicationCommand::panel},
     {"settings", ApplicationCommand::settings},
     {"quit", ApplicationCommand::quit}}};

/// Stays one line, and leaves the terminal as it is.
std::string quoted(std::string_view word) {
    const auto isControl = [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; };
    std::string text(word);
    std::replace_if(text.begin(), text.end(), isControl, '?');
    return "\"" + text + "\"";
}

ProgramArguments::Mistake mistake(const std::string& what) {
    return {what + "; \"velmo --help\" lists what it understands"};
}

}  // namespace

ProgramArguments::Request ProgramArguments::parse(const std::vector<std::string_view>& words) {
    if (words.empty())
        return Start{};
    if (words.size() > 1)
        return mistake("it takes one word, not " + std::to_string(words.size()));
    const auto word = words.front();
    if (word == "--help" || word == "-h")
        return Help{};
    if (word == "--version" || word == "-V")
        return Version{};
    if (const auto found = command(word))
        return *found;
    return mistake("unknown command " + quoted(word));
}

std::optional<ApplicationCommand> ProgramArguments::command(std::string_view word) {
    for (const auto& [name, command] : commandNames) {
        if (word == name)
            return command;
    }
    return std::nullopt;
}

std::string_view ProgramArguments::help() {
    return R"(Usage: velmo [COMMAND]

Without a command, velmo puts the menu bar on the display. Where it is there
already, its settings open.

Commands, which the Velmo of this display carries out:
  toggle       show the hidden icons, or hide them
  toggle-all   show all icons, also those that are always hidden, or hide them
  panel        open the panel of hidden icons, or close it
  settings     open the settings
  quit         end it, and return once it has gone

Options:
  --help       print this text; -h does the same
  --version    print the version; -V does the same

The exit status is 0 where that was done, 1 where it could not be done, such as
where no Velmo runs, and 2 where the command is none of these.
)";
}

}  // namespace velmo
