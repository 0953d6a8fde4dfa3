// The library while its files cannot be written, or hold less than memory does.

#include "doubles/library/LibraryFixture.h"

#include <QTest>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

const QString savedToHistory = u"Saved to History."_s;
const QString heldUp = u"Not saved yet: another program is using the library. Vorq keeps trying."_s;

class UnsavedLibraryTest : public LibraryFixture {
  protected:
    UnsavedLibraryTest() { setMigrated(); }

    // Has a conversation that is worth keeping.
    void converse() {
        submit("Explain");
        reply(exchange(), "They flow.");
        advance(10s);
    }

    // What the panel has said to a command.
    std::string said(const QString& command) {
        submit(command);
        advance(2s);
        return last().text.toStdString();
    }

    [[nodiscard]] QStringList titlesInMemory() {
        QStringList titles;
        for (const SavedChat& chat : state().library().savedChats().records())
            titles += chat.title;
        return titles;
    }

    [[nodiscard]] QStringList notesInMemory() {
        QStringList found;
        for (const SavedNote& note : state().library().savedNotes().records())
            found += note.text;
        return found;
    }

    // What another program does, which has read the file before.
    void saveElsewhere(const QString& text) const {
        const LibraryStore elsewhere = store();
        LibraryFile<SavedNote> file(elsewhere);
        std::vector<SavedNote> notes = file.load({});
        SavedNote& note = notes.emplace_back();
        note.id = QUuid::createUuid();
        note.text = text;
        file.save(notes);
        EXPECT_FALSE(file.unsaved());
    }

    void removeElsewhere(const QString& text) const {
        const LibraryStore elsewhere = store();
        LibraryFile<SavedNote> file(elsewhere);
        std::vector<SavedNote> notes = file.load({});
        std::erase_if(notes, [&text](const SavedNote& note) { return note.text == text; });
        file.save(notes);
        EXPECT_FALSE(file.unsaved());
    }

    [[nodiscard]] QStringList damagedFiles() const {
        return QDir(pathOf("")).entryList({"*.damaged-*"}, QDir::Files);
    }

    void age(const QString& file) const {
        const timespec moment{1'700'000'000, 0};
        const timespec times[] = {moment, moment};
        ASSERT_EQ(::utimensat(AT_FDCWD, qPrintable(pathOf(file)), times, 0), 0);
    }
};

// As on a full disk: no file can grow beyond the size.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t size) {
        m_handler = ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{size, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, m_handler);
    }

  private:
    rlimit m_before{};
    sighandler_t m_handler = nullptr;
};

// Root heeds the permissions of files as everybody does.
class NoOverride {
  public:
    NoOverride() {
        get(m_before);
        Sets without = m_before;
        without[0].effective = 0;
        set(without);
    }
    NoOverride(const NoOverride&) = delete;
    NoOverride& operator=(const NoOverride&) = delete;
    ~NoOverride() { set(m_before); }

  private:
    using Sets = std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3>;

    static void get(Sets& sets) {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        EXPECT_EQ(::syscall(SYS_capget, &header, sets.data()), 0);
    }
    static void set(const Sets& sets) {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        EXPECT_EQ(::syscall(SYS_capset, &header, sets.data()), 0);
    }

    Sets m_before{};
};

TEST_F(UnsavedLibraryTest, AChatIsSaidSavedWhenItIs) {
    converse();
    {
        const auto lock = store().lock();
        EXPECT_EQ(said("save chat"), heldUp.toStdString());
        EXPECT_THAT(store().loadChats(), IsEmpty());
        advance(20s);
        EXPECT_EQ(last().text, heldUp);
    }
    advance(20s);
    EXPECT_EQ(last().text, savedToHistory);
    EXPECT_THAT(store().loadChats(), SizeIs(1));
    const std::size_t before = messages().size();
    advance(60s);
    EXPECT_EQ(messages().size(), before) << "it is said once";
}

