#pragma once

#include "capture/attachments/PromptAttachment.h"

#include <QList>
#include <QUuid>

#include <optional>

namespace vorq {

/// What of the attachments of a draft goes out with its prompt. The others stay attached.
struct OutgoingClips {
    /// An excerpt to ask more about, which goes alone; nothing if there is none.
    std::optional<PromptAttachment> deepen;
    /// Else all but the second picture and those after it: a prompt carries one.
    QList<PromptAttachment> attachments;

    [[nodiscard]] bool hold(const QUuid& id) const;
};

/// The attachments in the order of their clips.
[[nodiscard]] OutgoingClips outgoingClips(const QList<PromptAttachment>& attachments);

} // namespace vorq
