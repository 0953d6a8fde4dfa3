#pragma once

#include "library/json/JsonFile.h"
#include "library/json/RecordHook.h"
#include "model/VorqFollowUp.h"
#include "support/Date.h"
#include "support/json/JsonWriter.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

namespace vorq {

struct HubQuizQuestion {
    QUuid id = QUuid::createUuid(); ///< new at each reading, never written
    QString prompt;
    std::vector<QString> options;
    qint64 answerIndex = 0; ///< into the options
    QString explanation;

    bool operator==(const HubQuizQuestion&) const = default;
};

/// The quiz that one message plays.
struct HubQuizData {
    QString primer;
    std::vector<HubQuizQuestion> questions;
    std::vector<QUuid> sourceNoteIDs;

    bool operator==(const HubQuizData&) const = default;
};

struct HubAIMessage {
    QUuid id;
    QString role; ///< "user" or "assistant"
    QString text;
    std::vector<QString> noteClips; ///< labels of the notes that a prompt used
    std::vector<QString> fileClips; ///< names of the files that came with a prompt
    Date createdAt;
    std::optional<HubQuizData> quiz;
    std::optional<VorqFollowUp> followUp;
    // In memory only:
    bool isTyping = false;
    std::optional<QString> typingFullText;

    bool operator==(const HubAIMessage&) const = default;
};

/// A conversation of the hub.
struct HubAIChat {
    QUuid id;
    QString title;
    std::vector<HubAIMessage> messages; ///< the oldest first
    std::vector<QUuid> sourceNoteIDs;   ///< what the next turn reads
    bool isSaved = true;                ///< only saved chats are written
    Date createdAt;
    Date updatedAt;

    bool operator==(const HubAIChat&) const = default;
};

/// All chats of a file. Nothing if any of it does not fit.
[[nodiscard]] std::optional<std::vector<HubAIChat>>
decodeHubAIChats(JsonFile file, const RecordHook<HubAIChat>& hook = {});
[[nodiscard]] QByteArray encode(const std::vector<HubAIChat>& chats);
/// The same piece by piece.
void encode(const std::vector<HubAIChat>& chats, const JsonWriter::Sink& put);

} // namespace vorq
