#pragma once

#include "platform/linux/notes/GnoteBridge.h"
#include "platform/portable/MarkdownFolderBridge.h"

#include <cstdint>

namespace vorq {

class Defaults;

/// The notes application of the user's session: Gnote where it is installed, else a folder of
/// Markdown files, unless the user has settled on one of them. A note is read and added to where it
/// was made, whatever has been installed since.
class LinuxNotesBridge : public BlockingNotes {
  public:
    enum class Choice : std::uint8_t { Automatic, Gnote, Folder };

    /// Under the key "vorq.notes.application": "gnote" or "folder"; anything else is automatic.
    [[nodiscard]] static Choice choice(const Defaults& defaults);

    /// Under the key "vorq.notes.folder", if that is an absolute path, else "Vorq Notes" in the
    /// user's folder for documents.
    [[nodiscard]] static QString folder(const Defaults& defaults);

    LinuxNotesBridge(Choice choice, const QString& folder, const QDBusConnection& sessionBus);

    [[nodiscard]] std::vector<AppleNoteSummary> listNotes(int limit) override;
    [[nodiscard]] std::optional<QString> noteBody(const QString& id) override;
    [[nodiscard]] std::expected<QString, Error> createNote(const QString& title,
                                                           const QString& body) override;
    [[nodiscard]] std::expected<void, Error> appendToNote(const QString& id,
                                                          const QString& body) override;
    [[nodiscard]] Reached reach() override;

  private:
    [[nodiscard]] BlockingNotes& chosen();
    [[nodiscard]] BlockingNotes& ownerOf(const QString& id);

    Choice m_choice;
    QDBusConnection m_bus;
    GnoteBridge m_gnote;
    MarkdownFolderBridge m_folder;
};

} // namespace vorq
