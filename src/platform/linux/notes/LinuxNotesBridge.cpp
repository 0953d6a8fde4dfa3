#include "platform/linux/notes/LinuxNotesBridge.h"

#include "platform/Defaults.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace vorq {

LinuxNotesBridge::Choice LinuxNotesBridge::choice(const Defaults& defaults) {
    const QString name = defaults.string(u"vorq.notes.application"_s).value_or(QString());
    if (name == u"gnote") return Choice::Gnote;
    if (name == u"folder") return Choice::Folder;
    return Choice::Automatic;
}

QString LinuxNotesBridge::folder(const Defaults& defaults) {
    const QString folder = defaults.string(u"vorq.notes.folder"_s).value_or(QString());
    if (QDir::isAbsolutePath(folder)) return QDir::cleanPath(folder);
    return QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                           "/Vorq Notes");
}

LinuxNotesBridge::LinuxNotesBridge(Choice choice, const QString& folder,
                                   const QDBusConnection& sessionBus)
    : m_choice(choice), m_bus(sessionBus), m_gnote(sessionBus), m_folder(folder) {}

BlockingNotes& LinuxNotesBridge::chosen() {
    const bool isGnote = m_choice == Choice::Gnote ||
                         (m_choice == Choice::Automatic && GnoteBridge::isAvailable(m_bus));
    return isGnote ? static_cast<BlockingNotes&>(m_gnote) : m_folder;
}

BlockingNotes& LinuxNotesBridge::ownerOf(const QString& id) {
    return GnoteBridge::ownsNote(id) ? static_cast<BlockingNotes&>(m_gnote) : m_folder;
}

std::vector<AppleNoteSummary> LinuxNotesBridge::listNotes(int limit) {
    return chosen().listNotes(limit);
}

std::optional<QString> LinuxNotesBridge::noteBody(const QString& id) {
    return ownerOf(id).noteBody(id);
}

std::expected<QString, BlockingNotes::Error> LinuxNotesBridge::createNote(const QString& title,
                                                                          const QString& body) {
    return chosen().createNote(title, body);
}

std::expected<void, BlockingNotes::Error> LinuxNotesBridge::appendToNote(const QString& id,
                                                                         const QString& body) {
    return ownerOf(id).appendToNote(id, body);
}

BlockingNotes::Reached LinuxNotesBridge::reach() {
    return chosen().reach();
}

} // namespace vorq
