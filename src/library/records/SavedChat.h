#pragma once

#include "library/json/JsonFile.h"
#include "library/json/RecordHook.h"
#include "support/Date.h"
#include "support/json/JsonWriter.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

namespace vorq {

struct SavedChatMessage {
    QUuid id;
    QString role; ///< "user" or "assistant"; any other string counts as the user
    QString text;
    // Of versions that keep what went out with a prompt; nothing where nothing did.
    std::optional<QString> sentFrom = std::nullopt; ///< the application it was captured from
    std::optional<QString> sentText = std::nullopt;
    /// Of versions that mark what the program said by itself; nothing where it did not.
    std::optional<bool> isNotice = std::nullopt;

    bool operator==(const SavedChatMessage&) const = default;
};

/// A conversation of the panel, kept.
struct SavedChat {
    QUuid id;
    QString title;
    Date createdAt;
    std::vector<SavedChatMessage> messages;

    bool operator==(const SavedChat&) const = default;
};

/// All chats of a file. Nothing if any of it does not fit.
[[nodiscard]] std::optional<std::vector<SavedChat>>
decodeSavedChats(JsonFile file, const RecordHook<SavedChat>& hook = {});
[[nodiscard]] QByteArray encode(const std::vector<SavedChat>& chats);
/// The same piece by piece.
void encode(const std::vector<SavedChat>& chats, const JsonWriter::Sink& put);

} // namespace vorq
