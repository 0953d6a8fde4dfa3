#include "app/LibraryReader.h"

#include "library/HubAIChat.h"
#include "library/LibraryStore.h"
#include "support/StableSort.h"

#include <QFile>
#include <QFileInfo>

namespace vorq {
namespace {

template<typename Record, typename Decode>
std::expected<std::vector<Record>, QString> read(const QString& path, Decode decode) {
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) return std::vector<Record>();
    QFile file(path);
    // Opening a pipe would wait for its other end.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return std::unexpected(QStringLiteral("%1 cannot be read.").arg(path));
    auto records = decode(file.readAll());
    if (!records) return std::unexpected(QStringLiteral("%1 is damaged.").arg(path));
    return *std::move(records);
}

KeptChat keptChat(const HubAIChat& chat) {
    KeptChat kept{{chat.id, chat.title, chat.updatedAt, {}}, true};
    for (const HubAIMessage& message : chat.messages)
        kept.chat.messages.push_back({message.id, message.role, message.text});
    return kept;
}

} // namespace

LibraryReader::LibraryReader(const QString& applicationSupportFolder)
    : m_folder(LibraryStore::folderIn(applicationSupportFolder) + u'/') {}

std::expected<std::vector<SavedNote>, QString> LibraryReader::notes() const {
    auto notes = read<SavedNote>(m_folder + LibraryStore::notesFile.toString(),
                                 [](const QByteArray& json) { return decodeSavedNotes(json); });
    if (notes)
        stableSort(*notes, [](const SavedNote& a, const SavedNote& b) {
            return a.createdAt > b.createdAt;
        });
    return notes;
}

std::expected<std::vector<KeptChat>, QString> LibraryReader::chats() const {
    const auto ofPanel =
        read<SavedChat>(m_folder + LibraryStore::chatsFile.toString(),
                        [](const QByteArray& json) { return decodeSavedChats(json); });
    if (!ofPanel) return std::unexpected(ofPanel.error());
    const auto ofHub =
        read<HubAIChat>(m_folder + LibraryStore::aiChatsFile.toString(),
                        [](const QByteArray& json) { return decodeHubAIChats(json); });
    if (!ofHub) return std::unexpected(ofHub.error());
    std::vector<KeptChat> chats;
    for (const SavedChat& chat : *ofPanel)
        chats.push_back({chat, false});
    for (const HubAIChat& chat : *ofHub)
        chats.push_back(keptChat(chat));
    stableSort(chats, [](const KeptChat& a, const KeptChat& b) {
        return a.chat.createdAt > b.chat.createdAt;
    });
    return chats;
}

} // namespace vorq
