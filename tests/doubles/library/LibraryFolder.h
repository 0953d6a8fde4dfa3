#pragma once

#include "library/store/LibraryStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace vorq {

/// A library in a folder of the test's own.
class LibraryFolder : public testing::Test {
  protected:
    QTemporaryDir m_root;
    QString m_folder = m_root.filePath("Vorq/Library");
    QString m_notes = m_folder + "/saved-notes.json";
    LibraryStore m_store{m_root.path()};

    [[nodiscard]] static std::vector<SavedNote> oneNote(const QString& text) {
        SavedNote note;
        note.id = QUuid::createUuid();
        note.text = text;
        note.createdAt = Date(std::chrono::seconds(1'700'000'000));
        return {note};
    }

    void put(const QByteArray& content) const { put(m_notes, content); }

    void put(const QString& path, const QByteArray& content) const {
        QDir().mkpath(m_folder);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    [[nodiscard]] static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    /// All names in the folder, also those that are not shown.
    [[nodiscard]] QStringList names() const {
        return QDir(m_folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                        QDir::NoDotAndDotDot);
    }
};

} // namespace vorq
