#include "app/cli/CommandLine.h"

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
         {QStringList{"fly"}, QStringList{""}, QStringList{"ask", "--loud"},
          QStringList{"ask", "--file"}, QStringList{"ask", "--model="}, QStringList{"--loud"},
          QStringList{"summon", "note"}, QStringList{"summon", "vorq://x"},
          QStringList{"https://x"}})
        EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine(arguments)))
            << qPrintable(arguments.join(' '));
}

TEST(CommandLine, WithoutACommandTheDesktopProgramStarts) {
    EXPECT_EQ(parseCommandLine({}), Command(DesktopArguments{}));
    EXPECT_EQ(parseCommandLine({"--background", "--launched-at-login"}),
              Command(DesktopArguments{Verb::Launch, "", true, true}));
}

TEST(CommandLine, VerbsAreForTheDesktopProgram) {
    for (const Verb verb : {Verb::Summon, Verb::Note, Verb::PushNote, Verb::Clear, Verb::Toggle,
                            Verb::Settings, Verb::SaveChat, Verb::Quit}) {
        EXPECT_EQ(verbNamed(nameOf(verb)), verb);
        EXPECT_EQ(parseCommandLine({nameOf(verb)}),
                  Command(DesktopArguments{verb, "", false, false}));
    }
    EXPECT_EQ(parseCommandLine({"push-note", "--background"}),
              Command(DesktopArguments{Verb::PushNote, "", true, false}));
    EXPECT_EQ(verbNamed(""), std::nullopt);
}

TEST(CommandLine, TheHelpSpeaksOfTheKeysForNotes) {
    const Command help = parseCommandLine({"--help"});
    const QString text = std::get<ShowText>(help).text;
    EXPECT_TRUE(text.contains("vorq save-chat"));
    EXPECT_TRUE(text.contains("vorq note "));
    EXPECT_TRUE(text.contains("vorq push-note"));
}

TEST(CommandLine, AccessibilityIsEnabledFromTheTerminal) {
    EXPECT_EQ(parseCommandLine({"enable-accessibility"}), Command(EnableAccessibility{}));
    EXPECT_TRUE(
        std::holds_alternative<ShowText>(parseCommandLine({"enable-accessibility", "--help"})));
    EXPECT_TRUE(
        std::holds_alternative<UsageError>(parseCommandLine({"enable-accessibility", "please"})));
}

TEST(CommandLine, TheLocalBackendIsSwitchedFromTheTerminal) {
    EXPECT_EQ(parseCommandLine({"enable-backend"}), Command(SwitchBackend{true}));
    EXPECT_EQ(parseCommandLine({"disable-backend"}), Command(SwitchBackend{false}));
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"enable-backend", "--help"})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine({"enable-backend", "now"})));
}

TEST(CommandLine, TheDoctorTakesOneOption) {
    EXPECT_EQ(parseCommandLine({"doctor"}), Command(Doctor{}));
    EXPECT_EQ(parseCommandLine({"doctor", "--json"}), Command(Doctor{.asJson = true}));
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"doctor", "--help"})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine({"doctor", "me"})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine({"doctor", "--xml"})));
    EXPECT_EQ(parseCommandLine({"doctor", "--window"}),
              Command(DesktopArguments{Verb::Doctor, "", false, false}));
    EXPECT_EQ(verbNamed(nameOf(Verb::Doctor)), Verb::Doctor);
    EXPECT_TRUE(
        std::holds_alternative<UsageError>(parseCommandLine({"doctor", "--window", "--json"})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine({"--background", "doctor"})));
}

TEST(CommandLine, PreviewsAreListedAndSwitched) {
    EXPECT_EQ(parseCommandLine({"preview"}), Command(ListPreviews{}));
    for (const Preview preview : allPreviews)
        for (const bool isOn : {true, false})
            EXPECT_EQ(
                parseCommandLine({"preview", previewNames.nameOf(preview), isOn ? "on" : "off"}),
                Command(SwitchPreview{preview, isOn}));
    for (const QStringList& arguments :
         {QStringList{"watch"}, QStringList{"watch", "maybe"}, QStringList{"watch", "on", "on"},
          QStringList{"watch", "on", "--loud"}, QStringList{"fly"}, QStringList{"fly", "on"},
          QStringList{"fly", "--help"}, QStringList{"Watch", "on"}, QStringList{""}})
        EXPECT_TRUE(std::holds_alternative<UsageError>(
            parseCommandLine(QStringList{"preview"} + arguments)))
            << qPrintable(arguments.join(u' '));
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"preview", "hub", "-h"})));
}

TEST(CommandLine, ANameThatNoPreviewHasIsToldWithThoseThereAre) {
    const Command expected(
        UsageError{"There is no preview fly: there are hub, writing and watch."});
    EXPECT_EQ(parseCommandLine({"preview", "fly", "on"}), expected);
    EXPECT_EQ(parseCommandLine({"--preview=fly"}), expected);
}

TEST(CommandLine, WhatIsWrongWithAPreviewIsTold) {
    const auto misuse = [](const QStringList& arguments) {
        const Command command = parseCommandLine(arguments);
        const auto* error = std::get_if<UsageError>(&command);
        return error ? error->message : QString();
    };
    EXPECT_EQ(misuse({"preview", "", "on"}),
              "A preview has a name: there are hub, writing and watch.");
    EXPECT_EQ(misuse({"preview", "watch"}), "preview watch takes one word more, on or off.");
    EXPECT_EQ(misuse({"preview", "watch", "on", "off"}), "off is one too many.");
    EXPECT_EQ(misuse({"--preview=watch", "ask", "x"}), "Nothing may stand before ask.");
    EXPECT_EQ(misuse({"--preview=watch", "fly"}), "There is no command fly.");
}

TEST(CommandLine, PreviewsAreOpenedForOneRun) {
    DesktopArguments expected;
    expected.previews = {Preview::Watch, Preview::Hub};
    EXPECT_EQ(parseCommandLine({"--preview=watch", "--preview", "hub"}), Command(expected));
    EXPECT_EQ(parseCommandLine({"--preview"}),
              Command(UsageError{"--preview needs the name of a preview."}));
}

TEST(CommandLine, EachPreviewHasASentence) {
    for (const Preview preview : allPreviews)
        EXPECT_TRUE(sentenceOn(preview).endsWith(u'.'));
    EXPECT_TRUE(sentenceOn(Preview::Hub).contains("with a later release"));
}

TEST(CommandLine, ALinkAloneIsForTheDesktopProgram) {
    EXPECT_EQ(parseCommandLine({"vorq://auth/callback?handoff=a"}),
              Command(DesktopArguments{Verb::Launch, "vorq://auth/callback?handoff=a"}));
    // As for any scheme, the case means nothing.
    EXPECT_EQ(parseCommandLine({"VORQ://auth/callback?handoff=a"}),
              Command(DesktopArguments{Verb::Launch, "VORQ://auth/callback?handoff=a"}));
}

TEST(CommandLine, AWordThatIsWrongIsToldThoughHelpIsWanted) {
    for (const QStringList& arguments :
         {QStringList{"bogus", "--help"}, QStringList{"summon", "extra", "--help"},
          QStringList{"enable-backend", "now", "--help"}, QStringList{"open", "a", "b", "--help"}})
        EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine(arguments)))
            << qPrintable(arguments.join(u' '));
}

TEST(CommandLine, ShowsHelpAndVersion) {
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"--help"})));
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"ask", "--help"})));
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"summon", "--help"})));
    EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine({"--version"})));
}

} // namespace
} // namespace vorq
