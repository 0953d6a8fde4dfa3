#pragma once

#include "library/store/LibraryStore.h"

#include <QString>

#include <expected>
#include <vector>

namespace vorq {

/// A kept conversation, wherever it was held.
struct KeptChat {
    SavedChat chat;
    Date updatedAt; ///< of the latest message; of a panel's chat, when it was kept
    bool isOfHub = false;
};

/// A sentence for the user on a file of the library.
[[nodiscard]] QString sentenceOn(const QString& path, const ReadFailure& failure);

/// Lists of the library as they stand in its files, the newest first. It changes nothing, not even
/// the folder. A file that is not there is an empty list; for one that cannot be read the error is
/// a sentence for the user.
class LibraryReader {
  public:
    /// The store must outlive it.
    explicit LibraryReader(const LibraryStore& store) : m_store(store) {}

    [[nodiscard]] std::expected<std::vector<SavedNote>, QString> notes() const;
    /// Those of the panel and those of the hub.
    [[nodiscard]] std::expected<std::vector<KeptChat>, QString> chats() const;

  private:
    const LibraryStore& m_store;
};

} // namespace vorq
