// Other programs write to the library while its lists are in memory.

#include "doubles/library/LibraryFixture.h"

#include <QAbstractItemModelTester>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <ctime>
#include <functional>
#include <random>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class LibrarySyncTest : public LibraryFixture {
  protected:
    [[nodiscard]] LibraryState& library() { return state().library(); }

    [[nodiscard]] QStringList textsInMemory() { return texts(library().savedNotes().records()); }
    [[nodiscard]] QStringList textsInFile() const { return texts(store().loadNotes()); }

    [[nodiscard]] static QStringList texts(const std::vector<SavedNote>& notes) {
        QStringList texts;
        for (const SavedNote& note : notes)
            texts += note.text;
        return texts;
    }

    // What another program does to the file.
    void removeInFile(const QUuid& id) const {
        std::vector<SavedNote> notes = store().loadNotes();
        std::erase_if(notes, [&id](const SavedNote& note) { return note.id == id; });
        store().save(notes);
    }

    void editInFile(const QUuid& id, const QString& thoughts) const {
        std::vector<SavedNote> notes = store().loadNotes();
        std::ranges::find(notes, id, &SavedNote::id)->thoughts = thoughts;
        store().save(notes);
    }

    static bool waitFor(const std::function<bool()>& done) { return QTest::qWaitFor(done, 10'000); }

    // In whatever order: theirs is that of the file.
    void expectSameNotesInFile() {
        QStringList inFile = textsInFile();
        QStringList inMemory = textsInMemory();
        inFile.sort();
        inMemory.sort();
        EXPECT_EQ(inFile, inMemory);
    }

    // What this thread has had of the processor, however busy the machine is.
    [[nodiscard]] static std::chrono::nanoseconds timeOfThread() {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }

    [[nodiscard]] static std::vector<SavedNote> manyNotes(std::size_t count) {
        std::vector<SavedNote> notes(count);
        for (std::size_t index = 0; index < count; ++index) {
            notes[index].id = QUuid::createUuid();
            notes[index].text = "Note " + QString::number(index);
            notes[index].thoughts = QString(1500, u'x');
            notes[index].createdAt = Date(std::chrono::seconds(1'600'000'000 - index));
        }
        return notes;
    }

    // Another program in earnest, which has ended when this returns.
    void keepNoteElsewhere(const QString& text) {
        ASSERT_EQ(
            QProcess::execute(VORQ_LIBRARY_WRITER, {m_paths.applicationSupportFolder(), text}), 0);
    }

    void expectFileAsInMemory() {
        EXPECT_EQ(store().loadNotes(), library().savedNotes().records());
    }
};

TEST_F(LibrarySyncTest, ASaveKeepsTheNoteThatAnotherProgramAdded) {
    keepNote("old");
    EXPECT_THAT(textsInMemory(), ElementsAre("old"));
    keepNote("theirs");
    library().createBlankNote("ours", HubArea::Personal);
    EXPECT_THAT(textsInFile(), UnorderedElementsAre("old", "theirs", "ours"));
    EXPECT_THAT(textsInMemory(), ElementsAre("ours", "theirs", "old"));
}

TEST_F(LibrarySyncTest, ASaveTakesInWhatOthersChangedAndRemoved) {
    const SavedNote changed = keepNote("changed", "before");
    const SavedNote removed = keepNote("removed");
    EXPECT_THAT(textsInMemory(), SizeIs(2));
    editInFile(changed.id, "after");
    removeInFile(removed.id);
    library().createBlankNote("ours", HubArea::Personal);
    EXPECT_THAT(textsInMemory(), ElementsAre("ours", "changed"));
    EXPECT_EQ(library().savedNotes().find(changed.id)->thoughts, "after");
    expectFileAsInMemory();
}

TEST_F(LibrarySyncTest, ANoteThatBothChangedIsKeptTwice) {
    const SavedNote note = keepNote("note", "before");
    EXPECT_THAT(textsInMemory(), SizeIs(1));
    editInFile(note.id, "theirs");
    library().updateNoteThoughts(note.id, "ours", std::nullopt);
    ASSERT_THAT(library().savedNotes().records(), SizeIs(2));
    EXPECT_EQ(library().savedNotes().records()[0].id, note.id);
    EXPECT_EQ(library().savedNotes().records()[0].thoughts, "ours");
    EXPECT_NE(library().savedNotes().records()[1].id, note.id);
    EXPECT_EQ(library().savedNotes().records()[1].thoughts, "theirs");
    expectFileAsInMemory();
}

TEST_F(LibrarySyncTest, AChangeWeighsMoreThanARemoval) {
    const SavedNote removedThere = keepNote("removed there");
    const SavedNote removedHere = keepNote("removed here");
    EXPECT_THAT(textsInMemory(), SizeIs(2));
    removeInFile(removedThere.id);
    editInFile(removedHere.id, "changed there");
    library().updateNoteThoughts(removedThere.id, "changed here", std::nullopt);
    library().deleteSavedNote(removedHere);
    EXPECT_THAT(textsInFile(), UnorderedElementsAre("removed there"));
    EXPECT_EQ(library().savedNotes().find(removedThere.id)->thoughts, "changed here");
}

TEST_F(LibrarySyncTest, AListThatBecameUnreadableCostsNoNote) {
    keepNote("kept");
    EXPECT_THAT(textsInMemory(), SizeIs(1));
    for (const QByteArray damaged : {"", "[{", "{}"}) {
        put("saved-notes.json", damaged);
        library().createBlankNote("ours", HubArea::Personal);
        EXPECT_TRUE(textsInFile().contains("kept"));
        expectFileAsInMemory();
    }
    ASSERT_TRUE(QFile::remove(pathOf("saved-notes.json")));
    library().createBlankNote("last", HubArea::Personal);
    EXPECT_THAT(textsInFile(), SizeIs(5));
}

TEST_F(LibrarySyncTest, AWatchedListShowsWhatOthersWriteRowByRow) {
    const SavedNote old = keepNote("old");
    NoteList* notes = library().noteModel();
    state().watchLibrary();
    const QAbstractItemModelTester tester(notes,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy reset(notes, &QAbstractItemModel::modelReset);
    const QSignalSpy inserted(notes, &QAbstractItemModel::rowsInserted);
    keepNote("theirs");
    EXPECT_TRUE(waitFor([this] { return textsInMemory() == QStringList{"theirs", "old"}; }));
    EXPECT_EQ(inserted.count(), 1);
    removeInFile(old.id);
    EXPECT_TRUE(waitFor([this] { return textsInMemory() == QStringList{"theirs"}; }));
    EXPECT_EQ(reset.count(), 0);
}

TEST_F(LibrarySyncTest, AnEditInPlaceIsSeenEachTime) {
    keepNote("old");
    state().watchLibrary();
    for (const QByteArray text : {"one", "three", "fifth"}) {
        put("saved-notes.json", R"([{"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","text":")" + text +
                                    R"(","createdAt":"2026-03-01T10:20:30Z"}])");
        EXPECT_TRUE(waitFor([&] { return textsInMemory() == QStringList{text}; })) << text.data();
    }
}

TEST_F(LibrarySyncTest, WhatWasAddedBeforeTheWatchBeganIsSeen) {
    EXPECT_THAT(textsInMemory(), IsEmpty());
    keepNote("theirs");
    state().watchLibrary();
    EXPECT_THAT(textsInMemory(), ElementsAre("theirs"));
}

TEST_F(LibrarySyncTest, AListInStepIsNotWrittenAgain) {
    keepNote("old");
    state().watchLibrary();
    keepNote("theirs");
    const QByteArray written = contentOf("saved-notes.json") + ' ';
    put("saved-notes.json", written);
    EXPECT_TRUE(waitFor([this] { return textsInMemory().size() == 2; }));
    QTest::qWait(50);
    EXPECT_EQ(contentOf("saved-notes.json"), written);
}

TEST_F(LibrarySyncTest, ALargeListThatAnotherProgramSavesDoesNotHoldTheMainThread) {
    const std::vector<SavedNote> notes = manyNotes(20'000);
    store().save(notes);
    const auto start = timeOfThread();
    ASSERT_EQ(store().loadNotes().size(), notes.size());
    const auto reading = timeOfThread() - start;
    state().watchLibrary();
    keepNoteElsewhere("theirs");
    const auto arrival = timeOfThread();
    ASSERT_TRUE(waitFor([&] { return library().savedNotes().records().front().text == "theirs"; }));
    const auto held = timeOfThread() - arrival;
    EXPECT_EQ(textsInMemory().size(), 20'001);
    // Reading it here would take all of that, and the merge besides.
    EXPECT_LT(held, reading);
}

TEST_F(LibrarySyncTest, WhatIsWrittenHereWhileALargeListIsReadStaysBesideIt) {
    store().save(manyNotes(5'000));
    state().watchLibrary();
    for (int round = 0; round < 5; ++round) {
        const QString number = QString::number(round);
        keepNoteElsewhere("theirs " + number);
        // The look at the file has begun by now, or begins on its own.
        QTest::qWait(2 * round);
        library().createBlankNote("ours " + number, HubArea::Personal);
        EXPECT_TRUE(waitFor([&] { return textsInMemory().contains("theirs " + number); }));
        EXPECT_TRUE(textsInMemory().contains("ours " + number));
    }
    QTest::qWait(100);
    EXPECT_EQ(textsInFile().size(), 5'010);
    expectSameNotesInFile();
}

TEST_F(LibrarySyncTest, WhatCouldNotBeWrittenWhileALargeListIsReadFollows) {
    store().save(manyNotes(5'000));
    state().watchLibrary();
    {
        const auto lock = store().lock();
        ASSERT_TRUE(lock);
        keepNoteElsewhere("theirs");
        QTest::qWait(1);
        library().createBlankNote("ours", HubArea::Personal);
        EXPECT_TRUE(textsInMemory().contains("ours"));
    }
    EXPECT_TRUE(waitFor([this] { return textsInFile().size() == 5'002; }));
    EXPECT_TRUE(textsInMemory().contains("theirs"));
    expectSameNotesInFile();
}

TEST_F(LibrarySyncTest, WhoLeavesWhileALargeListIsReadLosesNothing) {
    store().save(manyNotes(5'000));
    for (int round = 0; round < 5; ++round) {
        restart();
        state().watchLibrary();
        library().createBlankNote("ours", HubArea::Personal);
        keepNoteElsewhere("theirs");
        QTest::qWait(round);
        if (round % 2 == 0) state().finishLibrary();
        m_tester.reset();
        m_state.reset();
        EXPECT_EQ(textsInFile().size(), 5'002 + 2 * round);
    }
}

TEST_F(LibrarySyncTest, TwoProgramsThatWriteAllTheTimeLoseNothing) {
    constexpr qsizetype saves = 60;
    state().watchLibrary();
    QProcess other;
    other.start(VORQ_LIBRARY_WRITER,
                {m_paths.applicationSupportFolder(), "theirs", QString::number(saves)});
    ASSERT_TRUE(other.waitForStarted());
    std::mt19937 random(1);
    for (int count = 0; count < saves; ++count) {
        library().createBlankNote("ours " + QString::number(count), HubArea::Personal);
        QTest::qWait(std::uniform_int_distribution<int>(0, 8)(random));
    }
    ASSERT_TRUE(waitFor([&] { return other.state() == QProcess::NotRunning; }));
    EXPECT_EQ(other.exitCode(), 0);
    EXPECT_TRUE(waitFor([&] {
        state().finishLibrary();
        return textsInMemory().size() == 2 * saves && textsInFile().size() == 2 * saves;
    })) << textsInMemory().size()
        << " in memory, " << textsInFile().size() << " in the file";
    QStringList wanted;
    for (int count = 0; count < saves; ++count)
        for (const char* who : {"ours ", "theirs "})
            wanted += who + QString::number(count);
    EXPECT_THAT(textsInFile(), testing::UnorderedElementsAreArray(wanted));
    expectSameNotesInFile();
}

TEST_F(LibrarySyncTest, AFolderThatIsReplacedIsWatchedAsTheOneBefore) {
    keepNote("old");
    state().watchLibrary();
    const QString data = m_paths.applicationSupportFolder();
    for (const QString& moved : {data + "/Vorq/Library", data + "/Vorq"}) {
        ASSERT_TRUE(QDir().rename(moved, moved + " of before"));
        QTest::qWait(50);
        EXPECT_THAT(textsInMemory(), Contains("old")) << "what is away is not lost";
        const auto number = QString::number(moved.size());
        QDir().mkpath(data + "/Vorq/Library");
        QTest::qWait(50);
        keepNote("restored " + number);
        EXPECT_TRUE(waitFor([&] { return textsInMemory().contains("restored " + number); }));
        keepNote("later " + number);
        EXPECT_TRUE(waitFor([&] { return textsInMemory().contains("later " + number); }));
        keepNote("old");
        EXPECT_TRUE(waitFor([&] { return textsInMemory().contains("old"); }));
    }
}

TEST_F(LibrarySyncTest, ASaveThatAnotherProgramHoldsUpFollows) {
    state().watchLibrary();
    {
        const auto lock = store().lock();
        ASSERT_TRUE(lock);
        library().createBlankNote("ours", HubArea::Personal);
        EXPECT_THAT(textsInFile(), IsEmpty()) << "nothing is written past the lock";
        EXPECT_THAT(textsInMemory(), ElementsAre("ours"));
        keepNote("theirs");
    }
    EXPECT_TRUE(waitFor([this] { return textsInFile().size() == 2; }));
    expectFileAsInMemory();
}

TEST_F(LibrarySyncTest, ASaveThatFailsIsNotTriedOverAndOver) {
    state().watchLibrary();
    QDir().mkpath(pathOf("saved-notes.json") + "/in the way");
    QTest::qWait(50);
    QFileSystemWatcher watcher({pathOf("")});
    const QSignalSpy stirred(&watcher, &QFileSystemWatcher::directoryChanged);
    library().createBlankNote("ours", HubArea::Personal);
    QTest::qWait(200);
    EXPECT_LT(stirred.count(), 10);
    QDir(pathOf("saved-notes.json")).removeRecursively();
    keepNote("theirs");
    EXPECT_TRUE(waitFor([this] { return textsInFile().size() == 2; }))
        << "what could not be written goes with what is taken in";
}

TEST_F(LibrarySyncTest, WhatCouldNotBeWrittenOutlivesAReload) {
    keepNote("old");
    EXPECT_THAT(textsInMemory(), SizeIs(1));
    {
        const auto lock = store().lock();
        library().createBlankNote("ours", HubArea::Personal);
    }
    state().reloadLibrary();
    EXPECT_THAT(textsInMemory(), ElementsAre("ours", "old"));
}

TEST_F(LibrarySyncTest, AChatWithAQuizIsNotTakenForAnotherOne) {
    setMigrated();
    HubAIChat chat;
    chat.id = QUuid::createUuid();
    chat.title = "Plan";
    HubAIMessage& message = chat.messages.emplace_back();
    message.id = QUuid::createUuid();
    message.quiz = HubQuizData{"p", {HubQuizQuestion{}}, {}};
    store().save(std::vector{chat});
    HubState& hub = state().hub();
    HubAIChat draft;
    draft.id = QUuid::createUuid();
    draft.isSaved = false;
    hub.chatModel()->insertFirst(draft);
    hub.setActiveHubAIChatID(draft.id);
    HubAIChat added;
    added.id = QUuid::createUuid();
    added.title = "Theirs";
    store().save(std::vector{chat, added});
    hub.chatModel()->edit(chat.id, [](HubAIChat& edited) { edited.title = "Ours"; });
    hub.persistHubAIChats();
    EXPECT_THAT(hub.hubAIChats().records(), SizeIs(3));
    EXPECT_EQ(hub.hubAIChats().records().front().id, draft.id);
    EXPECT_THAT(store().loadAIChats(), SizeIs(2));
    hub.chatModel()->edit(chat.id, [](HubAIChat& edited) { edited.title = "Not written"; });
    state().reloadLibrary();
    EXPECT_THAT(hub.hubAIChats().records(), SizeIs(3));
    EXPECT_EQ(hub.hubAIChats().find(chat.id)->title, "Not written");
}

TEST_F(LibrarySyncTest, ATaskOfAnotherProgramGetsItsColumn) {
    TaskState& board = state().tasks();
    state().watchLibrary();
    HubTask task;
    task.id = QUuid::createUuid();
    task.title = "Theirs";
    store().save(std::vector{task});
    EXPECT_TRUE(waitFor([&board] { return board.hubTasks().count() == 1; }));
    EXPECT_TRUE(board.hubTasks().records().front().columnID.has_value());
    EXPECT_EQ(store().loadTasks(), board.hubTasks().records());
}

} // namespace
} // namespace vorq
