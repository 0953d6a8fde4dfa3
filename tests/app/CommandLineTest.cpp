#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(CommandLine, AskTakesFilesAModelAndThePrompt) {
    const AskArguments expected{"Summarise this text", {"a.txt", "b.png"}, "openai/o3-mini"};
    EXPECT_EQ(parseCommandLine({"ask", "--file", "a.txt", "Summarise", "--file=b.png", "--model",
                                "openai/o3-mini", "this", "text"}),
              Command(expected));
}

TEST(CommandLine, WordsAfterTwoDashesAreThePrompt) {
    EXPECT_EQ(parseCommandLine({"ask", "--", "--file"}), Command(AskArguments{"--file", {}, {}}));
}

TEST(CommandLine, AskWithoutAPromptIsLeftToThePipedText) {
    EXPECT_EQ(parseCommandLine({"ask"}), Command(AskArguments{}));
}

TEST(CommandLine, OpenTakesOneUrl) {
    EXPECT_EQ(parseCommandLine({"open", "vorq://x"}), Command(OpenArguments{"vorq://x"}));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine({"open"})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine({"open", "a", "b"})));
}

TEST(CommandLine, NamesWhatItDoesNotKnow) {
    for (const QStringList& arguments :
         {QStringList{}, QStringList{"fly"}, QStringList{"ask", "--loud"},
          QStringList{"ask", "--file"}, QStringList{"ask", "--model="}})
        EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine(arguments)))
            << qPrintable(arguments.join(' '));
}

TEST(CommandLine, ShowsHelpAndVersion) {
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"--help"})));
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"ask", "--help"})));
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"--version"})));
}

} // namespace
} // namespace vorq