TEST_F(UnsavedLibraryTest, ThatAChatIsSavedIsNotSaidInTheNextOne) {
    converse();
    {
        const auto lock = store().lock();
        said("save chat");
        state().panel().clearPanelChat();
        advance(10s);
    }
    const QStringList before = texts();
    advance(60s);
    EXPECT_THAT(store().loadChats(), SizeIs(1));
    EXPECT_EQ(texts(), before);
    converse();
    const auto lock = store().lock();
    said("save chat");
    EXPECT_EQ(last().text, heldUp) << "the next is asked for by itself";
}

TEST_F(UnsavedLibraryTest, AChatThatDidNotFitOnTheDiskIsSavedLater) {
    converse();
    {
        const FileSizeLimit full(10);
        EXPECT_THAT(said("save chat"), AllOf(StartsWith("Not saved yet: "), HasSubstr("arge")));
        advance(20s);
        EXPECT_THAT(store().loadChats(), IsEmpty());
    }
    advance(20s);
    EXPECT_EQ(last().text, savedToHistory);
    EXPECT_THAT(store().loadChats(), SizeIs(1));
}

TEST_F(UnsavedLibraryTest, WhatWasHeldUpIsWrittenAtQuitting) {
    converse();
    {
        const auto lock = store().lock();
        said("save chat");
    }
    state().finishLibrary();
    EXPECT_THAT(store().loadChats(), SizeIs(1));
}

TEST_F(UnsavedLibraryTest, AnUpdateOfANoteIsSaidSavedWhenItIs) {
    keepNote("Rivers");
    submit("open notes");
    converse();
    {
        const auto lock = store().lock();
        EXPECT_EQ(said("save research"), heldUp.toStdString());
    }
    advance(20s);
    EXPECT_EQ(last().text, "Saved — original note plus the update.");
    EXPECT_THAT(store().loadNotes().front().thoughts.toStdString(), HasSubstr("They flow."));
}

TEST_F(UnsavedLibraryTest, TheFirstChatOutlivesAReloadBeforeItIsWritten) {
    converse();
    const auto lock = store().lock();
    said("save chat");
    submit("open notes");
    EXPECT_THAT(titlesInMemory(), ElementsAre("Explain"));
}

TEST_F(UnsavedLibraryTest, AReloadKeepsTheNotesOfAFileThatWasDamagedMeanwhile) {
    for (int number = 0; number < 500; ++number)
        keepNote(QString::number(number));
    EXPECT_THAT(notesInMemory(), SizeIs(500));
    const QByteArray torn = contentOf("saved-notes.json").left(3000);
    put("saved-notes.json", torn);
    age("saved-notes.json");
    submit("open notes");
    EXPECT_THAT(notesInMemory(), SizeIs(500));
    EXPECT_EQ(state().study().activeStudyNoteID(), state().library().savedNotes().records()[0].id);
    advance(10s);
    EXPECT_THAT(store().loadNotes(), SizeIs(500));
    ASSERT_THAT(damagedFiles(), SizeIs(1));
    const QString kept = damagedFiles().front();
    EXPECT_EQ(kept, "saved-notes.json.damaged-2023-11-14T22-13-20Z");
    EXPECT_EQ(contentOf(kept), torn);
    EXPECT_EQ(texts().filter(kept).size(), 1) << "it is said once";
    submit("open notes");
    advance(60s);
    EXPECT_EQ(texts().filter(kept).size(), 1);
    EXPECT_THAT(damagedFiles(), SizeIs(1));
}

TEST_F(UnsavedLibraryTest, AFileIsSaidMadeAnewWhenItIs) {
    keepNote("Rivers");
    EXPECT_THAT(notesInMemory(), SizeIs(1));
    put("saved-notes.json", "[{");
    {
        const FileSizeLimit full(10);
        state().library().createBlankNote("ours", HubArea::Personal);
        advance(20s);
        EXPECT_EQ(contentOf("saved-notes.json"), "[{");
        EXPECT_THAT(texts().filter("anew"), IsEmpty());
    }
    advance(20s);
    EXPECT_THAT(store().loadNotes(), SizeIs(2));
    EXPECT_THAT(texts().filter("anew"), SizeIs(1));
    EXPECT_THAT(damagedFiles(), SizeIs(1));
}

