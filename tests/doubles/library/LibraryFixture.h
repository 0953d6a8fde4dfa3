#pragma once

#include "doubles/panel/ConversationFixture.h"
#include "library/store/LibraryStore.h"

#include <QDir>
#include <QFile>

namespace vorq {

/// An application state whose library files the test lays out and looks at.
class LibraryFixture : public ConversationFixture {
  protected:
    [[nodiscard]] LibraryStore store() const {
        return LibraryStore(m_paths.applicationSupportFolder());
    }

    [[nodiscard]] QString pathOf(const QString& file) const {
        return m_paths.applicationSupportFolder() + "/Vorq/Library/" + file;
    }

    void put(const QString& file, const QByteArray& content) const {
        QDir().mkpath(m_paths.applicationSupportFolder() + "/Vorq/Library");
        QFile out(pathOf(file));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
    }

    /// Null if there is no such file.
    [[nodiscard]] QByteArray contentOf(const QString& file) const {
        QFile in(pathOf(file));
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    /// Puts a note into the library as if it had been there for a while, the newest so far.
    SavedNote keepNote(const QString& text, const QString& thoughts = {}) {
        using namespace std::chrono_literals;
        SavedNote note;
        note.id = QUuid::createUuid();
        note.text = text;
        note.thoughts = thoughts;
        note.createdAt = Date(1'700'000'000s + std::chrono::seconds(++m_keptNotes));
        std::vector<SavedNote> notes = store().loadNotes();
        notes.push_back(note);
        store().save(notes);
        return note;
    }

    [[nodiscard]] static SavedChat chat(const QString& title, int messages,
                                        Date createdAt = Date()) {
        SavedChat made{QUuid::createUuid(), title, createdAt, {}};
        for (int index = 0; index < messages; ++index)
            made.messages.push_back(
                {QUuid::createUuid(), index % 2 ? "assistant" : "user", QString::number(index)});
        return made;
    }

    void setMigrated() { m_defaults.setBoolean("vorq.migratedPanelChatsToHub.v1", true); }

    int m_keptNotes = 0;
};

} // namespace vorq
