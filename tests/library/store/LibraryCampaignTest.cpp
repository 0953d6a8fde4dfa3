// Many programs, many kills, every kind of wrong file: whatever was said to be saved is there.

#include "doubles/async/ForkAlone.h"
#include "doubles/library/LibraryFolder.h"
#include "library/store/LibraryFile.h"

#include <QSet>

#include <gmock/gmock.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <random>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::SizeIs;

using IdBytes = std::array<char, 16>;

// Programs that add a note each time and tell of each that is saved.
class LibraryCampaign : public LibraryFolder {
  protected:
    LibraryCampaign() {
        if (::pipe2(m_told, O_CLOEXEC) != 0) std::abort();
    }
    ~LibraryCampaign() override {
        for (const int end : m_told)
            ::close(end);
    }

    [[nodiscard]] pid_t startWriter(int saves) const {
        const pid_t child = forkAlone();
        if (child == 0) {
            addNotes(saves);
            ::_exit(0);
        }
        return child;
    }

    // Those that were told of, which writers may still do.
    void hearOfSaves() {
        ::fcntl(m_told[0], F_SETFL, O_NONBLOCK);
        IdBytes id{};
        while (::read(m_told[0], id.data(), id.size()) == static_cast<ssize_t>(id.size()))
            m_saved.insert(QUuid::fromRfc4122(QByteArrayView(id)));
    }

    void expectNothingLost() {
        hearOfSaves();
        const auto notes = m_store.read<SavedNote>();
        ASSERT_TRUE(notes || notes.error().kind == ReadFailure::Kind::Missing)
            << "the file is torn";
        QSet<QUuid> held;
        if (notes)
            for (const SavedNote& note : *notes)
                held.insert(note.id);
        EXPECT_TRUE(held.contains(m_saved)) << (m_saved - held).size() << " lost";
    }

    QSet<QUuid> m_saved;

  private:
    void addNotes(int saves) const {
        const LibraryStore store(m_root.path(), 60s);
        LibraryFile<SavedNote> file(store);
        std::vector<SavedNote> notes = file.load({});
        for (int count = 0; count < saves; ++count) {
            notes.push_back(oneNote(QString(500, u'x')).front());
            const QByteArray id = notes.back().id.toRfc4122();
            if (auto changed = file.save(notes)) notes = *std::move(changed);
            // Less than a pipe takes at once, so that it is all or nothing.
            if (!file.unsaved() && ::write(m_told[1], id.data(), sizeof(IdBytes)) < 0) ::_exit(1);
        }
    }

    int m_told[2] = {-1, -1};
};

TEST_F(LibraryCampaign, TwoProgramsWithHundredsOfSavesLoseNone) {
    constexpr int saves = 150;
    const std::array writers = {startWriter(saves), startWriter(saves)};
    for (const pid_t writer : writers) {
        int status = -1;
        ::waitpid(writer, &status, 0);
        EXPECT_EQ(status, 0);
    }
    expectNothingLost();
    EXPECT_THAT(m_saved, SizeIs(2 * saves));
    EXPECT_THAT(m_store.loadNotes(), SizeIs(2 * saves));
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
}

TEST_F(LibraryCampaign, KillsAtAnyMomentBesideOtherWritersLoseNothing) {
    constexpr int kills = 100;
    constexpr int endless = 1'000'000;
    std::minstd_rand random(1);
    std::uniform_int_distribution<useconds_t> delays(0, 30'000);
    std::array writers = {startWriter(endless), startWriter(endless), startWriter(endless)};
    for (std::size_t kill = 0; kill < kills; ++kill) {
        pid_t& victim = writers[kill % writers.size()];
        ::usleep(delays(random));
        ::kill(victim, SIGKILL);
        ::waitpid(victim, nullptr, 0);
        expectNothingLost();
        victim = startWriter(endless);
    }
    for (const pid_t writer : writers) {
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
    }
    expectNothingLost();
    EXPECT_GT(m_saved.size(), 0);
}

// A limit on the size of files stops a write in its middle, as a full disk does.
TEST_F(LibraryCampaign, ADiskThatFillsUpAndIsClearedLosesNothing) {
    const pid_t child = forkAlone();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        LibraryFile<SavedNote> file(m_store);
        std::vector<SavedNote> notes = file.load({});
        for (int count = 0; count < 60; ++count) {
            // Full for ten notes, clear for ten.
            const rlimit limit{count / 10 % 2 == 0 ? RLIM_INFINITY : 3000, RLIM_INFINITY};
            if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) ::_exit(1);
            notes.push_back(oneNote(QString(500, u'x')).front());
            file.save(notes);
            const bool isFull = limit.rlim_cur == 3000;
            if (file.unsaved().has_value() != isFull) ::_exit(2);
            notes = file.load(notes);
            if (notes.size() != static_cast<std::size_t>(count) + 1) ::_exit(3);
        }
        const rlimit clear{RLIM_INFINITY, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &clear);
        file.retry(notes, 0ms, true);
        ::_exit(file.unsaved() ? 4 : 0);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_THAT(m_store.loadNotes(), SizeIs(60));
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
}

