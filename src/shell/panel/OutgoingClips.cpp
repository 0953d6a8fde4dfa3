#include "shell/panel/OutgoingClips.h"

#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <algorithm>

namespace vorq {
namespace {

bool isExcerpt(const PromptAttachment& attachment) {
    return attachment.isDeepenSelection &&
           graphemeCount(trimmed(attachment.textContent.value_or(QString()))) > 1;
}

} // namespace

bool OutgoingClips::hold(const QUuid& id) const {
    return (deepen && deepen->id == id) ||
           std::ranges::find(attachments, id, &PromptAttachment::id) != attachments.end();
}

OutgoingClips outgoingClips(const QList<PromptAttachment>& attachments) {
    const auto excerpt = std::ranges::find_if(attachments, isExcerpt);
    if (excerpt != attachments.end()) return {.deepen = *excerpt, .attachments = {}};
    OutgoingClips going;
    bool hasPicture = false;
    for (const PromptAttachment& attachment : attachments) {
        if (attachment.imageDataURL && hasPicture) continue;
        hasPicture = hasPicture || attachment.imageDataURL;
        going.attachments += attachment;
    }
    return going;
}

} // namespace vorq
