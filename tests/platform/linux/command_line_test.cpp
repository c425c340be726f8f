#include "linux/login/command_line.h"

#include <gtest/gtest.h>

namespace velmo {

namespace {

TEST(CommandLine, PlainPathStaysPlain) {
    EXPECT_EQ(command_line::running("/usr/bin/velmo"), "/usr/bin/velmo");
    EXPECT_EQ(command_line::running("/opt/velmo-1.0_x+y/velmo"), "/opt/velmo-1.0_x+y/velmo");
}

TEST(CommandLine, QuotesWhatWouldMeanSomethingElse) {
    EXPECT_EQ(command_line::running("/my programs/velmo"), "\"/my programs/velmo\"");
    EXPECT_EQ(command_line::running("/it's/velmo"), "\"/it's/velmo\"");
    EXPECT_EQ(command_line::running(R"(/a"b`c$d\e/velmo)"), R"("/a\"b\`c\$d\\e/velmo")");
}

TEST(CommandLine, PercentSignsAreNotInTheFirstWord) {
    EXPECT_EQ(command_line::running("/100%/velmo"), "env /100%%/velmo");
    EXPECT_EQ(command_line::running("/100% sure/velmo"), "env \"/100%% sure/velmo\"");
    EXPECT_EQ(command_line::running("/100%/a=b/velmo"), "/100%%/a=b/velmo")
        << "no variable of the environment";
    EXPECT_EQ(command_line::programOf("/100%%/a=b/velmo --now"), "/100%/a=b/velmo");
}

TEST(CommandLine, ProgramFollowsItsEnvironment) {
    EXPECT_EQ(command_line::programOf("env velmo"), "velmo");
    EXPECT_EQ(command_line::programOf("/usr/bin/env A=b \"C=d e\" velmo --now"), "velmo");
    EXPECT_EQ(command_line::programOf("env"), "env");
    EXPECT_EQ(command_line::programOf("env A=b"), "env");
    EXPECT_EQ(command_line::programOf("env -u A velmo"), "env") << "too much for us";
    EXPECT_EQ(command_line::programOf("/bin/environment velmo"), "/bin/environment");
}

TEST(CommandLine, ProgramIsTheFirstWord) {
    EXPECT_EQ(command_line::programOf("velmo"), "velmo");
    EXPECT_EQ(command_line::programOf("  /usr/bin/velmo --now %f"), "/usr/bin/velmo");
    EXPECT_EQ(command_line::programOf("\"/my programs/velmo\" --now"), "/my programs/velmo");
    EXPECT_EQ(command_line::programOf("'/my \\programs/velmo' --now"), "/my \\programs/velmo");
    EXPECT_EQ(command_line::programOf("/my\\ programs/velmo --now"), "/my programs/velmo");
}

TEST(CommandLine, ProgramOfADamagedLineIsWhatIsThere) {
    EXPECT_EQ(command_line::programOf(""), "");
    EXPECT_EQ(command_line::programOf("   "), "");
    EXPECT_EQ(command_line::programOf("\"/unfinished quote"), "/unfinished quote");
    EXPECT_EQ(command_line::programOf("/ends\\"), "/ends\\");
    EXPECT_EQ(command_line::programOf("/ends%"), "/ends%");
}

TEST(CommandLine, EveryCharacterOfAPathReturns) {
    for (int code = 1; code < 256; ++code) {
        const std::string program = std::string("/folder ") + static_cast<char>(code) + "/velmo";
        EXPECT_EQ(command_line::programOf(command_line::running(program) + " --argument"), program) << code;
        const std::string bare = std::string("/folder") + static_cast<char>(code) + "/velmo";
        EXPECT_EQ(command_line::programOf(command_line::running(bare) + " --argument"), bare) << code;
    }
}

}  // namespace

}  // namespace velmo
