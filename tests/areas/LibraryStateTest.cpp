// What the user does with notes.

#include "doubles/library/LibraryFixture.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LibraryStateTest : public LibraryFixture {
  protected:
    [[nodiscard]] LibraryState& library() { return state().library(); }
    [[nodiscard]] SavedNote note(const QUuid& id) {
        const SavedNote* found = library().savedNotes().find(id);
        return found ? *found : SavedNote();
    }
    void expectFileAsInMemory() {
        EXPECT_EQ(store().loadNotes(), library().savedNotes().records());
    }
};

TEST_F(LibraryStateTest, ANewNoteIsWrittenAtTheTop) {
    keepNote("older");
    library().setLibraryMessage("before");
    const QUuid id = library().createBlankNote("  Rivers \n", HubArea::Research);
    ASSERT_THAT(library().savedNotes().records(), SizeIs(2));
    const SavedNote& made = library().savedNotes().records().front();
    EXPECT_EQ(made.id, id);
    EXPECT_EQ(made.text, "Rivers");
    EXPECT_EQ(made.thoughts, "Rivers\n");
    EXPECT_EQ(made.thoughtsRTF, std::nullopt);
    EXPECT_THAT(made.flashcards, IsEmpty());
    EXPECT_EQ(made.area, HubArea::Research);
    EXPECT_EQ(made.createdAt, dateOf(m_clock.wallTime()));
    EXPECT_EQ(library().libraryMessage(), "");
    expectFileAsInMemory();
}

TEST_F(LibraryStateTest, ABlankTitleMakesAnEmptyNote) {
    const SavedNote made = note(library().createBlankNote("   ", HubArea::Personal));
    EXPECT_EQ(made.text, "");
    EXPECT_EQ(made.thoughts, "");
    EXPECT_EQ(displayTitle(made), "New Note");
}

TEST_F(LibraryStateTest, ABodyReplacesTheFormerOneWithItsRichForm) {
    const QUuid id = library().createBlankNote("Seed", HubArea::Personal);
    library().updateNoteThoughts(id, "New\nbody", QByteArray("{rtf}"));
    EXPECT_EQ(note(id).thoughts, "New\nbody");
    EXPECT_EQ(note(id).thoughtsRTF, "{rtf}");
    EXPECT_EQ(note(id).text, "Seed") << "a plain seed stays";
    library().updateNoteThoughts(id, "Newer", std::nullopt);
    EXPECT_EQ(note(id).thoughtsRTF, std::nullopt);
    expectFileAsInMemory();
}

TEST_F(LibraryStateTest, ASeedOfMarkdownBecomesTheFirstLineOfTheBody) {
    const QUuid id = keepNote("# Plan\n- one").id;
    library().updateNoteThoughts(id, "\n**Rivers**\nrest", std::nullopt);
    EXPECT_EQ(note(id).text, "Rivers");
}

TEST_F(LibraryStateTest, ABlankOrLongFirstLineLeavesTheSeed) {
    const QUuid id = keepNote("# Plan").id;
    library().updateNoteThoughts(id, " \n", std::nullopt);
    EXPECT_EQ(note(id).text, "# Plan");
    library().updateNoteThoughts(id, QString(121, u'x'), std::nullopt);
    EXPECT_EQ(note(id).text, "# Plan");
    library().updateNoteThoughts(id, QString(120, u'x'), std::nullopt);
    EXPECT_EQ(note(id).text, QString(120, u'x'));
}

TEST_F(LibraryStateTest, FlashcardsAndAreaAreReplaced) {
    const QUuid id = keepNote("Plan").id;
    library().updateNoteFlashcards(id, {{QUuid::createUuid(), "a", "b"}});
    library().updateNoteFlashcards(id, {{QUuid::createUuid(), "c", "d"}});
    library().updateNoteArea(id, HubArea::Study);
    ASSERT_THAT(note(id).flashcards, SizeIs(1));
    EXPECT_EQ(note(id).flashcards.front().front, "c");
    EXPECT_EQ(note(id).area, HubArea::Study);
    expectFileAsInMemory();
}

TEST_F(LibraryStateTest, AnEditNeitherMovesNorDatesANote) {
    const SavedNote older = keepNote("older");
    keepNote("newer");
    library().updateNoteThoughts(older.id, "edited", std::nullopt);
    EXPECT_EQ(library().savedNotes().records().back().id, older.id);
    EXPECT_EQ(note(older.id).createdAt, older.createdAt);
}

TEST_F(LibraryStateTest, AnUnknownNoteIsNotWritten) {
    put("saved-notes.json", "[]");
    const QUuid unknown = QUuid::createUuid();
    library().updateNoteThoughts(unknown, "x", std::nullopt);
    library().updateNoteFlashcards(unknown, {});
    library().updateNoteArea(unknown, HubArea::Study);
    library().replaceNoteContent(unknown, "x", "x", std::nullopt);
    EXPECT_EQ(contentOf("saved-notes.json"), "[]");
}

TEST_F(LibraryStateTest, ADeletedNoteIsGoneFromTheFileToo) {
    const SavedNote kept = keepNote("kept");
    const SavedNote deleted = keepNote("deleted");
    library().deleteSavedNote(deleted);
    EXPECT_THAT(library().savedNotes().records(), ElementsAre(kept));
    expectFileAsInMemory();
}

TEST_F(LibraryStateTest, DeletingWhatIsNotThereWritesTheListAllTheSame) {
    put("saved-notes.json", "[]");
    SavedNote unknown;
    unknown.id = QUuid::createUuid();
    library().deleteSavedNote(unknown);
    EXPECT_NE(contentOf("saved-notes.json"), "[]");
    EXPECT_THAT(store().loadNotes(), IsEmpty());
}

TEST_F(LibraryStateTest, ASaveThatFailsKeepsTheChangeInMemory) {
    QDir().mkpath(pathOf("saved-notes.json") + "/in the way");
    const QUuid id = library().createBlankNote("Plan", HubArea::Personal);
    EXPECT_EQ(note(id).text, "Plan");
    EXPECT_THAT(store().loadNotes(), IsEmpty());
}

TEST_F(LibraryStateTest, TheMessageIsToldOncePerChange) {
    const QSignalSpy told(&library(), &LibraryState::libraryMessageChanged);
    library().setLibraryMessage("a");
    library().setLibraryMessage("a");
    EXPECT_EQ(told.count(), 1);
}

} // namespace
} // namespace vorq
