#include "linux/application/program_arguments.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

using Arguments = ProgramArguments;

std::string problemOf(const std::vector<std::string_view>& words) {
    const auto request = Arguments::parse(words);
    const auto* mistake = std::get_if<Arguments::Mistake>(&request);
    return mistake ? mistake->problem : "";
}

TEST(ProgramArguments, NoWordsStartTheProgram) {
    EXPECT_TRUE(std::holds_alternative<Arguments::Start>(Arguments::parse({})));
}

TEST(ProgramArguments, HasACommandForEachWord) {
    const std::vector<std::pair<std::string_view, ApplicationCommand>> commands = {
        {"toggle", ApplicationCommand::toggle},
        {"toggle-all", ApplicationCommand::toggleAll},
        {"panel", ApplicationCommand::panel},
        {"settings", ApplicationCommand::settings},
        {"quit", ApplicationCommand::quit}};
    for (const auto& [word, command] : commands) {
        const auto request = Arguments::parse({word});
        ASSERT_TRUE(std::holds_alternative<ApplicationCommand>(request)) << word;
        EXPECT_EQ(std::get<ApplicationCommand>(request), command) << word;
        EXPECT_EQ(Arguments::command(word), command);
        EXPECT_NE(Arguments::help().find("\n  " + std::string(word) + " "), std::string_view::npos) << word;
    }
}

TEST(ProgramArguments, NothingElseIsACommand) {
    for (const std::string_view word : {"", "Toggle", "toggle ", "--help", "-h", "5"})
        EXPECT_EQ(Arguments::command(word), std::nullopt) << word;
}

TEST(ProgramArguments, KnowsItsOptions) {
    for (const std::string_view word : {"--help", "-h"})
        EXPECT_TRUE(std::holds_alternative<Arguments::Help>(Arguments::parse({word})));
    for (const std::string_view word : {"--version", "-V"})
        EXPECT_TRUE(std::holds_alternative<Arguments::Version>(Arguments::parse({word})));
}

TEST(ProgramArguments, TakesNothingElseForAWord) {
    for (const std::string_view word : {"", " ", "Toggle", "toggle ", "toggl", "toggle-", "toggleall",
                                        "--quit", "--", "-", "-v", "-H", "help", "version", "--help=1"})
        EXPECT_EQ(problemOf({word}), "unknown command \"" + std::string(word) +
                                         "\"; \"velmo --help\" lists what it understands");
}

TEST(ProgramArguments, TakesOneWord) {
    const std::vector<std::vector<std::string_view>> lists = {
        {"toggle", "panel"}, {"--help", "toggle"}, {"toggle", ""}, {"quit", "quit"}};
    for (const auto& words : lists)
        EXPECT_EQ(problemOf(words), "it takes one word, not 2; \"velmo --help\" lists what it understands");
    EXPECT_EQ(problemOf({"a", "b", "c"}).substr(0, 25), "it takes one word, not 3;");
}

TEST(ProgramArguments, MistakesStayOneLineAndLeaveTheTerminalAsItIs) {
    EXPECT_EQ(problemOf({"a\nb\x1b[2J\x7f é\t"}),
              "unknown command \"a?b?[2J? é?\"; \"velmo --help\" lists what it understands");
}

TEST(ProgramArguments, HelpConsistsOfWholeLinesThatFitATerminal) {
    const auto help = Arguments::help();
    ASSERT_TRUE(help.ends_with('\n'));
    std::size_t begin = 0;
    while (begin < help.size()) {
        const auto end = help.find('\n', begin);
        EXPECT_LE(end - begin, 80U) << help.substr(begin, end - begin);
        begin = end + 1;
    }
}

}  // namespace
}  // namespace velmo
