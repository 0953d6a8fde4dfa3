// What becomes of the library files when they are read.

#include "doubles/library/LibraryFixture.h"
#include "support/files/FileStamp.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSignalSpy>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const QString migrated = "vorq.migratedPanelChatsToHub.v1";
const QByteArray emptyList = "[\n\n]";

class LibraryReloadTest : public LibraryFixture {
  protected:
    [[nodiscard]] static HubAIChat hubChat(const QString& title, Date updatedAt) {
        HubAIChat chat;
        chat.id = QUuid::createUuid();
        chat.title = title;
        chat.updatedAt = updatedAt;
        return chat;
    }

    [[nodiscard]] QStringList hubTitles() {
        QStringList titles;
        for (const HubAIChat& chat : state().hub().hubAIChats().records())
            titles += chat.title;
        return titles;
    }

    [[nodiscard]] QStringList noteTexts() {
        QStringList list;
        for (const SavedNote& note : state().library().savedNotes().records())
            list += note.text;
        return list;
    }
};

TEST_F(LibraryReloadTest, NothingIsReadBeforeTheLibraryIsAskedFor) {
    EXPECT_FALSE(state().isLibraryLoaded());
    submit("Explain");
    reply(exchange(), "Short.");
    EXPECT_FALSE(state().isLibraryLoaded());
    EXPECT_FALSE(QFileInfo::exists(m_paths.applicationSupportFolder() + "/Vorq/Library"));
    EXPECT_FALSE(m_defaults.contains(migrated));
    (void)state().library();
    EXPECT_TRUE(state().isLibraryLoaded());
}

TEST_F(LibraryReloadTest, EachAreaReadsTheWholeLibrary) {
    keepNote("Plan");
    EXPECT_THAT(state().tasks().hubTaskColumns().records(), SizeIs(4));
    EXPECT_THAT(noteTexts(), ElementsAre("Plan"));
}

TEST_F(LibraryReloadTest, TheFirstLaunchLaysOutTheBoard) {
    state().reloadLibrary();
    EXPECT_THAT(state().library().savedNotes().records(), IsEmpty());
    EXPECT_THAT(state().library().savedChats().records(), IsEmpty());
    EXPECT_THAT(state().hub().hubAIChats().records(), IsEmpty());
    EXPECT_THAT(state().trackers().hubTrackers().records(), IsEmpty());
    EXPECT_EQ(contentOf("hub-tasks.json"), emptyList);
    const auto columns = decodeHubTaskColumns(contentOf("hub-task-columns.json"), Date());
    ASSERT_TRUE(columns.has_value());
    ASSERT_THAT(*columns, SizeIs(4));
    EXPECT_EQ((*columns)[0].name, "Urgent");
    EXPECT_EQ(contentOf("saved-notes.json"), QByteArray()) << "what is only read is not written";
    EXPECT_EQ(contentOf("saved-chats.json"), QByteArray());
    EXPECT_EQ(contentOf("hub-ai-chats.json"), QByteArray());
    EXPECT_EQ(contentOf("hub-trackers.json"), QByteArray());
}

TEST_F(LibraryReloadTest, NotesAndChatsComeNewestFirstAndEqualOnesInTheOrderOfTheFile) {
    setMigrated();
    std::vector<SavedNote> notes;
    for (const auto& [text, second] : {std::pair("a", 1s), {"b", 5s}, {"c", 1s}, {"d", 5s}}) {
        SavedNote& note = notes.emplace_back();
        note.id = QUuid::createUuid();
        note.text = text;
        note.createdAt = Date(second);
    }
    store().save(notes);
    store().save(std::vector{chat("old", 1, Date(1s)), chat("new", 1, Date(2s))});
    EXPECT_THAT(noteTexts(), ElementsAre("b", "d", "a", "c"));
    EXPECT_EQ(state().library().savedChats().records().front().title, "new");
}

TEST_F(LibraryReloadTest, OneDamagedNoteEmptiesTheListAndStaysInItsFileUntilASave) {
    for (const QByteArray part : {R"("createdAt":"2026-03-01T10:20:30.5Z")",
                                  R"("createdAt":"2026-03-01T10:20:30Z","area":"garden")"}) {
        const QByteArray damaged =
            R"([{"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","text":"a",)" + part + "}]";
        restart();
        put("saved-notes.json", damaged);
        state().reloadLibrary();
        EXPECT_THAT(noteTexts(), IsEmpty());
        EXPECT_EQ(contentOf("saved-notes.json"), damaged);
        state().library().createBlankNote("Fresh", HubArea::Study);
        EXPECT_THAT(store().loadNotes(), SizeIs(1));
    }
}

TEST_F(LibraryReloadTest, UnreadableTasksAreReplacedAtOnce) {
    put("hub-tasks.json", "{}");
    state().reloadLibrary();
    EXPECT_EQ(contentOf("hub-tasks.json"), emptyList);
}

