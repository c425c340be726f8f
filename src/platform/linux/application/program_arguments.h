#pragma once

#include "application.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmo {

/// What the user asks of the program by the words after its name.
struct ProgramArguments {
    struct Start {};
    struct Help {};
    struct Version {};
    /// One line that says what is wrong with the words, without control characters.
    struct Mistake {
        std::string problem;
    };
    using Request = std::variant<Start, Help, Version, ApplicationCommand, Mistake>;

    static Request parse(const std::vector<std::string_view>& words);
    /// The command that has this word. Absent where none has.
    static std::optional<ApplicationCommand> command(std::string_view word);
    /// What `--help` prints: whole lines.
    static std::string_view help();
};

}  // namespace velmo
