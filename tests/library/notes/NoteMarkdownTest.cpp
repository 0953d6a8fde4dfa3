#include "library/notes/NoteMarkdown.h"

#include "library/notes/VorqNoteImport.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

SavedNote structured(const QString& reply) {
    SavedNote note;
    const auto content = VorqNoteImport::structure(reply);
    note.text = content.value().title;
    note.thoughts = content->plain;
    note.thoughtsRTF = content->rtf;
    return note;
}

SavedNote plain(const QString& thoughts) {
    SavedNote note;
    note.thoughts = thoughts;
    return note;
}

TEST(NoteMarkdown, AStructuredReplyReadsAsItWas) {
    const QString reply = "# Rivers\n\nThey **carry** silt.\n\n## Why\n\n- one\n- **two**\n\n"
                          "1. first\n2. second\n\n> quoted\n\n```\na = *b*\n\nc\n```\n\nEnd.\n";
    EXPECT_EQ(noteMarkdown(structured(reply)).toStdString(),
              "# Rivers\n\nThey **carry** silt.\n\n## Why\n\n- one\n- **two**\n\n"
              "1. first\n2. second\n\n> quoted\n\n```\na = *b*\n \nc\n```\n\nEnd.\n");
}

TEST(NoteMarkdown, APlainBodyShowsItsTitleAndLists) {
    EXPECT_EQ(
        noteMarkdown(plain("Rivers\n\n•\u00A0one\n–\u00A0two\n3.\u00A0three\nend")).toStdString(),
        "# Rivers\n\n- one\n- two\n3. three\nend\n");
    EXPECT_EQ(noteMarkdown(plain("•\u00A0one")), "- one\n");
}

TEST(NoteMarkdown, ABodyThatStillIsMarkdownStaysAsItIs) {
    EXPECT_EQ(noteMarkdown(plain("# Rivers\n\n**carry**")), "# Rivers\n\n**carry**\n");
}

TEST(NoteMarkdown, ARichFormThatSaysSomethingElseIsLeftOut) {
    SavedNote note = structured("# Rivers\n\nold");
    note.thoughts = "Rivers\nnew";
    EXPECT_EQ(noteMarkdown(note), "# Rivers\nnew\n");
    note.thoughtsRTF = "no rtf";
    EXPECT_EQ(noteMarkdown(note), "# Rivers\nnew\n");
}

TEST(NoteMarkdown, FlashcardsFollow) {
    SavedNote note = plain("Rivers");
    note.flashcards = {{QUuid(), "What\nflows?", "Water."}, {QUuid(), "Where?", "Down."}};
    EXPECT_EQ(noteMarkdown(note), "# Rivers\n\n## Flashcards\n\n- What flows?\n  → Water.\n\n"
                                  "- Where?\n  → Down.\n");
    EXPECT_EQ(notePlainText(note), "Rivers\n\nFlashcards\n\n- What flows?\n  → Water.\n\n"
                                   "- Where?\n  → Down.\n");
}

TEST(NoteMarkdown, AnEmptyNoteIsNothing) {
    EXPECT_EQ(noteMarkdown(SavedNote()), "");
    EXPECT_EQ(notePlainText(SavedNote()), "");
}

} // namespace
} // namespace vorq