struct WrongFile {
    const char* name;
    std::function<void(const QByteArray& path)> make;
    bool isReplaced; // by a save
};

void PrintTo(const WrongFile& file, std::ostream* out) {
    *out << file.name;
}

void link(const char* target, const QByteArray& path) {
    ASSERT_EQ(::symlink(target, path.constData()), 0);
}

void makeSocket(const QByteArray& path) {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(static_cast<std::size_t>(path.size()), sizeof address.sun_path);
    std::ranges::copy(path, address.sun_path);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
}

class LibraryWrongFile : public LibraryFolder, public testing::WithParamInterface<WrongFile> {};

TEST_P(LibraryWrongFile, CostsNothingThatIsInMemory) {
    const std::vector<SavedNote> notes = oneNote("kept");
    const QByteArray path = m_notes.toUtf8();
    LibraryFile<SavedNote> file(m_store);
    m_store.save(notes);
    ASSERT_EQ(file.load({}), notes);
    ASSERT_TRUE(QFile::remove(m_notes));
    GetParam().make(path);
    EXPECT_EQ(file.load(notes), notes);
    EXPECT_FALSE(file.takeIn(notes));
    file.save(notes);
    EXPECT_EQ(!file.unsaved(), GetParam().isReplaced);
    if (GetParam().isReplaced) EXPECT_EQ(m_store.loadNotes(), notes);
    ASSERT_TRUE(QFile(m_notes).remove() || QDir(m_notes).removeRecursively());
    file.retry(notes, 0ms, true);
    file.save(notes);
    EXPECT_EQ(m_store.loadNotes(), notes);
}

INSTANTIATE_TEST_SUITE_P(
    , LibraryWrongFile,
    testing::Values(
        WrongFile{"folder", [](const QByteArray& path) { QDir().mkpath(path + "/in the way"); },
                  false},
        WrongFile{"pipe", [](const QByteArray& path) { ASSERT_EQ(::mkfifo(path, 0600), 0); }, true},
        WrongFile{"socket", makeSocket, true},
        WrongFile{"linkToNowhere",
                  [](const QByteArray& path) { link("/nowhere/at all.json", path); }, false},
        WrongFile{"linkInACircle", [](const QByteArray& path) { link("saved-notes.json", path); },
                  true},
        WrongFile{"linkToAFileToCome",
                  [](const QByteArray& path) { link("../to come.json", path); }, true}),
    [](const auto& tested) { return tested.param.name; });

class LibraryDamage : public LibraryFolder {
  protected:
    // What is left of the damaged content after the list was saved over it.
    void expectBothKept(const QByteArray& damaged) {
        const std::vector<SavedNote> notes = oneNote("kept");
        LibraryFile<SavedNote> file(m_store);
        m_store.save(notes);
        ASSERT_EQ(file.load({}), notes);
        put(damaged);
        EXPECT_EQ(file.load(notes), notes);
        EXPECT_FALSE(file.takeIn(notes));
        file.save(notes);
        EXPECT_FALSE(file.unsaved());
        EXPECT_EQ(m_store.loadNotes(), notes);
        const auto replaced = file.releaseReplaced();
        ASSERT_TRUE(replaced);
        EXPECT_EQ(contentOf(m_folder + '/' + replaced->keptName), damaged);
        EXPECT_FALSE(file.releaseReplaced()) << "it is told once";
        ASSERT_TRUE(QDir(m_folder).removeRecursively());
    }
};

TEST_F(LibraryDamage, OfAnyKindIsKeptBeside) {
    const QByteArray whole = encode(oneNote("another"));
    for (qsizetype size = 1; size < whole.size() - 1; size += 7)
        expectBothKept(whole.first(size));
    QByteArray flipped = whole;
    flipped[whole.indexOf("createdAt")] = 'C';
    for (const QByteArray& content :
         {flipped, QByteArray("{}"), QByteArray("null"), QByteArray(5000, '\0'), "[" + whole,
          whole + "x", QByteArray("\xFF\xFE[\0]\0", 6), QByteArray("[1]"), QByteArray(" ")})
        expectBothKept(content);
}

TEST_F(LibraryDamage, OfAFileThatIsLinkedIsKeptBesideTheFile) {
    const QString target = m_root.filePath("away.json");
    put(target, "[{");
    QDir().mkpath(m_folder);
    ASSERT_TRUE(QFile::link(target, m_notes));
    LibraryFile<SavedNote> file(m_store);
    const std::vector<SavedNote> notes = oneNote("new");
    file.save(notes);
    EXPECT_EQ(m_store.loadNotes(), notes);
    EXPECT_TRUE(QFileInfo(m_notes).isSymLink());
    const auto replaced = file.releaseReplaced();
    ASSERT_TRUE(replaced);
    EXPECT_EQ(contentOf(m_root.filePath(replaced->keptName)), "[{");
}

} // namespace
} // namespace vorq
