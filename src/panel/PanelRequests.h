#pragma once

#include "backend/api/Requests.h"
#include "capture/attachments/PromptAttachment.h"
#include "conversation/VorqMessage.h"

#include <QList>

#include <optional>
#include <span>
#include <vector>

namespace vorq {

/// What a prompt turn is made of at the moment when it starts.
struct PanelPromptContext {
    QString prompt; ///< trimmed
    QList<PromptAttachment> attachments;
    QString highlightedText;
    std::optional<QString> studySource; ///< what the note under study is read as
    bool isStudyingNote = false;
    std::span<const VorqMessage> messages;
};

/// A turn's request, ready but for the model and the token, which are read when it is sent.
struct PanelRequest {
    PromptRequest body;
    bool isStudyTurn = false;
};

[[nodiscard]] PanelRequest panelPromptRequest(const PanelPromptContext& context);

/// A turn that goes deeper on an excerpt of a reply.
[[nodiscard]] PanelRequest panelDeepenRequest(const QString& excerpt, const QString& userPrompt,
                                              std::span<const VorqMessage> messages);

/// The user's bubble for a prompt; nothing if there is nothing to send.
[[nodiscard]] std::optional<QString> submitBubble(QStringView prompt,
                                                  const QList<PromptAttachment>& attachments);

/// The user's bubble for a deepened excerpt; nothing if the excerpt is too short.
[[nodiscard]] std::optional<QString> deepenBubble(QStringView excerpt, QStringView userPrompt);

/// The last messages that are not placeholders, at most as many as told, oldest first.
[[nodiscard]] std::vector<RecentMessage> recentMessages(std::span<const VorqMessage> messages,
                                                        std::size_t limit);

} // namespace vorq
