#include "cli/CommandLine.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using Verb = CommandLine::Verb;

TEST(CommandLineTest, ServeHasItsDefaults) {
    const auto line = parseCommandLine({"serve"});
    ASSERT_TRUE(line.has_value());
    EXPECT_EQ(line->verb, Verb::Serve);
    EXPECT_EQ(line->host, "127.0.0.1");
    EXPECT_EQ(line->port, 8787);
    EXPECT_FALSE(line->dataFolder.has_value());
    EXPECT_EQ(line->streamDelay, std::chrono::milliseconds(30));
}

TEST(CommandLineTest, ServeTakesItsOptionsInBothForms) {
    const auto line = parseCommandLine({"serve", "--host=::1", "--port", "0", "--data", "/d",
                                        "--config=/c", "--stream-delay", "7"});
    ASSERT_TRUE(line.has_value());
    EXPECT_EQ(line->host, "::1");
    EXPECT_EQ(line->port, 0);
    EXPECT_EQ(line->dataFolder, "/d");
    EXPECT_EQ(line->configFile, "/c");
    EXPECT_EQ(line->streamDelay, std::chrono::milliseconds(7));
}

TEST(CommandLineTest, ATeamsGatewayHasADatabaseAndAPublicAddress) {
    const std::vector<std::string> options = {"--database", "postgresql://db/vorq", "--public-url",
                                              "https://vorq.example.org"};
    for (const char* verb : {"serve", "reset-link"}) {
        std::vector<std::string> arguments = {verb};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto line = parseCommandLine(arguments);
        ASSERT_TRUE(line.has_value());
        EXPECT_EQ(line->database, "postgresql://db/vorq");
        EXPECT_EQ(line->publicUrl, "https://vorq.example.org");
    }
    EXPECT_EQ(parseCommandLine({"handoff", "--database", "postgresql://a"})->database,
              "postgresql://a");
}

TEST(CommandLineTest, OtherVerbs) {
    EXPECT_EQ(parseCommandLine({"handoff", "--data", "/d"})->verb, Verb::Handoff);
    EXPECT_EQ(parseCommandLine({"reset-link"})->verb, Verb::ResetLink);
    EXPECT_EQ(parseCommandLine({"reset-link", "--email", "a@b.c", "--port", "1"})->email, "a@b.c");
    EXPECT_EQ(parseCommandLine({"--help"})->verb, Verb::Help);
    EXPECT_EQ(parseCommandLine({"serve", "--help"})->verb, Verb::Help);
    EXPECT_EQ(parseCommandLine({"--version"})->verb, Verb::Version);
}

TEST(CommandLineTest, WhatItDoesNotKnowIsNamed) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"frobnicate"},
                                               {"serve", "frobnicate"},
                                               {"serve", "--frobnicate"},
                                               {"serve", "--port", "frobnicate"},
                                               {"handoff", "--frobnicate=1"}}) {
        const auto line = parseCommandLine(arguments);
        ASSERT_FALSE(line.has_value());
        EXPECT_NE(line.error().find("frobnicate"), std::string::npos) << line.error();
    }
}

TEST(CommandLineTest, MissingAndImpossibleValuesAreRefused) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"serve", "--port"},
                                               {"serve", "--data="},
                                               {"serve", "--port", "65536"},
                                               {"serve", "--port", "-1"},
                                               {"serve", "--port", "80x"},
                                               {"serve", "--stream-delay", "60001"},
                                               {"handoff", "--port", "1"}}) {
        EXPECT_FALSE(parseCommandLine(arguments).has_value());
    }
}

TEST(CommandLineTest, TheHelpNamesEveryOption) {
    for (const char* word :
         {"serve", "handoff", "reset-link", "--email", "--host", "--port", "--data", "--config",
          "--stream-delay", "--version", "VORQ_PROVIDER_URL"}) {
        EXPECT_NE(usage().find(word), std::string::npos) << word;
    }
}

} // namespace
} // namespace vorq::gateway::testing
