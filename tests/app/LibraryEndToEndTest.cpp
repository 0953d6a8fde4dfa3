// Notes and chats by the built program: real processes, real files.

#include "areas/LibraryAreas.h"
#include "library/store/LibraryStore.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedDefaults.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

constexpr int patience = 60'000; // milliseconds, for a machine that is busy

class LibraryEndToEndTest : public testing::Test {
  protected:
    LibraryEndToEndTest() {
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert("HOME", m_home.path());
        m_environment.insert("XDG_DATA_HOME", m_home.filePath("data"));
        m_environment.insert("XDG_CONFIG_HOME", m_home.filePath("config"));
    }

    struct Outcome {
        int status = -1;
        std::string out;
        std::string err;

        [[nodiscard]] QString line() const { return QString::fromStdString(out).trimmed(); }
        [[nodiscard]] QJsonDocument json() const {
            return QJsonDocument::fromJson(QByteArray::fromStdString(out));
        }
    };

    std::unique_ptr<QProcess> start(const QStringList& arguments,
                                    const QByteArray& input = {}) const {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(m_environment);
        process->start(VORQ_PROGRAM, arguments);
        process->write(input);
        process->closeWriteChannel();
        return process;
    }

    static Outcome finish(QProcess& process) {
        EXPECT_TRUE(process.state() == QProcess::NotRunning || process.waitForFinished(patience));
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    Outcome vorq(const QStringList& arguments, const QByteArray& input = {}) const {
        return finish(*start(arguments, input));
    }

    [[nodiscard]] LibraryStore store() const { return LibraryStore(m_home.filePath("data")); }
    [[nodiscard]] QString pathOf(const QString& file) const {
        return m_home.filePath("data/Vorq/Library/" + file);
    }
    [[nodiscard]] static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // Everything under the home folder, by its content and its time.
    [[nodiscard]] QStringList footprint() const {
        QStringList found;
        QDirIterator places(m_home.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                            QDirIterator::Subdirectories);
        while (places.hasNext()) {
            const QFileInfo info(places.next());
            found += info.filePath() + u' ' + info.lastModified().toString(Qt::ISODateWithMs) +
                     u' ' +
                     QCryptographicHash::hash(contentOf(info.filePath()), QCryptographicHash::Md5)
                         .toHex();
        }
        found.sort();
        return found;
    }

    void layOutLibrary() {
        m_note.id = QUuid("6f9619ff-8b86-d011-b42d-00c04fc964ff");
        m_note.text = "Rivers";
        m_note.thoughts = "Rivers\twide\n•\u00A0one";
        m_note.flashcards = {{QUuid::createUuid(), "What?", "Water."}};
        m_note.area = HubArea::Study;
        m_note.createdAt = Date(1'700'000'000s);
        SavedNote newer;
        newer.id = QUuid("6f9619ff-8b86-d011-b42d-00c04fc96400");
        newer.text = "Newer";
        newer.createdAt = Date(1'700'000'100s);
        store().save(std::vector{m_note, newer});
        m_chat.id = QUuid("11111111-8b86-d011-b42d-00c04fc964ff");
        m_chat.title = "Plan";
        m_chat.createdAt = Date(1'700'000'000s);
        m_chat.messages = {{QUuid::createUuid(), "user", "Why?"},
                           {QUuid::createUuid(), "assistant", "Because."}};
        store().save(std::vector{m_chat});
        HubAIChat ofHub;
        ofHub.id = QUuid("22222222-8b86-d011-b42d-00c04fc964ff");
        ofHub.title = "Hub plan";
        ofHub.updatedAt = Date(1'700'000'200s);
        store().save(std::vector{ofHub});
    }

    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
    SavedNote m_note;
    SavedChat m_chat;
};

TEST_F(LibraryEndToEndTest, AnEmptyHomeStaysEmptyForReaders) {
    EXPECT_EQ(vorq({"notes", "list"}).out, "");
    EXPECT_EQ(vorq({"chats", "list"}).status, 0);
    EXPECT_TRUE(vorq({"notes", "list", "--json"}).json().isArray());
    EXPECT_EQ(vorq({"notes", "show", "ABC"}).status, 1);
    EXPECT_THAT(footprint(), testing::IsEmpty());
}

TEST_F(LibraryEndToEndTest, ReadersChangeNothing) {
    layOutLibrary();
    const QStringList before = footprint();
    const QString id = "6f9619ff-8b86-d011-b42d-00c04fc964ff";
    for (const QStringList& arguments : {QStringList{"notes", "list"},
                                         {"notes", "list", "--json"},
                                         {"notes", "show", id},
                                         {"notes", "show", id, "--json"},
                                         {"notes", "export", id},
                                         {"notes", "export", "--format", "rtf", id},
                                         {"chats", "list"},
                                         {"chats", "show", "1111"},
                                         {"chats", "show", "2222", "--json"}})
        EXPECT_EQ(vorq(arguments).status, 0) << qPrintable(arguments.join(' '));
    EXPECT_EQ(vorq({"notes", "show", "ABC"}).status, 1);
    EXPECT_EQ(footprint(), before);
}

TEST_F(LibraryEndToEndTest, ListsAreTheSameForPeopleAndPrograms) {
    layOutLibrary();
    EXPECT_EQ(
        vorq({"notes", "list"}).out,
        "6F9619FF-8B86-D011-B42D-00C04FC96400  2023-11-14T22:15:00Z  personal  Newer\n"
        "6F9619FF-8B86-D011-B42D-00C04FC964FF  2023-11-14T22:13:20Z  study     Rivers wide\n");
    const QJsonArray notes = vorq({"notes", "list", "--json", "--area", "study"}).json().array();
    ASSERT_EQ(notes.size(), 1);
    EXPECT_EQ(notes[0].toObject(), (QJsonObject{{"id", "6F9619FF-8B86-D011-B42D-00C04FC964FF"},
                                                {"title", "Rivers\twide"},
                                                {"area", "study"},
                                                {"createdAt", "2023-11-14T22:13:20Z"},
                                                {"flashcardCount", 1}}));
    EXPECT_EQ(vorq({"chats", "list"}).out,
              "22222222-8B86-D011-B42D-00C04FC964FF  2023-11-14T22:16:40Z  hub    Hub plan\n"
              "11111111-8B86-D011-B42D-00C04FC964FF  2023-11-14T22:13:20Z  panel  Plan\n");
    const QJsonArray chats = vorq({"chats", "list", "--json"}).json().array();
    ASSERT_EQ(chats.size(), 2);
    EXPECT_EQ(chats[1].toObject()["place"], "panel");
    EXPECT_EQ(chats[1].toObject()["messageCount"], 2);
}

TEST_F(LibraryEndToEndTest, ANoteIsShownWithItsFlashcards) {
    layOutLibrary();
    const Outcome shown = vorq({"notes", "show", "6f9619ff-8b86-d011-b42d-00c04fc964ff"});
    EXPECT_EQ(shown.out, "Rivers\twide\n•\u00A0one\n\nFlashcards\n\n- What?\n  → Water.\n");
    const QJsonObject json =
        vorq({"notes", "show", "--json", "6F9619FF-8B86-D011-B42D-00C04FC964FF"}).json().object();
    EXPECT_EQ(json["thoughts"], m_note.thoughts);
    EXPECT_EQ(json["hasRichText"], false);
    EXPECT_EQ(json["flashcards"].toArray()[0].toObject()["back"], "Water.");
}

TEST_F(LibraryEndToEndTest, AChatIsShownAsMarkdown) {
    layOutLibrary();
    EXPECT_EQ(vorq({"chats", "show", "1"}).out,
              "# Plan\n\n## You\n\nWhy?\n\n## Vorq\n\nBecause.\n");
    const QJsonObject json = vorq({"chats", "show", "--json", "1"}).json().object();
    EXPECT_EQ(json["messages"].toArray()[1].toObject(),
              (QJsonObject{{"role", "assistant"}, {"text", "Because."}}));
}

TEST_F(LibraryEndToEndTest, AnUnknownOrUnclearIdIsAnError) {
    layOutLibrary();
    const Outcome unknown = vorq({"notes", "show", "abc"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.out, "");
    EXPECT_EQ(unknown.err, "There is no note abc.\n");
    const Outcome unclear = vorq({"notes", "export", "6F9619FF"});
    EXPECT_EQ(unclear.status, 1);
    EXPECT_EQ(unclear.err, "More than one note has an id that begins with 6F9619FF.\n");
    EXPECT_EQ(vorq({"chats", "show", "abc"}).err, "There is no chat abc.\n");
    EXPECT_EQ(vorq({"notes", "show", ""}).status, 1);
}

TEST_F(LibraryEndToEndTest, ADamagedListIsAnErrorAndIsNotSavedOver) {
    QDir().mkpath(m_home.filePath("data/Vorq/Library"));
    QFile file(pathOf("saved-notes.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[{]");
    file.close();
    for (const QStringList& arguments :
         {QStringList{"notes", "list"}, {"notes", "save", "Rivers flow."}}) {
        const Outcome outcome = vorq(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, HasSubstr("saved-notes.json is damaged."));
    }
    EXPECT_EQ(contentOf(pathOf("saved-notes.json")), "[{]");
}

TEST_F(LibraryEndToEndTest, ASavedReplyIsANoteWithItsFormat) {
    const QByteArray reply = "# Rivers\n\nThey **carry** silt.\n\n- one\n- two\n";
    const Outcome saved = vorq({"notes", "save", "--area", "research"}, reply);
    EXPECT_EQ(saved.status, 0) << saved.err;
    ASSERT_THAT(store().loadNotes(), SizeIs(1));
    const SavedNote note = store().loadNotes().front();
    EXPECT_EQ(note.id, QUuid(saved.line()));
    EXPECT_EQ(note.text, note.thoughts) << "so that a reply with its title does not replace it";
    EXPECT_EQ(note.thoughts, "Rivers\nThey carry silt.\n•\u00A0one\n•\u00A0two");
    EXPECT_TRUE(note.thoughtsRTF.has_value());
    EXPECT_EQ(note.area, HubArea::Research);
    EXPECT_LT(std::chrono::abs(note.createdAt - dateOf(QDateTime::currentDateTimeUtc())), 60s);
    EXPECT_EQ(vorq({"notes", "export", saved.line()}).out, reply.toStdString())
        << "an export gives back what was saved";
    EXPECT_FALSE(QFile::exists(pathOf("notes.lock")));
    EXPECT_FALSE(QFile::exists(pathOf("hub-tasks.json"))) << "other lists are left alone";
}

TEST_F(LibraryEndToEndTest, APlainTextIsKeptAsItIs) {
    const Outcome saved = vorq({"notes", "save", "--plain", "--title", "Stars"}, "a * b\n  c\n");
    ASSERT_EQ(saved.status, 0) << saved.err;
    const SavedNote note = store().loadNotes().front();
    EXPECT_EQ(note.text, note.thoughts);
    EXPECT_EQ(note.thoughts, "Stars\na * b\n  c");
    EXPECT_EQ(note.thoughtsRTF, std::nullopt);
}

TEST_F(LibraryEndToEndTest, NothingIsNoNote) {
    for (const QStringList& arguments : {QStringList{"notes", "save"}, {"notes", "save", "  "}}) {
        const Outcome outcome = vorq(arguments, " \n");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, StartsWith("There is nothing to save"));
    }
    EXPECT_THAT(footprint(), testing::IsEmpty());
}

TEST_F(LibraryEndToEndTest, ASaveThatCannotBeWrittenIsAnError) {
    QDir().mkpath(m_home.filePath("data"));
    QFile file(m_home.filePath("data/Vorq")); // where the folder should be
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    const Outcome outcome = vorq({"notes", "save", "Rivers flow."});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith("The note could not be saved in "));
}

TEST_F(LibraryEndToEndTest, ASaveSaysWhyItFailed) {
    QDir().mkpath(m_home.filePath("data/Vorq/Library"));
    const std::string start =
        "The note could not be saved in " + m_home.filePath("data/Vorq/Library: ").toStdString();
    QProcess full;
    full.setProcessEnvironment(m_environment);
    full.setChildProcessModifier([] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100, 100};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    });
    full.start(VORQ_PROGRAM, {"notes", "save", "Rivers flow."});
    const Outcome onFullDisk = finish(full);
    EXPECT_EQ(onFullDisk.status, 1);
    EXPECT_EQ(onFullDisk.err, start + "File too large.\n");
    EXPECT_THAT(store().loadNotes(), SizeIs(0));
    {
        const auto lock = store().lock();
        EXPECT_EQ(vorq({"notes", "save", "Rivers flow."}).err,
                  start + "another program is using the library.\n");
    }
    QDir().mkpath(pathOf("saved-notes.json"));
    EXPECT_EQ(vorq({"notes", "save", "Rivers flow."}).err, start + "Is a directory.\n");
    EXPECT_THAT(vorq({"notes", "list"}).err,
                HasSubstr("saved-notes.json cannot be read: Is a directory."));
}

TEST_F(LibraryEndToEndTest, ALinkToAFileThatIsNotThereYetIsFollowed) {
    QDir().mkpath(m_home.filePath("data/Vorq/Library"));
    const QString target = m_home.filePath("away.json");
    ASSERT_TRUE(QFile::link(target, pathOf("saved-notes.json")));
    const Outcome empty = vorq({"notes", "list"});
    EXPECT_EQ(empty.status, 0) << empty.err;
    const Outcome saved = vorq({"notes", "save", "Rivers flow."});
    EXPECT_EQ(saved.status, 0) << saved.err;
    EXPECT_TRUE(QFileInfo(target).isFile());
    EXPECT_TRUE(QFileInfo(pathOf("saved-notes.json")).isSymLink());
}

TEST_F(LibraryEndToEndTest, ALinkToADriveThatIsNotThereIsAnError) {
    QDir().mkpath(m_home.filePath("data/Vorq/Library"));
    ASSERT_TRUE(QFile::link("/nowhere/at all/notes.json", pathOf("saved-notes.json")));
    for (const QStringList& arguments :
         {QStringList{"notes", "list"}, {"notes", "save", "Rivers flow."}}) {
        const Outcome outcome = vorq(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr("No such file or directory."));
    }
}

TEST_F(LibraryEndToEndTest, ANoteIsSavedEvenIfItsIdCannotBePrinted) {
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.setStandardOutputFile("/dev/full");
    process.start(VORQ_PROGRAM, {"notes", "save", "Rivers flow."});
    const Outcome outcome = finish(process);
    ASSERT_THAT(store().loadNotes(), SizeIs(1));
    EXPECT_EQ(outcome.status, 0) << "who tries again would have it twice";
    const QString id = store().loadNotes().front().id.toString(QUuid::WithoutBraces).toUpper();
    EXPECT_THAT(outcome.err, HasSubstr("The note is saved as " + id.toStdString()));
}

TEST_F(LibraryEndToEndTest, ATextThatIsTooLongForANoteIsRefused) {
    const Outcome outcome = vorq({"notes", "save"}, QByteArray((16 << 20) + 1, 'x'));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "The text on standard input is larger than 16 MB, which is the most "
                           "that a note can hold.\n");
}

TEST_F(LibraryEndToEndTest, AChatOfTheHubHasBothItsTimes) {
    HubAIChat chat;
    chat.id = QUuid::createUuid();
    chat.title = "Plan";
    chat.createdAt = Date(1'700'000'000s);
    chat.updatedAt = Date(1'700'000'100s);
    store().save(std::vector{chat});
    for (const QJsonObject& told :
         {vorq({"chats", "list", "--json"}).json().array()[0].toObject(),
          vorq({"chats", "show", "--json", chat.id.toString(QUuid::WithoutBraces)})
              .json()
              .object()}) {
        EXPECT_EQ(told["createdAt"], "2023-11-14T22:13:20Z");
        EXPECT_EQ(told["updatedAt"], "2023-11-14T22:15:00Z");
    }
}

// The most memory, in bytes, that a child of this process has taken so far.
std::int64_t memoryOfChildren() {
    rusage used{};
    ::getrusage(RUSAGE_CHILDREN, &used);
    return std::int64_t{used.ru_maxrss} << 10;
}

// Beside its lists.
#if __has_feature(address_sanitizer)
constexpr std::int64_t memoryOfTheProgram = 300'000'000;
#else
constexpr std::int64_t memoryOfTheProgram = 100'000'000;
#endif

TEST_F(LibraryEndToEndTest, AFileOfAnySizeTakesNoMemoryIfItIsNoList) {
    QDir().mkpath(m_home.filePath("data/Vorq/Library"));
    QFile file(pathOf("saved-notes.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(6'000'000'000));
    const Outcome outcome = vorq({"notes", "list"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("saved-notes.json is damaged."));
    EXPECT_LT(memoryOfChildren(), memoryOfTheProgram);
}

TEST_F(LibraryEndToEndTest, ASaveReadsTheListOnce) {
    std::vector<SavedNote> notes(20'000);
    for (SavedNote& note : notes) {
        note.id = QUuid::createUuid();
        note.text = QString(2000, u'x');
    }
    store().save(notes);
    const auto size = QFileInfo(pathOf("saved-notes.json")).size();
    EXPECT_EQ(vorq({"notes", "save", "Rivers flow."}).status, 0);
    EXPECT_LT(memoryOfChildren(), memoryOfTheProgram + size * 5 / 2);
    EXPECT_THAT(store().loadNotes(), SizeIs(20'001));
}

TEST_F(LibraryEndToEndTest, ManySavesAtOnceLoseNoNote) {
    std::vector<std::unique_ptr<QProcess>> copies;
    for (int copy = 0; copy < 12; ++copy)
        copies.push_back(start({"notes", "save", u"Note %1."_s.arg(copy)}));
    for (const auto& copy : copies)
        EXPECT_EQ(finish(*copy).status, 0);
    EXPECT_THAT(store().loadNotes(), SizeIs(12));
}

TEST_F(LibraryEndToEndTest, AProgramThatHasTheListInMemoryShowsASavedNote) {
    ManualClock clock;
    ScriptedDefaults defaults;
    LibraryAreas areas(clock, defaults, m_home.filePath("data"));
    areas.watchLibrary();
    const Outcome saved = vorq({"notes", "save", "From the terminal."});
    ASSERT_EQ(saved.status, 0) << saved.err;
    const NoteList& notes = areas.library().savedNotes();
    EXPECT_TRUE(QTest::qWaitFor([&notes] { return notes.count() == 1; }, patience));
    areas.library().createBlankNote("From the panel", HubArea::Personal);
    EXPECT_THAT(store().loadNotes(), SizeIs(2));
}

TEST_F(LibraryEndToEndTest, ANoteOfATerminalStandsBesideThoseWhoseFileWasGone) {
    layOutLibrary();
    ManualClock clock;
    ScriptedDefaults defaults;
    LibraryAreas areas(clock, defaults, m_home.filePath("data"));
    areas.watchLibrary();
    const NoteList& notes = areas.library().savedNotes();
    ASSERT_EQ(notes.count(), 2);
    ASSERT_TRUE(QFile::remove(pathOf("saved-notes.json")));
    areas.reloadLibrary();
    const Outcome saved = vorq({"notes", "save", "From the terminal."});
    ASSERT_EQ(saved.status, 0) << saved.err;
    EXPECT_EQ(store().loadNotes().size(), 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return store().loadNotes().size() == 3; }, patience));
    EXPECT_EQ(notes.count(), 3);
}

TEST_F(LibraryEndToEndTest, SavesOfTerminalsAndOfTheDesktopLoseNoNote) {
    ManualClock clock;
    ScriptedDefaults defaults;
    LibraryAreas areas(clock, defaults, m_home.filePath("data"));
    areas.watchLibrary();
    std::vector<std::unique_ptr<QProcess>> terminals;
    for (int copy = 0; copy < 10; ++copy) {
        terminals.push_back(start({"notes", "save", u"Note %1."_s.arg(copy)}));
        areas.library().createBlankNote(QString::number(copy), HubArea::Personal);
        QTest::qWait(20);
    }
    for (const auto& terminal : terminals)
        EXPECT_EQ(finish(*terminal).status, 0);
    const NoteList& notes = areas.library().savedNotes();
    EXPECT_TRUE(QTest::qWaitFor([&notes] { return notes.count() == 20; }, patience));
    EXPECT_TRUE(QTest::qWaitFor([this] { return store().loadNotes().size() == 20; }, patience));
}

TEST_F(LibraryEndToEndTest, AnExportGoesIntoAFileOfItsFormat) {
    layOutLibrary();
    const QString id = "6f9619ff-8b86-d011-b42d-00c04fc964ff";
    const QString markdown = m_home.filePath("note.md");
    QFile former(markdown);
    ASSERT_TRUE(former.open(QIODevice::WriteOnly));
    former.write(QByteArray(10'000, 'x'));
    former.close();
    const Outcome exported = vorq({"notes", "export", id, "--output", markdown});
    EXPECT_EQ(exported.out, "");
    EXPECT_EQ(contentOf(markdown),
              "# Rivers\twide\n- one\n\n## Flashcards\n\n- What?\n  → Water.\n");
    const QString rtf = m_home.filePath("note.rtf");
    EXPECT_EQ(vorq({"notes", "export", id, "--output", rtf}).status, 0);
    EXPECT_TRUE(contentOf(rtf).startsWith("{\\rtf1"));
    const Outcome refused = vorq({"notes", "export", id, "--output", "/nowhere/at/all.md"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, StartsWith("/nowhere/at/all.md could not be written: "));
}

TEST_F(LibraryEndToEndTest, AStoredRichFormIsExportedAsItIs) {
    layOutLibrary();
    std::vector<SavedNote> notes = store().loadNotes();
    notes[0].thoughtsRTF = "{\\rtf1 kept}";
    store().save(notes);
    EXPECT_EQ(vorq({"notes", "export", "--format=rtf", "6F9619FF-8B86-D011-B42D-00C04FC964FF"}).out,
              "{\\rtf1 kept}");
}

TEST_F(LibraryEndToEndTest, HelpAndMisuse) {
    EXPECT_THAT(vorq({"notes", "--help"}).out, StartsWith("Usage: vorq notes COMMAND"));
    EXPECT_THAT(vorq({"chats", "list", "--help"}).out, StartsWith("Usage: vorq chats COMMAND"));
    EXPECT_THAT(vorq({"--help"}).out, HasSubstr("vorq notes list | show | save | export"));
    const Outcome misused = vorq({"notes", "show"});
    EXPECT_EQ(misused.status, 2);
    EXPECT_EQ(misused.err, "vorq: notes show needs one ID. See vorq --help.\n");
}

} // namespace
} // namespace vorq
