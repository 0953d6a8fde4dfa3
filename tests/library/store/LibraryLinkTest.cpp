// Symbolic links in the place of a file, as users set them for folders that are synchronised.

#include "doubles/library/LibraryFolder.h"

#include <unistd.h>

namespace vorq {
namespace {

class LibraryLink : public LibraryFolder {
  protected:
    QString m_away = m_root.filePath("away");
    std::vector<SavedNote> m_new = oneNote("new");

    LibraryLink() {
        QDir().mkpath(m_folder);
        QDir().mkpath(m_away);
    }

    static void link(const QByteArray& content, const QString& path) {
        ASSERT_EQ(::symlink(content.constData(), qPrintable(path)), 0);
    }

    [[nodiscard]] bool isLink() const { return QFileInfo(m_notes).isSymLink(); }
};

TEST_F(LibraryLink, StaysAndItsTargetIsReplaced) {
    const QString target = m_away + "/notes.json";
    put(target, "[]");
    link(target.toUtf8(), m_notes);
    m_store.save(m_new);
    EXPECT_TRUE(isLink());
    EXPECT_FALSE(QFileInfo(target).isSymLink());
    EXPECT_EQ(contentOf(target), encode(m_new));
    EXPECT_EQ(m_store.loadNotes(), m_new);
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
    EXPECT_EQ(QDir(m_away).entryList(QDir::Files | QDir::Hidden), QStringList{"notes.json"});
}

TEST_F(LibraryLink, ReplacesAtOnce) {
    const QString target = m_away + "/notes.json";
    put(target, "[]");
    QFile former(target);
    ASSERT_TRUE(former.open(QIODevice::ReadOnly));
    link(target.toUtf8(), m_notes);
    m_store.save(m_new);
    EXPECT_EQ(former.readAll(), "[]");
}

TEST_F(LibraryLink, MayBeRelativeAndLeadToAnother) {
    link("../../away/second.json", m_notes);
    link("third.json", m_away + "/second.json");
    m_store.save(m_new);
    EXPECT_TRUE(isLink());
    EXPECT_EQ(contentOf(m_away + "/third.json"), encode(m_new));
    EXPECT_EQ(m_store.loadNotes(), m_new);
}

TEST_F(LibraryLink, ToWhatIsNotMountedStaysAndNothingIsSaved) {
    link("/nonexistent/notes.json", m_notes);
    m_store.save(m_new);
    EXPECT_TRUE(isLink());
    EXPECT_TRUE(m_store.loadNotes().empty());
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
}

TEST_F(LibraryLink, InACircleIsReplaced) {
    link("saved-notes.json", m_notes);
    EXPECT_TRUE(m_store.loadNotes().empty());
    m_store.save(m_new);
    EXPECT_FALSE(isLink());
    EXPECT_EQ(m_store.loadNotes(), m_new);
}

TEST_F(LibraryLink, OfTheWholeFolderIsFollowed) {
    ASSERT_TRUE(QDir().rmdir(m_folder));
    link(m_away.toUtf8(), m_folder);
    m_store.save(m_new);
    EXPECT_EQ(contentOf(m_away + "/saved-notes.json"), encode(m_new));
    EXPECT_TRUE(QFileInfo(m_folder).isSymLink());
}

} // namespace
} // namespace vorq