TEST_F(UnsavedLibraryTest, AFileThatAnotherProgramMendedIsNotSaidMadeAnew) {
    keepNote("Rivers");
    EXPECT_THAT(notesInMemory(), SizeIs(1));
    const QByteArray whole = contentOf("saved-notes.json");
    put("saved-notes.json", "[{");
    {
        const FileSizeLimit full(10);
        state().library().createBlankNote("ours", HubArea::Personal);
    }
    put("saved-notes.json", whole);
    advance(20s);
    EXPECT_THAT(store().loadNotes(), SizeIs(2));
    EXPECT_THAT(texts().filter("anew"), IsEmpty());
}

TEST_F(UnsavedLibraryTest, AFileThatMayNotBeReadIsNotCalledDamaged) {
    keepNote("Rivers");
    EXPECT_THAT(notesInMemory(), SizeIs(1));
    ASSERT_EQ(::chmod(qPrintable(pathOf("saved-notes.json")), 0), 0);
    age("saved-notes.json");
    {
        const NoOverride asAnybody;
        state().library().createBlankNote("ours", HubArea::Personal);
    }
    EXPECT_THAT(store().loadNotes(), SizeIs(2));
    advance(20s);
    EXPECT_EQ(last().text, "The file saved-notes.json could not be read (Permission denied). Vorq "
                           "made it anew from what it had in memory and keeps the former one "
                           "beside it as saved-notes.json.damaged-2023-11-14T22-13-20Z.");
}

TEST_F(UnsavedLibraryTest, NotesOfADamagedFileAreWrittenAtQuitting) {
    keepNote("Rivers");
    EXPECT_THAT(notesInMemory(), SizeIs(1));
    put("saved-notes.json", "[{");
    submit("open notes");
    state().finishLibrary();
    EXPECT_THAT(store().loadNotes(), SizeIs(1));
}

TEST_F(UnsavedLibraryTest, AFileThatIsStillBeingWrittenIsNotReplaced) {
    keepNote("Rivers");
    EXPECT_THAT(notesInMemory(), SizeIs(1));
    state().watchLibrary();
    QByteArray growing = "[";
    for (int second = 0; second < 20; ++second) {
        put("saved-notes.json", growing += ' ');
        submit("open notes");
        advance(1s);
        EXPECT_EQ(contentOf("saved-notes.json"), growing);
    }
    put("saved-notes.json", growing +
                                R"({"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","text":"New",)"
                                R"("createdAt":"2026-03-01T10:20:30Z"}])");
    advance(30s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return notesInMemory() == QStringList{"New"}; }, 10'000));
    EXPECT_THAT(damagedFiles(), IsEmpty());
}

TEST_F(UnsavedLibraryTest, AFileThatWasDamagedAtTheStartIsKeptWhenItIsReplaced) {
    put("saved-chats.json", "[{");
    age("saved-chats.json");
    converse();
    EXPECT_THAT(titlesInMemory(), IsEmpty());
    EXPECT_EQ(contentOf("saved-chats.json"), "[{") << "nothing is better than it";
    submit("save chat");
    advance(10s);
    EXPECT_TRUE(texts().contains(savedToHistory));
    EXPECT_THAT(store().loadChats(), SizeIs(1));
    EXPECT_EQ(contentOf("saved-chats.json.damaged-2023-11-14T22-13-20Z"), "[{");
    EXPECT_EQ(texts().filter("saved-chats.json.damaged-").size(), 1);
}

