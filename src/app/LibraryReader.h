#pragma once

#include "library/SavedChat.h"
#include "library/SavedNote.h"

#include <QString>

#include <expected>
#include <vector>

namespace vorq {

/// A kept conversation, wherever it was held.
struct KeptChat {
    SavedChat chat;
    bool isOfHub = false;
};

/// Lists of the library as they stand in its files, the newest first. It changes nothing, not even
/// the folder. A file that is not there is an empty list; for one that cannot be read the error is
/// a sentence for the user.
class LibraryReader {
  public:
    explicit LibraryReader(const QString& applicationSupportFolder);

    [[nodiscard]] std::expected<std::vector<SavedNote>, QString> notes() const;
    /// Those of the panel and those of the hub.
    [[nodiscard]] std::expected<std::vector<KeptChat>, QString> chats() const;

  private:
    QString m_folder;
};

} // namespace vorq
