#pragma once

#include "platform/portable/BlockingNotes.h"

namespace vorq {

/// Notes as Markdown files of one folder, a file for each note, named for its title. The identity
/// of a note is the name of its file; the latest change comes first.
///
/// Names are such that every file system takes them: a title that would leave the folder, hide the
/// file or clash with another's name gives another name, and stands in full within the file. Files
/// are private to the user, and change as a whole or not at all.
class MarkdownFolderBridge : public BlockingNotes {
  public:
    /// The folder need not exist; the first note makes it.
    explicit MarkdownFolderBridge(QString folder);

    [[nodiscard]] std::vector<AppleNoteSummary> listNotes(int limit) override;
    [[nodiscard]] std::optional<QString> noteBody(const QString& id) override;
    [[nodiscard]] std::expected<QString, Error> createNote(const QString& title,
                                                           const QString& body) override;
    [[nodiscard]] std::expected<void, Error> appendToNote(const QString& id,
                                                          const QString& body) override;
    [[nodiscard]] Reached reach() override;

    /// A name for the file of a note, without an ending and at most 200 bytes long.
    [[nodiscard]] static QString fileNameFor(QStringView title);

  private:
    /// Empty for what is no identity of a note.
    [[nodiscard]] QString pathOf(const QString& id) const;
    [[nodiscard]] std::optional<QString> reserveName(const QString& title) const;

    QString m_folder;
};

} // namespace vorq
