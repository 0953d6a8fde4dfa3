// Another program that writes to the library of notes: FOLDER TEXT [COUNT].
// One note, kept at once; or as many as it is told, one after the other, which it merges with what
// others write. Ends with 0 if all of it is in the file.

#include "library/store/LibraryFile.h"
#include "library/store/LibraryStore.h"

#include <QCoreApplication>
#include <QThread>

using namespace std::chrono_literals;

namespace {

vorq::SavedNote newNote(const QString& text) {
    vorq::SavedNote note;
    note.id = QUuid::createUuid();
    note.text = text;
    note.createdAt = vorq::Date(1'700'000'000s);
    return note;
}

int keepOne(const QString& folder, const QString& text) {
    const vorq::LibraryStore store(folder);
    std::vector<vorq::SavedNote> notes = store.loadNotes();
    notes.push_back(newNote(text));
    store.save(notes);
    return 0;
}

int keepMany(const QString& folder, const QString& text, int count) {
    const vorq::LibraryStore store(folder, 60s);
    vorq::LibraryFile<vorq::SavedNote> file(store);
    std::vector<vorq::SavedNote> notes = file.load({});
    for (int number = 0; number < count; ++number) {
        notes.push_back(newNote(text + ' ' + QString::number(number)));
        if (auto changed = file.save(notes)) notes = *std::move(changed);
        QThread::msleep(static_cast<unsigned long>(number % 7));
    }
    return file.unsaved() ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() == 3) return keepOne(words[1], words[2]);
    if (words.size() == 4) return keepMany(words[1], words[2], words[3].toInt());
    return 2;
}
