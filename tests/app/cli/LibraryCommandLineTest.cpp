#include "app/cli/CommandLine.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

Command library(const LibraryCommand& command) {
    return command;
}

TEST(LibraryCommandLine, ListsNotes) {
    EXPECT_EQ(parseCommandLine({"notes", "list"}), library(ListNotes{}));
    EXPECT_EQ(parseCommandLine({"notes", "list", "--json", "--area", "study"}),
              library(ListNotes{HubArea::Study, true}));
}

TEST(LibraryCommandLine, ShowsOneNoteOrChat) {
    EXPECT_EQ(parseCommandLine({"notes", "show", "ABC"}), library(ShowNote{"ABC", false}));
    EXPECT_EQ(parseCommandLine({"chats", "show", "--json", "ABC"}), library(ShowChat{"ABC", true}));
    EXPECT_EQ(parseCommandLine({"chats", "list", "--json"}), library(ListChats{true}));
}

TEST(LibraryCommandLine, SavesWordsOrStandardInput) {
    EXPECT_EQ(parseCommandLine({"notes", "save"}), library(SaveNote{}));
    EXPECT_EQ(parseCommandLine({"notes", "save", "-"}), library(SaveNote{}));
    EXPECT_EQ(parseCommandLine({"notes", "save", "--title=Rivers", "--area", "writing", "--plain",
                                "they", "flow"}),
              library(SaveNote{"they flow", "Rivers", HubArea::Writing, true}));
    EXPECT_EQ(parseCommandLine({"notes", "save", "--", "--plain"}),
              library(SaveNote{"--plain", {}, HubArea::Personal, false}));
}

TEST(LibraryCommandLine, TheNameOfTheFileTellsTheFormat) {
    const auto exported = [](const QString& file) {
        return parseCommandLine({"notes", "export", "ABC", "--output", file});
    };
    EXPECT_EQ(exported("a.md"), library(ExportNote{"ABC", NoteFormat::Markdown, "a.md"}));
    EXPECT_EQ(exported("a.TXT"), library(ExportNote{"ABC", NoteFormat::Plain, "a.TXT"}));
    EXPECT_EQ(exported("a.rtf"), library(ExportNote{"ABC", NoteFormat::Rtf, "a.rtf"}));
    EXPECT_EQ(exported("rtf/a"), library(ExportNote{"ABC", NoteFormat::Markdown, "rtf/a"}));
    EXPECT_EQ(
        parseCommandLine({"notes", "export", "--format", "plain", "--output", "a.rtf", "ABC"}),
        library(ExportNote{"ABC", NoteFormat::Plain, "a.rtf"}));
}

TEST(LibraryCommandLine, NamesWhatItDoesNotKnow) {
    for (const QString& line :
         {"notes", "chats", "notes fly", "chats export A", "chats save A", "notes show",
          "notes show A B", "notes list A", "chats list A", "notes export", "notes list --loud",
          "notes list --area", "notes list --area=garden", "notes save --json A",
          "notes export --format pdf A", "notes export A --output", "chats show --area study A"}) {
        EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine(line.split(' '))))
            << qPrintable(line);
    }
}

TEST(LibraryCommandLine, ShowsHelp) {
    for (const QString& line : {"notes --help", "chats -h", "notes list --help", "notes show A -h",
                                "chats list --help"}) {
        EXPECT_TRUE(std::holds_alternative<ShowText>(parseCommandLine(line.split(' '))))
            << qPrintable(line);
    }
}

} // namespace
} // namespace vorq
