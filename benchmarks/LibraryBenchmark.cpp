// Loading and saving lists of notes beside other JSON libraries, and beside the bare writing of the
// same bytes.

#include "Contest.h"
#include "FollowingRounds.h"
#include "LibraryPeers.h"
#include "ReplyCorpus.h"
#include "Rounds.h"
#include "library/store/LibraryFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <malloc.h>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using namespace vorq;
using namespace vorq::bench;

constexpr std::size_t bodySize = 1500;

std::vector<SavedNote> notesOf(Script script, std::size_t count) {
    const QString all = QString::fromStdString(replyText(script, 100 * bodySize));
    const QString sample = QString::fromStdString(replyText(script, bodySize));
    std::vector<SavedNote> notes(count);
    for (std::size_t index = 0; index < count; ++index) {
        const auto from = static_cast<qsizetype>(index * 617) % (all.size() - sample.size());
        SavedNote& note = notes[index];
        note.id = QUuid::createUuid();
        note.thoughts = all.mid(from, sample.size());
        note.text = note.thoughts.left(40);
        note.createdAt = Date(std::chrono::seconds(1'700'000'000 + index));
        if (index % 10 == 0) note.flashcards.push_back({QUuid::createUuid(), "front", "back"});
    }
    return notes;
}

// A library of its own on the disk, with one list.
struct Library {
    QTemporaryDir root{QDir::currentPath() + "/bench-library-XXXXXX"};
    LibraryStore store{root.path()};
    QString path = root.filePath("Vorq/Library/saved-notes.json");

    [[nodiscard]] std::size_t size() const {
        return static_cast<std::size_t>(QFileInfo(path).size());
    }
};

long peakOfChild(const std::function<void()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    rusage used{};
    ::wait4(child, nullptr, 0, &used);
    return used.ru_maxrss * 1024;
}

long peakOfLoading(const Library& library) {
    return peakOfChild([&] { benchmark::DoNotOptimize(library.store.loadNotes().size()); });
}

// In processes of their own, before this one has had much memory. A list of one note shows what
// every load takes: the code that runs and the memory that the allocator begins with.
void printMemory(Script script, std::size_t count) {
    const Library single;
    const Library library;
    peakOfChild([&] {
        single.store.save(notesOf(script, 1));
        library.store.save(notesOf(script, count));
    });
    const auto size = static_cast<double>(library.size());
    const auto start = static_cast<double>(peakOfChild([] {}));
    const auto one = static_cast<double>(peakOfLoading(single));
    const auto loaded = static_cast<double>(peakOfLoading(library));
    std::printf("Peak memory of loading %zu notes (%s): %.2f times the file more than one note, "
                "which takes %.1f MB; %.2f times in all\n",
                count, scriptName(script), (loaded - one) / size, (one - start) / 1e6,
                (loaded - start) / size);
}

void addLoading(const std::string& caseName, const std::shared_ptr<Library>& library) {
    const std::string name = caseName + "/load";
    const std::size_t size = library->size();
    const QString path = library->path;
    addContender("vorq", name, size,
                 [library] { benchmark::DoNotOptimize(library->store.loadNotes()); });
    addContender("ondemand", name, size,
                 [path] { benchmark::DoNotOptimize(loadByOnDemand(path)); });
    addContender("rapidjson", name, size,
                 [path] { benchmark::DoNotOptimize(loadByRapidJson(path)); });
    addContender("QJsonDocument", name, size,
                 [path] { benchmark::DoNotOptimize(loadByQJson(path)); });
}

void addEncoding(const std::string& caseName, const std::shared_ptr<Library>& library) {
    const auto notes = std::make_shared<const std::vector<SavedNote>>(library->store.loadNotes());
    const std::size_t size = library->size();
    addContender("vorq", caseName + "/encode", size,
                 [notes] { benchmark::DoNotOptimize(encode(*notes).size()); });
    addContender("rapidjson-16", caseName + "/encode", size,
                 [notes] { benchmark::DoNotOptimize(encodeByRapidJson16(*notes)); });
    addContender("rapidjson", caseName + "/encode", size,
                 [notes] { benchmark::DoNotOptimize(encodeByRapidJson8(*notes)); });
}

// "list" is what a change of the list costs its caller: a save with its lock, and the record of
// what the file holds. It has a file of its own, since it would take in what others write.
void printSaving(const std::string& caseName, const Library& library) {
    const std::vector<SavedNote> notes = library.store.loadNotes();
    const QByteArray content = encode(notes);
    const Library own;
    LibraryFile<SavedNote> list(own.store);
    const std::vector<Contender> contenders = {
        {"vorq", [&] { library.store.save(notes); }},
        {"list", [&] { list.save(notes); }},
        {"plain", [&] { savePlainly(library.path, content); }}};
    runInTurn(caseName + "/save", contenders, notes.size() > 10'000 ? 11 : 41);
}

using Libraries = std::vector<std::pair<std::string, std::shared_ptr<Library>>>;

Libraries addAll() {
    Libraries libraries;
    for (const Script script : {Script::Ascii, Script::Mixed}) {
        for (const std::size_t count : {1'000U, 10'000U, 100'000U}) {
            if (script != Script::Ascii && count != 10'000U) continue;
            const auto library = std::make_shared<Library>();
            library->store.save(notesOf(script, count));
            const std::string name = std::to_string(count) + '-' + scriptName(script);
            const std::vector<SavedNote> loaded = library->store.loadNotes();
            if (loaded.empty() || loadByOnDemand(library->path) != loaded ||
                loadByRapidJson(library->path) != loaded || loadByQJson(library->path) != loaded)
                std::abort();
            addLoading(name, library);
            addEncoding(name, library);
            libraries.emplace_back(name, library);
        }
    }
    return libraries;
}

// The allocator gives memory back by what was freed before; who comes first would pay for it.
void keepMemory() {
    constexpr int most = 1 << 30;
    if (::mallopt(M_MMAP_THRESHOLD, most) != 1 || ::mallopt(M_TRIM_THRESHOLD, most) != 1)
        std::abort();
}

} // namespace

int main(int argc, char** argv) {
    for (const std::size_t count : {1'000U, 10'000U, 100'000U})
        printMemory(Script::Ascii, count);
    printMemory(Script::Mixed, 10'000);
    keepMemory();
    const Libraries libraries = addAll();
    const int status = runContest(argc, argv, {"ondemand", "rapidjson"});
    if (status != 0) return status;
    for (const auto& [name, library] : libraries)
        printSaving(name, *library);
    const QCoreApplication application(argc, argv);
    for (const std::size_t count : {1'000U, 20'000U, 100'000U})
        printFollowing(std::to_string(count) + "-ascii/follow", notesOf(Script::Ascii, count), 11);
    return 0;
}