TEST_F(LibraryReloadTest, FilesThatWouldNotChangeAreLeftAlone) {
    state().reloadLibrary();
    const FileStamp tasks = fileStamp(pathOf("hub-tasks.json"));
    const FileStamp columns = fileStamp(pathOf("hub-task-columns.json"));
    state().reloadLibrary();
    EXPECT_TRUE(fileStamp(pathOf("hub-tasks.json")) == tasks);
    EXPECT_TRUE(fileStamp(pathOf("hub-task-columns.json")) == columns);
}

TEST_F(LibraryReloadTest, FilesOfAnotherFormAreWrittenInOurs) {
    state().reloadLibrary();
    const QByteArray columns = contentOf("hub-task-columns.json");
    put("hub-task-columns.json", QByteArray(columns).replace('\n', ' '));
    put("hub-tasks.json", "[ ]");
    state().reloadLibrary();
    EXPECT_EQ(contentOf("hub-task-columns.json"), columns);
    EXPECT_NE(contentOf("hub-tasks.json"), "[ ]");
}

TEST_F(LibraryReloadTest, TasksGetAColumnAndComeInTheOrderOfTheBoard) {
    std::vector<HubTask> tasks(3);
    for (std::size_t index = 0; index < tasks.size(); ++index) {
        tasks[index].id = QUuid::createUuid();
        tasks[index].title = QString::number(index);
    }
    tasks[0].done = true;
    tasks[2].orderInColumn = -1.0;
    store().save(tasks);
    QStringList titles;
    for (const HubTask& task : state().tasks().hubTasks().records())
        titles += task.title;
    EXPECT_THAT(titles, ElementsAre("2", "1", "0"));
    const std::vector<HubTaskColumn>& columns = state().tasks().hubTaskColumns().records();
    EXPECT_EQ(state().tasks().hubTasks().records().front().columnID, columns[1].id);
    EXPECT_EQ(store().loadTasks(), state().tasks().hubTasks().records());
}

TEST_F(LibraryReloadTest, TrackersKeepTheOrderOfTheFile) {
    std::vector<HubTracker> trackers(2);
    trackers[0] = {QUuid::createUuid(), "b", {}, {}, {}, HubTrackerUrgency::None, Date(1s)};
    trackers[1] = {QUuid::createUuid(), "a", {}, {}, {}, HubTrackerUrgency::Urgent, Date(2s)};
    store().save(trackers);
    EXPECT_EQ(state().trackers().hubTrackers().records(), trackers);
}

TEST_F(LibraryReloadTest, PanelChatsOfOlderVersionsMoveToTheHubOnce) {
    HubAIChat known = hubChat("Plan", Date(5s));
    known.messages.resize(2);
    for (HubAIMessage& message : known.messages)
        message.id = QUuid::createUuid();
    store().save(std::vector{known});
    store().save(std::vector{chat("Plan", 2, Date(1s)), chat("Plan", 3, Date(9s))});
    state().reloadLibrary();
    EXPECT_THAT(hubTitles(), ElementsAre("Plan", "Plan"));
    EXPECT_THAT(state().hub().hubAIChats().records().front().messages, SizeIs(3));
    EXPECT_EQ(store().loadAIChats(), state().hub().hubAIChats().records());
    EXPECT_EQ(contentOf("saved-chats.json"), emptyList);
    EXPECT_THAT(state().library().savedChats().records(), IsEmpty());
    EXPECT_EQ(m_defaults.boolean(migrated), true);

    store().save(std::vector{chat("Later", 1)});
    state().reloadLibrary();
    EXPECT_THAT(hubTitles(), SizeIs(2)) << "what was kept since stays with the panel";
    EXPECT_THAT(state().library().savedChats().records(), SizeIs(1));
}

TEST_F(LibraryReloadTest, ChatsThatTheHubHasAlreadyAreDroppedWithoutWritingItsFile) {
    HubAIChat known = hubChat("Plan", Date(5s));
    known.isSaved = false;
    store().save(std::vector{known});
    const QByteArray before = contentOf("hub-ai-chats.json");
    store().save(std::vector{chat("Plan", 0)});
    state().reloadLibrary();
    EXPECT_EQ(contentOf("hub-ai-chats.json"), before);
    EXPECT_EQ(contentOf("saved-chats.json"), emptyList);
    EXPECT_TRUE(state().hub().hubAIChats().records().front().isSaved) << "what is on disk is saved";
}

TEST_F(LibraryReloadTest, WithoutPanelChatsOnlyTheirMigrationIsNoted) {
    put("saved-chats.json", "[]");
    state().reloadLibrary();
    EXPECT_EQ(m_defaults.boolean(migrated), true);
    EXPECT_EQ(contentOf("saved-chats.json"), "[]");
    EXPECT_EQ(contentOf("hub-ai-chats.json"), QByteArray());
}

