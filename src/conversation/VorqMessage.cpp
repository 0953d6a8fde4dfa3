#include "conversation/VorqMessage.h"

#include "support/RawNames.h"
#include "support/text/Text.h"

namespace vorq {
namespace {

constexpr auto messageRoleNames =
    rawNames<MessageRole>({{MessageRole::User, "user"}, {MessageRole::Assistant, "assistant"}});

} // namespace

QString rawString(MessageRole role) {
    return messageRoleNames.nameOf(role);
}

VorqMessage VorqMessage::placeholder() {
    VorqMessage message;
    message.role = MessageRole::Assistant;
    message.text = workingText.toString();
    message.isWorking = true;
    return message;
}

bool readsAsGreeting(const VorqMessage& message) {
    constexpr QStringView greeting = u"Hello 👋";
    if (message.text.isEmpty() || trimmed(message.text).startsWith(greeting)) return true;
    // Its first letters alone are not yet the greeting, but what they grow to is.
    return message.typingFullText && trimmed(*message.typingFullText).startsWith(greeting);
}

} // namespace vorq