TEST_F(UnsavedLibraryTest, TasksThatWereReplacedAtTheStartAreKeptBeside) {
    put("hub-tasks.json", "{}");
    age("hub-tasks.json");
    state().reloadLibrary();
    EXPECT_EQ(contentOf("hub-tasks.json.damaged-2023-11-14T22-13-20Z"), "{}");
    EXPECT_THAT(store().loadTasks(), IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(UnsavedLibraryTest, DamageOfOneSecondIsKeptApart) {
    for (const QByteArray damaged : {"[{", "[[", "[]]"}) {
        put("saved-notes.json", damaged);
        age("saved-notes.json");
        state().library().createBlankNote("ours", HubArea::Personal);
    }
    QStringList contents;
    for (const QString& name : damagedFiles())
        contents += contentOf(name);
    contents.sort();
    EXPECT_THAT(contents, ElementsAre("[[", "[]]", "[{"));
}

TEST_F(UnsavedLibraryTest, NotesOfAFileThatIsGoneStayInMemory) {
    keepNote("Rivers");
    EXPECT_THAT(notesInMemory(), SizeIs(1));
    ASSERT_TRUE(QFile::remove(pathOf("saved-notes.json")));
    submit("open notes");
    EXPECT_THAT(notesInMemory(), ElementsAre("Rivers"));
    advance(60s);
    EXPECT_FALSE(QFile::exists(pathOf("saved-notes.json"))) << "who removed it meant to";
    state().library().createBlankNote("ours", HubArea::Personal);
    EXPECT_THAT(store().loadNotes(), SizeIs(2));
}

TEST_F(UnsavedLibraryTest, NotesOfAFileThatIsGoneStayBesideThoseOfTheNextFile) {
    keepNote("Rivers");
    keepNote("Lakes");
    EXPECT_THAT(notesInMemory(), SizeIs(2));
    ASSERT_TRUE(QFile::remove(pathOf("saved-notes.json")));
    state().library().takeInChanges();
    saveElsewhere("theirs");
    state().library().takeInChanges();
    EXPECT_THAT(notesInMemory(), UnorderedElementsAre("Rivers", "Lakes", "theirs"));
    EXPECT_THAT(store().loadNotes(), SizeIs(3));
}

TEST_F(UnsavedLibraryTest, OpenNotesLosesNoneAfterTheirFileWasGone) {
    keepNote("Rivers");
    keepNote("Lakes");
    EXPECT_THAT(notesInMemory(), SizeIs(2));
    ASSERT_TRUE(QFile::remove(pathOf("saved-notes.json")));
    submit("open notes");
    saveElsewhere("theirs");
    submit("open notes");
    EXPECT_THAT(notesInMemory(), UnorderedElementsAre("Rivers", "Lakes", "theirs"));
    advance(20s);
    EXPECT_THAT(store().loadNotes(), SizeIs(3));
    EXPECT_THAT(texts().filter("damaged"), IsEmpty());
    removeElsewhere("Lakes");
    submit("open notes");
    EXPECT_THAT(notesInMemory(), UnorderedElementsAre("Rivers", "theirs"))
        << "who removes a note of the new file means to";
}

TEST_F(UnsavedLibraryTest, NotesThatTheNextFileLacksAreWrittenAtQuitting) {
    keepNote("Rivers");
    EXPECT_THAT(notesInMemory(), SizeIs(1));
    ASSERT_TRUE(QFile::remove(pathOf("saved-notes.json")));
    submit("open notes");
    saveElsewhere("theirs");
    submit("open notes");
    state().finishLibrary();
    EXPECT_THAT(store().loadNotes(), SizeIs(2));
}

TEST_F(UnsavedLibraryTest, FlashcardsAreSaidSavedWhenTheyAre) {
    keepNote("Rivers");
    submit("make flashcards");
    {
        const auto lock = store().lock();
        exchange().respond(200, R"({"flashcards":[{"front":"a","back":"b"}]})");
        m_clock.settle();
        advance(3s);
        EXPECT_THAT(last().text.toStdString(),
                    StartsWith("Here are 1 flashcards. " + heldUp.toStdString()));
    }
    advance(20s);
    EXPECT_EQ(last().text, "The flashcards are saved on your note.");
    EXPECT_THAT(store().loadNotes().front().flashcards, SizeIs(1));
}

} // namespace
} // namespace vorq
