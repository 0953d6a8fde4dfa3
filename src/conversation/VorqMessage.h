#pragma once

#include "backend/api/AIAnalysis.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace vorq {

enum class MessageRole { User, Assistant };

/// The raw string of a role, as it stands in requests and records.
[[nodiscard]] QString rawString(MessageRole role);

/// The text that went out with a prompt beside its words.
struct SentText {
    QString text;
    QString application; ///< whose text was captured; "" if none was, or it has no name

    bool operator==(const SentText&) const = default;
};

/// One entry of the panel conversation.
struct VorqMessage {
    QUuid id = QUuid::createUuid();
    MessageRole role = MessageRole::User;
    QString text;
    bool isWorking = false; ///< a placeholder that waits for its reply
    bool isTyping = false;  ///< the text is still growing
    std::optional<QString> typingFullText;
    std::optional<VorqFollowUp> followUp;
    std::optional<SentText> sent; ///< of a user's message once its turn has started
    bool canRetry = false;        ///< the reply is a failure whose turn can run again
    bool isNotice = false;        ///< the program speaks by itself; never a reply to save

    bool operator==(const VorqMessage&) const = default;

    /// A new placeholder: an assistant message that says "Working...".
    [[nodiscard]] static VorqMessage placeholder();
};

/// The text by which a placeholder is known.
inline constexpr QStringView workingText = u"Working...";

/// Whether a message is the greeting of an empty conversation, however far it is typed.
[[nodiscard]] bool readsAsGreeting(const VorqMessage& message);

} // namespace vorq
