// Loading and saving lists of notes beside other JSON libraries, and beside the bare writing of the
// same bytes.

#include "Contest.h"
#include "LibraryPeers.h"
#include "ReplyCorpus.h"
#include "library/LibraryStore.h"

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

// In processes of their own, before this one has had much memory.
void printMemory(Script script, std::size_t count) {
    const Library library;
    peakOfChild([&] { library.store.save(notesOf(script, count)); });
    const long idle = peakOfChild([] {});
    const long loaded =
        peakOfChild([&] { benchmark::DoNotOptimize(library.store.loadNotes().size()); });
    std::printf("Peak memory of loading %zu notes (%s): %.2f times the file\n", count,
                scriptName(script),
                static_cast<double>(loaded - idle) / static_cast<double>(library.size()));
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

void addSaving(const std::string& caseName, const std::shared_ptr<Library>& library) {
    const auto notes = std::make_shared<const std::vector<SavedNote>>(library->store.loadNotes());
    const std::size_t size = library->size();
    addContender("vorq", caseName + "/encode", size,
                 [notes] { benchmark::DoNotOptimize(encode(*notes).size()); });
    addContender("rapidjson-16", caseName + "/encode", size,
                 [notes] { benchmark::DoNotOptimize(encodeByRapidJson16(*notes)); });
    addContender("rapidjson", caseName + "/encode", size,
                 [notes] { benchmark::DoNotOptimize(encodeByRapidJson8(*notes)); });
    addWaitingContender("vorq", caseName + "/save", size,
                        [library, notes] { library->store.save(*notes); });
    const QByteArray content = encode(*notes);
    const QString path = library->path;
    addWaitingContender("plain", caseName + "/save", size,
                        [library, path, content] { savePlainly(path, content); });
}

void addAll() {
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
            addSaving(name, library);
        }
    }
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
    addAll();
    return runContest(argc, argv, {"ondemand", "rapidjson", "plain"});
}
