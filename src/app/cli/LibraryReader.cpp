#include "app/cli/LibraryReader.h"

#include "support/StableSort.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

template<typename Record>
std::expected<std::vector<Record>, QString> listOf(const LibraryStore& store) {
    auto list = store.read<Record>();
    if (list) return *std::move(list);
    if (list.error().kind == ReadFailure::Kind::Missing) return std::vector<Record>();
    return std::unexpected(sentenceOn(store.path<Record>(), list.error()));
}

KeptChat keptChat(const HubAIChat& chat) {
    KeptChat kept{{chat.id, chat.title, chat.createdAt, {}}, chat.updatedAt, true};
    for (const HubAIMessage& message : chat.messages)
        kept.chat.messages.push_back({message.id, message.role, message.text});
    return kept;
}

} // namespace

QString sentenceOn(const QString& path, const ReadFailure& failure) {
    if (failure.kind == ReadFailure::Kind::Damaged) return u"%1 is damaged."_s.arg(path);
    return u"%1 cannot be read: %2."_s.arg(path, failure.reason);
}

std::expected<std::vector<SavedNote>, QString> LibraryReader::notes() const {
    auto notes = listOf<SavedNote>(m_store);
    if (notes)
        stableSort(*notes, [](const SavedNote& a, const SavedNote& b) {
            return a.createdAt > b.createdAt;
        });
    return notes;
}

std::expected<std::vector<KeptChat>, QString> LibraryReader::chats() const {
    auto ofPanel = listOf<SavedChat>(m_store);
    if (!ofPanel) return std::unexpected(ofPanel.error());
    const auto ofHub = listOf<HubAIChat>(m_store);
    if (!ofHub) return std::unexpected(ofHub.error());
    std::vector<KeptChat> chats;
    for (SavedChat& chat : *ofPanel) {
        const Date createdAt = chat.createdAt;
        chats.push_back({std::move(chat), createdAt, false});
    }
    for (const HubAIChat& chat : *ofHub)
        chats.push_back(keptChat(chat));
    stableSort(chats,
               [](const KeptChat& a, const KeptChat& b) { return a.updatedAt > b.updatedAt; });
    return chats;
}

} // namespace vorq