TEST_F(LibraryReloadTest, AMissingFileOfPanelChatsIsMigratedAndNotMade) {
    state().reloadLibrary();
    EXPECT_EQ(m_defaults.boolean(migrated), true);
    EXPECT_FALSE(QFile::exists(pathOf("saved-chats.json")));
    EXPECT_FALSE(QFile::exists(pathOf("hub-ai-chats.json")));
    store().save(std::vector{chat("Later", 1)});
    state().reloadLibrary();
    EXPECT_THAT(state().library().savedChats().records(), SizeIs(1)) << "it is migrated once";
    EXPECT_THAT(hubTitles(), IsEmpty());
}

TEST_F(LibraryReloadTest, PanelChatsThatCannotReachTheHubsFileStayWhereTheyAre) {
    QDir().mkpath(pathOf("hub-ai-chats.json") + "/in the way");
    store().save(std::vector{chat("Plan", 2)});
    const QByteArray before = contentOf("saved-chats.json");
    state().reloadLibrary();
    EXPECT_EQ(contentOf("saved-chats.json"), before);
    EXPECT_THAT(state().library().savedChats().records(), SizeIs(1));
    EXPECT_THAT(hubTitles(), ElementsAre("Plan"));
}

TEST_F(LibraryReloadTest, ChatsOfTheHubComeLatestFirst) {
    store().save(
        std::vector{hubChat("a", Date(1s)), hubChat("b", Date(3s)), hubChat("c", Date(1s))});
    EXPECT_THAT(hubTitles(), ElementsAre("b", "a", "c"));
}

TEST_F(LibraryReloadTest, OnlyTheActiveDraftOfTheHubOutlivesAReload) {
    store().save(std::vector{hubChat("saved", Date(9s))});
    HubAIChat draft = hubChat("draft", Date(1s));
    draft.isSaved = false;
    HubAIChat other = hubChat("other", Date(2s));
    other.isSaved = false;
    HubState& hub = state().hub();
    hub.chatModel()->insertFirst(draft);
    hub.chatModel()->insertFirst(other);
    hub.setActiveHubAIChatID(draft.id);
    state().reloadLibrary();
    EXPECT_THAT(hubTitles(), ElementsAre("draft", "saved"));
    EXPECT_FALSE(hub.hubAIChats().records().front().isSaved);
    EXPECT_THAT(store().loadAIChats(), SizeIs(1));
    hub.persistHubAIChats();
    EXPECT_THAT(store().loadAIChats(), SizeIs(1)) << "a draft is never written";
}

TEST_F(LibraryReloadTest, ViewsHearOnlyOfWhatIsNew) {
    keepNote("a");
    NoteList* notes = state().library().noteModel();
    const QAbstractItemModelTester tester(notes,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy reset(notes, &QAbstractItemModel::modelReset);
    const QSignalSpy inserted(notes, &QAbstractItemModel::rowsInserted);
    const QSignalSpy removed(notes, &QAbstractItemModel::rowsRemoved);
    keepNote("b");
    state().reloadLibrary();
    EXPECT_THAT(noteTexts(), ElementsAre("b", "a"));
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 0);
    EXPECT_EQ(reset.count() + removed.count(), 0);
}

TEST_F(LibraryReloadTest, EveryListIsAModelInOrder) {
    std::vector<QAbstractItemModel*> models = {
        state().library().noteModel(), state().library().chatModel(),
        state().hub().chatModel(),     state().tasks().taskModel(),
        state().tasks().columnModel(), state().trackers().trackerModel()};
    std::vector<std::unique_ptr<QAbstractItemModelTester>> testers;
    for (QAbstractItemModel* model : models)
        testers.push_back(std::make_unique<QAbstractItemModelTester>(
            model, QAbstractItemModelTester::FailureReportingMode::Fatal));
    setMigrated();
    keepNote("a");
    store().save(std::vector{chat("c", 1)});
    store().save(std::vector{hubChat("h", Date(1s))});
    HubTask task;
    task.id = QUuid::createUuid();
    task.title = "t";
    task.dueDate = Date(7s);
    store().save(std::vector{task});
    store().save(std::vector{
        HubTracker{QUuid::createUuid(), "b", {}, {}, {}, HubTrackerUrgency::LessUrgent, Date(1s)}});
    state().reloadLibrary();
    for (QAbstractItemModel* model : models) {
        ASSERT_GE(model->rowCount(), 1);
        const QHash<int, QByteArray> roles = model->roleNames();
        for (auto role = roles.begin(); role != roles.end(); ++role)
            EXPECT_TRUE(model->index(0, 0).data(role.key()).isValid())
                << role.value().toStdString();
        EXPECT_FALSE(model->index(0, 0).data(Qt::DecorationRole).isValid());
    }
    EXPECT_EQ(models[3]->index(0, 0).data(HubTaskList::DueDateRole).toDateTime(),
              QDateTime::fromSecsSinceEpoch(7, Qt::UTC));
    EXPECT_EQ(models[4]->index(0, 0).data(HubTaskColumnList::ColorRole), "red");
    EXPECT_EQ(models[5]->index(0, 0).data(HubTrackerList::UrgencyRole), "lessUrgent");
}

} // namespace
} // namespace vorq
